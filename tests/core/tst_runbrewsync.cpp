// SPDX-License-Identifier: MIT
#include "AwkwardNames.h"
#include "DescriptorLimit.h"
#include "FakeBrew.h"
#include "FreshHome.h"
#include "ResultText.h"
#include "RunBrewSync.h"

#include <QtTest>

#include <memory>

using namespace Qt::StringLiterals;

class RunBrewSyncTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init() { m_home = std::make_unique<FreshHome>(); }

    void buildsTheCommandLine_data();
    void buildsTheCommandLine();
    void handsArgumentsOverUnchanged_data();
    void handsArgumentsOverUnchanged();
    void letsTheShellInterpretThePath_data();
    void letsTheShellInterpretThePath();
    void returnsWhatTheCommandDid_data();
    void returnsWhatTheCommandDid();
    void returnsFailuresBehindTheShellAsResults_data();
    void returnsFailuresBehindTheShellAsResults();
    void blanksOnlyTheStreamThatIsNotUtf8_data();
    void blanksOnlyTheStreamThatIsNotUtf8();
    void readsALargeOutputWhole();
    void runsInALoginShellThatIsNotInteractive();
    void showsWhatTheProfilePrints();
    void leavesEnvironmentAndWorkingDirectoryAlone();
    void refusesACommandWithANulCharacter_data();
    void refusesACommandWithANulCharacter();
    void reportsThatNoDescriptorIsLeft();

private:
    std::unique_ptr<FreshHome> m_home;
};

namespace {

RunOutcome runIn(const FakeBrew& brew, const std::vector<std::string>& args = {"list"}) {
    return runBrewSync(brew.path().toStdString(), args);
}

} // namespace

void RunBrewSyncTest::buildsTheCommandLine_data() {
    QTest::addColumn<QString>("brewPath");
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("line");

    const QString brew = u"/opt/homebrew/bin/brew"_s;
    QTest::newRow("report") << brew << QStringList{u"info"_s, u"--json=v2"_s, u"--installed"_s}
                            << u"/opt/homebrew/bin/brew 'info' '--json=v2' '--installed'"_s;
    QTest::newRow("inner quote") << brew << QStringList{u"it's"_s}
                                 << uR"(/opt/homebrew/bin/brew 'it'\''s')"_s;
    QTest::newRow("empty argument") << brew << QStringList{u""_s} << u"/opt/homebrew/bin/brew ''"_s;
    QTest::newRow("two alike") << brew << QStringList{u"a"_s, u"a"_s}
                               << u"/opt/homebrew/bin/brew 'a' 'a'"_s;
    QTest::newRow("no arguments") << brew << QStringList{} << u"/opt/homebrew/bin/brew "_s;
    QTest::newRow("path as it stands")
        << u"/a b/$brew"_s << QStringList{u"tap"_s} << u"/a b/$brew 'tap'"_s;
    QTest::newRow("path with two blanks")
        << u"/a  b"_s << QStringList{u"a  b"_s} << u"/a  b 'a  b'"_s;
}

void RunBrewSyncTest::buildsTheCommandLine() {
    QFETCH(QString, brewPath);
    QFETCH(QStringList, arguments);
    QFETCH(QString, line);

    std::vector<std::string> args;
    for (const QString& argument : arguments)
        args.push_back(argument.toStdString());
    QCOMPARE(QString::fromStdString(commandLine(brewPath.toStdString(), args)), line);
}

