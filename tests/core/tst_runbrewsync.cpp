// SPDX-License-Identifier: MIT
#include "FakeBrew.h"
#include "FreshHome.h"
#include "RunBrewSync.h"

#include <QtTest>

using namespace Qt::StringLiterals;

class RunBrewSyncTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void buildsTheCommandLine_data();
    void buildsTheCommandLine();
    void handsArgumentsOverUnchanged_data();
    void handsArgumentsOverUnchanged();

private:
    FreshHome m_home;
};

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
    QTest::newRow("no arguments") << brew << QStringList{} << u"/opt/homebrew/bin/brew "_s;
    QTest::newRow("path as it stands")
        << u"/a b/$brew"_s << QStringList{u"tap"_s} << u"/a b/$brew 'tap'"_s;
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
    QTest::newRow("single quote") << u"a'b"_s;
    QTest::newRow("only quotes") << u"'''"_s;
    QTest::newRow("spaces") << u"  two  words "_s;
    QTest::newRow("shell characters") << u"$HOME `id` $(id) * ? ; & | < > \\ \" ! ~ # {a,b}"_s;
    QTest::newRow("format") << u"%1 %s %n"_s;
    QTest::newRow("newline") << u"one\ntwo\n"_s;
    QTest::newRow("dash") << u"--force"_s;
    QTest::newRow("not ASCII") << u"한국어 日本語 é 🍺"_s;
    QTest::newRow("empty") << u""_s;
}

void RunBrewSyncTest::handsArgumentsOverUnchanged() {
    QFETCH(QString, argument);
    const FakeBrew brew;
    brew.setBody(brew.recordArguments());

    const RunOutcome outcome =
        runBrewSync(brew.path().toStdString(), {"install", argument.toStdString()});

    QCOMPARE(std::get<CommandResult>(outcome), CommandResult{});
    QCOMPARE(brew.recordedRuns(), (QList<QStringList>{{u"install"_s, argument}}));
}

QTEST_GUILESS_MAIN(RunBrewSyncTest)
#include "tst_runbrewsync.moc"
