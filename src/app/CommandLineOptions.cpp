// SPDX-License-Identifier: MIT
#include "CommandLineOptions.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

/// Knows the application's own options; Qt's are known to its application objects.
struct Parser final : QCommandLineParser {
    Parser() {
        setApplicationDescription(u"A graphical face for Homebrew."_s);
        addOptions({brew, appearance});
    }

    const QCommandLineOption help{addHelpOption()};
    const QCommandLineOption version{addVersionOption()};
    const QCommandLineOption brew{
        u"brew"_s,
        u"Use this brew instead of looking for one. The path becomes part of a shell command "
        "line as it stands: one with spaces doesn't work."_s,
        u"path"_s};
    const QCommandLineOption appearance{
        u"appearance"_s, u"\"light\", \"dark\" or \"system\" (what the desktop wishes)."_s,
        u"kind"_s, u"system"_s};
};

/// Ends the process as one that was called the wrong way.
[[noreturn]] void refuse(const QString& complaint) {
    constexpr int wrongUsage = 2;
    std::fprintf(stderr, "Lumora: %s\n", qUtf8Printable(complaint));
    std::exit(wrongUsage);
}

} // namespace

void CommandLineOptions::answerQuestions(int argc, char* argv[]) {
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    Parser parser;
    // Qt's own options are words behind one dash, and no collections of letters.
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    if (!parser.parse(arguments) || !(parser.isSet(parser.version) || parser.isSet(parser.help)))
        return;
    const QCoreApplication application(argc, argv);
    if (parser.isSet(parser.version))
        parser.showVersion();
    parser.showHelp();
}

CommandLineOptions CommandLineOptions::parse(const QCoreApplication& application) {
    Parser parser;
    if (!parser.parse(QCoreApplication::arguments()))
        refuse(parser.errorText());
    if (const QStringList strays = parser.positionalArguments(); !strays.isEmpty())
        refuse(u"unexpected argument \"%1\""_s.arg(strays.constFirst()));
    // Only questions are left to answer.
    parser.process(application);

    CommandLineOptions options;
    if (parser.isSet(parser.brew))
        options.brewPath = parser.value(parser.brew);
    const QString kind = parser.value(parser.appearance);
    if (kind == u"light"_s) {
        options.appearance = Appearance::Light;
    } else if (kind == u"dark"_s) {
        options.appearance = Appearance::Dark;
    } else if (kind != u"system"_s) {
        refuse(u"unknown appearance \"%1\""_s.arg(kind));
    }
    return options;
}