void RunBrewSyncTest::handsArgumentsOverUnchanged_data() {
    QTest::addColumn<QString>("argument");
    for (const auto& [what, name] : awkwardNames())
        QTest::newRow(what) << name;
    QTest::newRow("leading equals sign") << u"=ls"_s;
    QTest::newRow("long") << QString(100'000, u'x');
}

void RunBrewSyncTest::handsArgumentsOverUnchanged() {
    QFETCH(QString, argument);
    const FakeBrew brew;
    brew.setBody(brew.recordArguments());

    const RunOutcome outcome = runIn(brew, {"install", argument.toStdString()});

    QCOMPARE(std::get<CommandResult>(outcome), CommandResult{});
    QCOMPARE(brew.recordedRuns(), (QList<QStringList>{{u"install"_s, argument}}));
}

void RunBrewSyncTest::letsTheShellInterpretThePath_data() {
    QTest::addColumn<QString>("ending");
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("split at a space") << u"/brew two"_s << QStringList{u"two"_s, u"tap"_s};
    QTest::newRow("variable") << u"/$BREW_NAME"_s << QStringList{u"tap"_s};
}

void RunBrewSyncTest::letsTheShellInterpretThePath() {
    QFETCH(QString, ending);
    QFETCH(QStringList, arguments);
    const FakeBrew brew;
    brew.setBody(brew.recordArguments());
    qputenv("BREW_NAME", "brew");

    const RunOutcome outcome = runBrewSync((brew.folder() + ending).toStdString(), {"tap"});

    QCOMPARE(std::get<CommandResult>(outcome), CommandResult{});
    QCOMPARE(brew.recordedRuns(), QList<QStringList>{arguments});
}

void RunBrewSyncTest::returnsWhatTheCommandDid_data() {
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<CommandResult>("result");

    QTest::newRow("nothing") << QByteArray(":") << CommandResult{};
    QTest::newRow("both streams") << QByteArray("echo out; echo err >&2; echo more")
                                  << CommandResult{"out\nmore\n", "err\n", 0};
    QTest::newRow("untrimmed") << QByteArray("printf ' \\n\\ta\\r\\n\\n '; printf '\\n' >&2")
                               << CommandResult{" \n\ta\r\n\n ", "\n", 0};
    QTest::newRow("NUL in the output")
        << QByteArray("printf 'a\\0b'") << CommandResult{std::string("a\0b", 3), "", 0};
    QTest::newRow("error message only") << QByteArray("echo 'Error: no such keg' >&2; exit 1")
                                        << CommandResult{"", "Error: no such keg\n", 1};
    QTest::newRow("output and failure")
        << QByteArray("echo half; exit 2") << CommandResult{"half\n", "", 2};
    QTest::newRow("highest status") << QByteArray("exit 255") << CommandResult{"", "", 255};
    QTest::newRow("ended by SIGKILL")
        << QByteArray("echo half; kill -9 $$") << CommandResult{"half\n", "", 128 + 9};
    QTest::newRow("ended by SIGTERM")
        << QByteArray("kill -15 $$") << CommandResult{"", "", 128 + 15};
}

void RunBrewSyncTest::returnsWhatTheCommandDid() {
    QFETCH(QByteArray, body);
    QFETCH(CommandResult, result);
    QCOMPARE(std::get<CommandResult>(runIn(FakeBrew(body))), result);
}

void RunBrewSyncTest::returnsFailuresBehindTheShellAsResults_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<std::int32_t>("status");
    QTest::addColumn<QByteArray>("complaint");
    QTest::newRow("no brew") << u"missing"_s << 127 << QByteArray("no such file or directory");
    QTest::newRow("not executable") << u"plain"_s << 126 << QByteArray("permission denied");
    QTest::newRow("a folder") << u""_s << 126 << QByteArray("permission denied");
}

void RunBrewSyncTest::returnsFailuresBehindTheShellAsResults() {
    QFETCH(QString, name);
    QFETCH(std::int32_t, status);
    QFETCH(QByteArray, complaint);
    m_home->write(u"bin/plain"_s, "#!/bin/sh\n");

    const RunOutcome outcome =
        runBrewSync((m_home->path() + u"/bin/"_s + name).toStdString(), {"tap"});

    const auto& result = std::get<CommandResult>(outcome);
    QCOMPARE(result.status, status);
    QCOMPARE(result.standardOutput, std::string());
    QVERIFY2(QByteArray::fromStdString(result.standardError).contains(complaint),
             result.standardError.c_str());
}

