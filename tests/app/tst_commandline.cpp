// SPDX-License-Identifier: MIT
#include "CommandLineOptions.h"
#include "SecondProcess.h"

#include <QCoreApplication>
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
    void answersWithoutAnApplication_data();
    void answersWithoutAnApplication();
    void leavesTheRestToTheApplication_data();
    void leavesTheRestToTheApplication();
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

/// Answers questions among these arguments, and ends otherwise.
int answer(const QStringList& arguments) {
    CommandLine line(arguments);
    CommandLineOptions::answerQuestions(line.argc, line.argv());
    std::printf("no question");
    return EXIT_SUCCESS;
}

/// Tells what these arguments mean, unless parsing them ends the process.
int parse(const QStringList& arguments) {
    CommandLine line(arguments);
    const QCoreApplication application(line.argc, line.argv());
    const CommandLineOptions options = CommandLineOptions::parse(application);
    std::printf("%d %s", static_cast<int>(options.appearance),
                qPrintable(options.brewPath.value_or(u"no brew"_s)));
    return EXIT_SUCCESS;
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
}

void CommandLineTest::answersAndEnds() {
    QFETCH(const QString, option);
    QFETCH(const QString, answer);
    const Ending ending({option});
    const QRegularExpression pattern(answer, QRegularExpression::DotMatchesEverythingOption);
    QVERIFY2(pattern.match(ending.output).hasMatch(), qPrintable(ending.output));
    QCOMPARE(ending.status, EXIT_SUCCESS);
}

void CommandLineTest::answersWithoutAnApplication_data() {
    answersAndEnds_data();
}

void CommandLineTest::answersWithoutAnApplication() {
    QFETCH(const QString, option);
    QFETCH(const QString, answer);
    const Ending ending({option}, u"answer"_s);
    const QRegularExpression pattern(answer, QRegularExpression::DotMatchesEverythingOption);
    QVERIFY2(pattern.match(ending.output).hasMatch(), qPrintable(ending.output));
    QCOMPARE(ending.status, EXIT_SUCCESS);
}

void CommandLineTest::leavesTheRestToTheApplication_data() {
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("nothing") << QStringList();
    QTest::newRow("a value") << QStringList{u"--brew"_s, u"--version"_s};
    QTest::newRow("after the options") << QStringList{u"--"_s, u"--version"_s};
    // These words begin with the letters of a question, or contain them.
    QTest::newRow("Qt's style") << QStringList{u"-stylesheet"_s, u"sheet"_s};
    QTest::newRow("Qt's direction") << QStringList{u"-reverse"_s};
    QTest::newRow("an unknown one besides") << QStringList{u"--colour"_s, u"--version"_s};
}

void CommandLineTest::leavesTheRestToTheApplication() {
    QFETCH(const QStringList, arguments);
    const Ending ending(arguments, u"answer"_s);
    QCOMPARE(ending.output, u"no question"_s);
    QCOMPARE(ending.error, QString());
    QCOMPARE(ending.status, EXIT_SUCCESS);
}

int main(int argc, char* argv[]) {
    return SecondProcess::main<CommandLineTest>(argc, argv,
                                                {{u"parse"_s, parse}, {u"answer"_s, answer}});
}

#include "tst_commandline.moc"
