// SPDX-License-Identifier: MIT
#include "CommandLineOptions.h"
#include "SecondProcess.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QProcess>
#include <QtTest>

#include <cstdio>

using namespace Qt::StringLiterals;

class CommandLineTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void takesWhatItKnows_data();
    void takesWhatItKnows();
    void refusesWhatItDoesNotKnow_data();
    void refusesWhatItDoesNotKnow();
    void answersAndEnds_data();
    void answersAndEnds();
    void leavesQtItsOwnOptions_data();
    void leavesQtItsOwnOptions();
    void knowsEveryOptionThatQtNames();
};

namespace {

using Appearance = CommandLineOptions::Appearance;

/// A command line as main() gets it.
class CommandLine final {
public:
    explicit CommandLine(const QStringList& arguments) {
        for (const QString& argument : arguments)
            m_words += '\0' + argument.toUtf8();
        m_argv.push_back(m_words.data());
        for (qsizetype i = 0; i < m_words.size(); ++i) {
            if (m_words.at(i) == '\0')
                m_argv.push_back(m_words.data() + i + 1);
        }
        argc = static_cast<int>(m_argv.size());
        m_argv.push_back(nullptr);
        QCoreApplication::setApplicationName(u"Lumora"_s);
        QCoreApplication::setApplicationVersion(u"1.2.3"_s);
    }

    [[nodiscard]] char** argv() { return m_argv.data(); }

    int argc{};

private:
    QByteArray m_words{"Lumora"};
    std::vector<char*> m_argv;
};

/// Tells what these arguments mean, unless parsing them ends the process.
int parse(const QStringList& arguments) {
    CommandLine line(arguments);
    const CommandLineOptions options = CommandLineOptions::parse(line.argc, line.argv());
    std::printf("%d %s", static_cast<int>(options.appearance),
                qPrintable(options.brewPath.value_or(u"no brew"_s)));
    return EXIT_SUCCESS;
}

/// What Qt itself says of all options, its own among them.
int askQt(const QStringList&) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // It tells of some only there.
    qputenv("XDG_SESSION_TYPE", "x11");
    CommandLine line({});
    const QApplication application(line.argc, line.argv());
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.process({u"Lumora"_s, u"--help-all"_s});
    return EXIT_FAILURE;
}

/// How parsing these arguments ended.
struct Ending final {
    explicit Ending(const QStringList& arguments, const QString& part = u"parse"_s) {
        QProcess process;
        process.start(u"/bin/sh"_s,
                      {u"-c"_s, QString::fromUtf8(SecondProcess::scriptLine(part, arguments))});
        process.waitForFinished();
        status = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
        output = QString::fromUtf8(process.readAllStandardOutput());
        error = QString::fromUtf8(process.readAllStandardError());
    }

    int status{};
    QString output;
    QString error;
};

} // namespace

void CommandLineTest::takesWhatItKnows_data() {
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<Appearance>("appearance");
    QTest::addColumn<QString>("brew");
    const QString appearance = u"--appearance"_s;
    const QString none = u"no brew"_s;
    QTest::newRow("nothing") << QStringList() << Appearance::System << none;
    QTest::newRow("light") << QStringList{appearance, u"light"_s} << Appearance::Light << none;
    QTest::newRow("dark") << QStringList{appearance, u"dark"_s} << Appearance::Dark << none;
    QTest::newRow("system") << QStringList{appearance, u"system"_s} << Appearance::System << none;
    QTest::newRow("brew") << QStringList{u"--brew"_s, u"/opt/bin/brew"_s} << Appearance::System
                          << u"/opt/bin/brew"_s;
    QTest::newRow("a value like a question")
        << QStringList{u"--brew"_s, u"--version"_s} << Appearance::System << u"--version"_s;
    // Nobody's home, but the user's wish all the same.
    QTest::newRow("no path") << QStringList{u"--brew="_s} << Appearance::System << QString();
}

void CommandLineTest::takesWhatItKnows() {
    QFETCH(const QStringList, arguments);
    QFETCH(const Appearance, appearance);
    QFETCH(const QString, brew);
    const Ending ending(arguments);
    QCOMPARE(ending.error, QString());
    QCOMPARE(ending.output, QString::number(static_cast<int>(appearance)) + u' ' + brew);
    QCOMPARE(ending.status, EXIT_SUCCESS);
}