void RunBrewSyncTest::blanksOnlyTheStreamThatIsNotUtf8_data() {
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<CommandResult>("result");
    const QByteArray broken = "printf 'caf\\303\\251 \\377'";
    QTest::newRow("output") << broken + "; echo fine >&2; exit 3" << CommandResult{"", "fine\n", 3};
    QTest::newRow("error") << "echo fine; " + broken + " >&2; exit 3"
                           << CommandResult{"fine\n", "", 3};
    QTest::newRow("both") << "{ " + broken + "; } >&2; " + broken << CommandResult{};
    QTest::newRow("neither") << QByteArray("printf '한국어'; printf '🍺' >&2")
                             << CommandResult{"한국어", "🍺", 0};
    QTest::newRow("first and last of all")
        << QByteArray("printf '\\177\\302\\200'; printf '\\364\\217\\277\\277' >&2")
        << CommandResult{"\x7F\xC2\x80", "\xF4\x8F\xBF\xBF", 0};
    const std::pair<const char*, QByteArray> slips[]{
        {"cut short", "caf\\303"},
        {"lone continuation", "\\251"},
        {"overlong", "\\300\\200"},
        {"surrogate", "\\355\\240\\200"},
        {"beyond Unicode", "\\364\\220\\200\\200"},
    };
    for (const auto& [name, bytes] : slips) {
        // Both near the beginning and far behind it.
        QTest::newRow(name) << "printf '" + bytes + "'; printf '%0200d" + bytes + "' 0 >&2"
                            << CommandResult{};
    }
}

void RunBrewSyncTest::blanksOnlyTheStreamThatIsNotUtf8() {
    returnsWhatTheCommandDid();
}

void RunBrewSyncTest::readsALargeOutputWhole() {
    constexpr qsizetype size = 100'000'000;
    const QByteArray line = "0123456789abcdef.";
    const FakeBrew brew("yes " + line + " | head -c " + QByteArray::number(size));

    const auto result = std::get<CommandResult>(runIn(brew));

    QCOMPARE(static_cast<qsizetype>(result.standardOutput.size()), size);
    QByteArray expected = (line + '\n').repeated(size / (line.size() + 1) + 1);
    expected.truncate(size);
    QVERIFY(std::string_view(expected.constData(), static_cast<std::size_t>(size)) ==
            result.standardOutput);
}

void RunBrewSyncTest::runsInALoginShellThatIsNotInteractive() {
    m_home->write(u".zprofile"_s, "export FROM_PROFILE=read\n");
    m_home->write(u".zshrc"_s, "export FROM_RC=read\n");
    const FakeBrew brew("echo \"profile: $FROM_PROFILE, rc: $FROM_RC\"");
    QCOMPARE(std::get<CommandResult>(runIn(brew)).standardOutput,
             std::string("profile: read, rc: \n"));
}

void RunBrewSyncTest::showsWhatTheProfilePrints() {
    m_home->write(u".zprofile"_s, "echo Welcome back!\necho Careful! >&2\n");
    const auto result = std::get<CommandResult>(runIn(FakeBrew("echo '{}'")));
    QCOMPARE(result, (CommandResult{"Welcome back!\n{}\n", "Careful!\n", 0}));
}

void RunBrewSyncTest::leavesEnvironmentAndWorkingDirectoryAlone() {
    qputenv("SOME_SETTING", "kept as it is");
    const FakeBrew brew("echo \"$SOME_SETTING\"; pwd -P");
    const std::string folder = QDir(QDir::currentPath()).canonicalPath().toStdString();
    QCOMPARE(std::get<CommandResult>(runIn(brew)).standardOutput,
             "kept as it is\n" + folder + '\n');
}

void RunBrewSyncTest::refusesACommandWithANulCharacter_data() {
    QTest::addColumn<std::string>("brewPath");
    QTest::addColumn<std::string>("argument");
    const std::string withNul("a\0b", 3);
    QTest::newRow("in an argument") << std::string("brew") << withNul;
    QTest::newRow("in the path") << withNul << std::string("tap");
}

void RunBrewSyncTest::refusesACommandWithANulCharacter() {
    QFETCH(std::string, brewPath);
    QFETCH(std::string, argument);
    const RunOutcome outcome = runBrewSync(brewPath, {"install", argument});
    const auto* error = std::get_if<LaunchError>(&outcome);
    QVERIFY(error != nullptr);
    QCOMPARE(error->description,
             std::string("The command contains a NUL character, which no command line can carry."));
}

void RunBrewSyncTest::reportsThatNoDescriptorIsLeft() {
    const FakeBrew brew;
    RunOutcome outcome;
    {
        const DescriptorLimit limit(0);
        outcome = runIn(brew);
    }
    const auto* error = std::get_if<LaunchError>(&outcome);
    QVERIFY(error != nullptr);
    QCOMPARE(error->description,
             std::string("/bin/zsh could not be started: Too many open files."));
}

QTEST_GUILESS_MAIN(RunBrewSyncTest)
#include "tst_runbrewsync.moc"
