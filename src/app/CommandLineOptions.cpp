// SPDX-License-Identifier: MIT
#include "CommandLineOptions.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;

CommandLineOptions CommandLineOptions::parse(const QCoreApplication& application) {
    QCommandLineParser parser;
    parser.setApplicationDescription(u"A graphical face for Homebrew."_s);
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption brew(
        u"brew"_s,
        u"Use this brew instead of looking for one. The path becomes part of a shell command "
        "line as it stands: one with spaces doesn't work."_s,
        u"path"_s);
    const QCommandLineOption appearance(
        u"appearance"_s, u"\"light\", \"dark\" or \"system\" (what the desktop wishes)."_s,
        u"kind"_s, u"system"_s);
    parser.addOptions({brew, appearance});
    parser.process(application);

    CommandLineOptions options;
    if (parser.isSet(brew))
        options.brewPath = parser.value(brew);
    const QString kind = parser.value(appearance);
    if (kind == u"light"_s) {
        options.appearance = Appearance::Light;
    } else if (kind == u"dark"_s) {
        options.appearance = Appearance::Dark;
    } else if (kind != u"system"_s) {
        std::fprintf(stderr, "Lumora: unknown appearance \"%s\"\n", qUtf8Printable(kind));
        std::exit(EXIT_FAILURE);
    }
    return options;
}
