// SPDX-License-Identifier: MIT
#include "CommandLineOptions.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

/// What Qt's application objects take for themselves. They tell only once there is a display.
QList<QCommandLineOption> qtOptions() {
    return {
        {u"display"_s, u"The X server, instead of $DISPLAY."_s, u"name"_s},
        {u"dograb"_s, u"Grab mouse and keyboard in a debugger, too."_s},
        {u"geometry"_s, u"The same as --qwindowgeometry."_s, u"geometry"_s},
        {u"icon"_s, u"The same as --qwindowicon."_s, u"path"_s},
        {u"name"_s, u"The window's name for X resources."_s, u"name"_s},
        {u"nograb"_s, u"Never grab mouse and keyboard."_s},
        {u"platform"_s, u"How to reach the display: xcb, wayland or offscreen."_s, u"name"_s},
        {u"platformpluginpath"_s, u"Where the plugins for that are."_s, u"path"_s},
        {u"platformtheme"_s, u"Whose desktop's ways to follow."_s, u"name"_s},
        {u"plugin"_s, u"Another plugin to load."_s, u"name"_s},
        {u"qmljsdebugger"_s, u"A port for debugging QML, of which there is none."_s, u"port"_s},
        {u"qwindowgeometry"_s, u"Where the window opens: 900x600+50+50."_s, u"geometry"_s},
        {u"qwindowicon"_s, u"The window's icon."_s, u"path"_s},
        {u"qwindowtitle"_s, u"The window's title."_s, u"text"_s},
        {u"reverse"_s, u"Lay the window out from right to left."_s},
        {u"session"_s, u"The session to go on with."_s, u"id"_s},
        {u"style"_s, u"How Qt's own controls look."_s, u"name"_s},
        {u"stylesheet"_s, u"A style sheet for them."_s, u"path"_s},
        {u"testability"_s, u"Load what drives the window in tests."_s},
        {u"title"_s, u"The same as --qwindowtitle."_s, u"text"_s},
        {u"visual"_s, u"The X visual to use."_s, u"id"_s},
        {u"widgetcount"_s, u"Tell at the end how many widgets there were."_s},
    };
}

struct Parser final : QCommandLineParser {
    explicit Parser(QCommandLineOption::Flags flagsOfQtOptions) {
        setApplicationDescription(u"A graphical face for Homebrew."_s);
        addOptions({brew, appearance});
        for (QCommandLineOption& option : qtOptions()) {
            option.setFlags(flagsOfQtOptions);
            addOption(option);
        }
        // Qt's options are words behind one dash, and no collections of letters.
        setSingleDashWordOptionMode(ParseAsLongOptions);
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

CommandLineOptions CommandLineOptions::parse(int argc, char* argv[]) {
    QStringList arguments;
    for (int i = 0; i < argc; ++i) {
        // What macOS's Finder gives some applications along is for nobody to read.
        if (const QString word = QString::fromLocal8Bit(argv[i]); !word.startsWith(u"-psn_"_s))
            arguments.append(word);
    }
    Parser parser(QCommandLineOption::HiddenFromHelp);
    if (!parser.parse(arguments))
        refuse(parser.errorText());
    if (const QStringList strays = parser.positionalArguments(); !strays.isEmpty())
        refuse(u"unexpected argument \"%1\""_s.arg(strays.constFirst()));
    if (parser.isSet(parser.version))
        parser.showVersion();
    const bool wantsAll = parser.isSet(u"help-all"_s);
    if (wantsAll || parser.isSet(parser.help)) {
        // Has the program's name for the first line.
        const QCoreApplication application(argc, argv);
        if (wantsAll)
            Parser({}).showHelp();
        parser.showHelp();
    }

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