void CommandLineTest::refusesWhatItDoesNotKnow_data() {
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("complaint");
    const QString appearance = u"--appearance"_s;
    QTest::newRow("appearance") << QStringList{appearance, u"pink"_s}
                                << u"Lumora: unknown appearance \"pink\"\n"_s;
    QTest::newRow("capitals") << QStringList{appearance, u"Dark"_s}
                              << u"Lumora: unknown appearance \"Dark\"\n"_s;
    QTest::newRow("no appearance")
        << QStringList{appearance + u'='} << u"Lumora: unknown appearance \"\"\n"_s;
    QTest::newRow("appearance left out")
        << QStringList{appearance} << u"Lumora: Missing value after '--appearance'.\n"_s;
    QTest::newRow("option") << QStringList{u"--colour"_s}
                            << u"Lumora: Unknown option 'colour'.\n"_s;
    QTest::newRow("option beside a question")
        << QStringList{u"--colour"_s, u"--version"_s} << u"Lumora: Unknown option 'colour'.\n"_s;
    QTest::newRow("stray word") << QStringList{u"wget"_s, u"curl"_s}
                                << u"Lumora: unexpected argument \"wget\"\n"_s;
    QTest::newRow("stray word beside a question")
        << QStringList{u"--help"_s, u"wget"_s} << u"Lumora: unexpected argument \"wget\"\n"_s;
    QTest::newRow("option behind the options")
        << QStringList{u"--"_s, u"--version"_s} << u"Lumora: unexpected argument \"--version\"\n"_s;
    QTest::newRow("placeholder") << QStringList{u"%1"_s}
                                 << u"Lumora: unexpected argument \"%1\"\n"_s;
}

void CommandLineTest::refusesWhatItDoesNotKnow() {
    QFETCH(const QStringList, arguments);
    const Ending ending(arguments);
    QFETCH(const QString, complaint);
    QCOMPARE(ending.error, complaint);
    QCOMPARE(ending.output, QString());
    constexpr int wrongUsage = 2;
    QCOMPARE(ending.status, wrongUsage);
}

void CommandLineTest::answersAndEnds_data() {
    QTest::addColumn<QString>("option");
    QTest::addColumn<QString>("answer");
    QTest::newRow("version") << u"--version"_s << u"^Lumora 1\\.2\\.3\n$"_s;
    QTest::newRow("version in short") << u"-v"_s << u"^Lumora 1\\.2\\.3\n$"_s;
    QTest::newRow("help in short") << u"-h"_s << u"^Usage: .*--brew <path>"_s;
    QTest::newRow("help")
        << u"--help"_s
        << u"^Usage: .*A graphical face for Homebrew\\..*--brew <path>.*--appearance <kind>"_s;
    QTest::newRow("all help") << u"--help-all"_s << u"^Usage: .*--brew <path>.*--style <name>"_s;
}

void CommandLineTest::answersAndEnds() {
    QFETCH(const QString, option);
    QFETCH(const QString, answer);
    const Ending ending({option});
    const QRegularExpression pattern(answer, QRegularExpression::DotMatchesEverythingOption);
    QVERIFY2(pattern.match(ending.output).hasMatch(), qPrintable(ending.output));
    QCOMPARE(ending.status, EXIT_SUCCESS);
}

void CommandLineTest::leavesQtItsOwnOptions_data() {
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("platform") << QStringList{u"-platform"_s, u"offscreen"_s};
    // These begin with the letters of a question, or contain them.
    QTest::newRow("style sheet") << QStringList{u"-stylesheet"_s, u"sheet"_s};
    QTest::newRow("direction") << QStringList{u"-reverse"_s};
    QTest::newRow("style with its value") << QStringList{u"-style=fusion"_s};
    QTest::newRow("two dashes") << QStringList{u"--style"_s, u"fusion"_s};
    QTest::newRow("another name") << QStringList{u"-geometry"_s, u"-0+0"_s};
    QTest::newRow("session") << QStringList{u"-session"_s, u"1_2"_s};
    QTest::newRow("macOS's own") << QStringList{u"-psn_0_12345"_s};
}

void CommandLineTest::leavesQtItsOwnOptions() {
    QFETCH(const QStringList, arguments);
    const Ending ending(arguments + QStringList{u"--brew"_s, u"/bin/brew"_s});
    QCOMPARE(ending.error, QString());
    QCOMPARE(ending.output, u"0 /bin/brew"_s);
    QCOMPARE(ending.status, EXIT_SUCCESS);
}

void CommandLineTest::knowsEveryOptionThatQtNames() {
    const auto optionsIn = [](const Ending& help) {
        static const QRegularExpression row(u"^  (--[a-z]+)( <)?"_s,
                                            QRegularExpression::MultilineOption);
        QMap<QString, bool> hasValue;
        for (const auto& match : row.globalMatch(help.output))
            hasValue.insert(match.captured(1), match.hasCaptured(2));
        return hasValue;
    };
    const auto known = optionsIn(Ending({u"--help-all"_s}));
    const auto named = optionsIn(Ending({}, u"ask Qt"_s));
    QVERIFY(named.contains(u"--platform"_s));
    for (const auto& [name, hasValue] : named.asKeyValueRange()) {
        QVERIFY2(known.contains(name), qPrintable(name));
        QVERIFY2(known.value(name) == hasValue, qPrintable(name));
    }
}

int main(int argc, char* argv[]) {
    return SecondProcess::main<CommandLineTest>(argc, argv,
                                                {{u"parse"_s, parse}, {u"ask Qt"_s, askQt}});
}

#include "tst_commandline.moc"
