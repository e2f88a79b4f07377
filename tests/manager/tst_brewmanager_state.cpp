// SPDX-License-Identifier: MIT
#include "BrewAt.h"
#include "FreshHome.h"
#include "LoadCase.h"
#include "PackageNamed.h"
#include "PublicationRecorder.h"

#include <QtTest>

#include <filesystem>

using namespace Qt::StringLiterals;

namespace {

using Change = std::function<void(BrewManager&)>;

template <class T>
Change to(Published<T> BrewManager::*property, const T& value) {
    return [property, value](BrewManager& manager) { (manager.*property).set(value); };
}

} // namespace

class BrewManagerStateTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init() { m_home.emplace(); }

    void isEmptyAndIdleAtFirst();
    void looksForBrewInTheUsualPlaces();
    void asksTheShellForBrew();
    void keepsThePathAsItIs_data();
    void keepsThePathAsItIs();
    void saysThatThereIsNoBrew();
    void countsAPathThatIsNotUtf8AsNone();
    void announcesEveryChangeOfAProperty_data();
    void announcesEveryChangeOfAProperty();
    void forgetsTheLastFailureWhenALoadStarts_data();
    void forgetsTheLastFailureWhenALoadStarts();

private:
    std::optional<FreshHome> m_home;
};

void BrewManagerStateTest::isEmptyAndIdleAtFirst() {
    const FakeBrew brew;
    brew.setBody(brew.recordArguments());
    const BrewManager manager(brewAt(brew));

    QVERIFY(manager.formulae->isEmpty());
    QVERIFY(manager.casks->isEmpty());
    QVERIFY(manager.outdatedFormulae->isEmpty());
    QVERIFY(manager.outdatedCasks->isEmpty());
    QVERIFY(manager.taps->isEmpty());
    QVERIFY(manager.searchResults->isEmpty());
    QVERIFY(!*manager.isLoadingFormulae);
    QVERIFY(!*manager.isLoadingCasks);
    QVERIFY(!*manager.isLoadingOutdated);
    QVERIFY(!*manager.isLoadingTaps);
    QVERIFY(!*manager.isSearching);
    QVERIFY(!*manager.isRunningOperation);
    QCOMPARE(*manager.operationOutput, QString());
    QCOMPARE(*manager.errorMessage, std::nullopt);
    QVERIFY(*manager.brewAvailable);
    QCOMPARE(manager.brewPath(), brew.path());
    QCOMPARE(brew.recordedRuns(), QList<QStringList>());
}

void BrewManagerStateTest::looksForBrewInTheUsualPlaces() {
    m_home->write(u".homebrew/bin/brew"_s, "");
    QString expected = m_home->path() + u"/.homebrew/bin/brew"_s;
    for (const QString& earlier : {u"/usr/local/bin/brew"_s, u"/opt/homebrew/bin/brew"_s}) {
        if (QFile::exists(earlier))
            expected = earlier;
    }
    const BrewManager manager;
    QCOMPARE(manager.brewPath(), expected);
    QVERIFY(*manager.brewAvailable);
}

void BrewManagerStateTest::asksTheShellForBrew() {
    m_home->write(u"elsewhere/brew"_s, "");
    m_home->write(u".zshrc"_s, "which() { print $HOME/elsewhere/brew; }\n");
    QString expected = m_home->path() + u"/elsewhere/brew"_s;
    for (const QString& usual : {u"/home/linuxbrew/.linuxbrew/bin/brew"_s, u"/usr/local/bin/brew"_s,
                                 u"/opt/homebrew/bin/brew"_s}) {
        if (QFile::exists(usual))
            expected = usual;
    }
    const BrewManager manager;
    QCOMPARE(manager.brewPath(), expected);
    QVERIFY(*manager.brewAvailable);
}

void BrewManagerStateTest::keepsThePathAsItIs_data() {
    QTest::addColumn<QString>("folder");
    QTest::addColumn<bool>("runs");
    QTest::newRow("not ASCII") << u"커피잔é"_s << true;
    QTest::newRow("could be composed") << u"cafe\u0301"_s << true;
    // The shell gets the path unquoted and splits it.
    QTest::newRow("two blanks") << u"two  blanks"_s << false;
    QTest::newRow("blanks around") << u" around "_s << false;
}

void BrewManagerStateTest::keepsThePathAsItIs() {
    QFETCH(QString, folder);
    QFETCH(bool, runs);
    const QString brew = m_home->path() + u'/' + folder + u"/brew"_s;
    m_home->write(folder + u"/brew"_s, "#!/bin/sh\necho user/tools\n");
    QVERIFY(QFile::setPermissions(brew, QFile::ReadOwner | QFile::ExeOwner));
    BrewManager manager(brewAt(brew));
    QVERIFY(*manager.brewAvailable);
    QCOMPARE(manager.brewPath(), brew);
    QCoro::waitFor(manager.loadTaps());
    QCOMPARE(manager.taps->size(), runs ? 1 : 0);
}

void BrewManagerStateTest::countsAPathThatIsNotUtf8AsNone() {
    const std::string home = m_home->path().toStdString() + "/caf\xE9";
    BrewDiscovery discovery{.candidates = {BrewDiscovery::usual(home).candidates[2]},
                            .askShell = false};
    std::filesystem::create_directories(discovery.candidates[0]);
    const BrewManager manager(discovery);
    QVERIFY(!*manager.brewAvailable);
    QCOMPARE(manager.brewPath(), QString());
}

void BrewManagerStateTest::saysThatThereIsNoBrew() {
    const BrewManager manager(brewAt(m_home->path() + u"/nowhere/brew"_s));
    QVERIFY(!*manager.brewAvailable);
    QCOMPARE(manager.brewPath(), QString());
    QCOMPARE(*manager.errorMessage, std::nullopt);
}

void BrewManagerStateTest::announcesEveryChangeOfAProperty_data() {
    QTest::addColumn<Change>("change");
    QTest::addColumn<QString>("line");
    const auto row = [](const char* name, const Change& change, const QString& text) {
        QTest::newRow(name) << change
                            << u"announced: "_s + QString::fromUtf8(name) + u" = "_s + text;
    };
    const QList<BrewPackage> packages{packageNamed(u"wget"_s)};
    const QList<OutdatedPackage> outdated{{u"wget"_s, u"1"_s, u"2"_s, PackageType::formula}};
    const QString oneName = uR"(1: "wget")"_s;
    row("formulae", to(&BrewManager::formulae, packages), oneName);
    row("casks", to(&BrewManager::casks, packages), oneName);
    row("outdatedFormulae", to(&BrewManager::outdatedFormulae, outdated), oneName);
    row("outdatedCasks", to(&BrewManager::outdatedCasks, outdated), oneName);
    row("taps", to(&BrewManager::taps, QList<BrewTap>{{u"wget"_s}}), oneName);
    row("searchResults", to(&BrewManager::searchResults, QList<SearchResult>{{.name = u"wget"_s}}),
        oneName);
    row("isLoadingFormulae", to(&BrewManager::isLoadingFormulae, true), u"true"_s);
    row("isLoadingCasks", to(&BrewManager::isLoadingCasks, true), u"true"_s);
    row("isLoadingOutdated", to(&BrewManager::isLoadingOutdated, true), u"true"_s);
    row("isLoadingTaps", to(&BrewManager::isLoadingTaps, true), u"true"_s);
    row("isSearching", to(&BrewManager::isSearching, true), u"true"_s);
    row("isRunningOperation", to(&BrewManager::isRunningOperation, true), u"true"_s);
    row("operationOutput", to(&BrewManager::operationOutput, u"wget"_s), uR"("wget")"_s);
    row("errorMessage", to(&BrewManager::errorMessage, std::optional(u"wget"_s)), uR"("wget")"_s);
    row("brewAvailable", to(&BrewManager::brewAvailable, false), u"false"_s);
}

void BrewManagerStateTest::announcesEveryChangeOfAProperty() {
    QFETCH(Change, change);
    QFETCH(QString, line);
    const FakeBrew brew;
    BrewManager manager(brewAt(brew));
    const PublicationRecorder recorder(manager);
    change(manager);
    QCOMPARE(recorder.lines(), QStringList{line});
    change(manager);
    QCOMPARE(recorder.lines(), (QStringList{line, line}));
}

void BrewManagerStateTest::forgetsTheLastFailureWhenALoadStarts_data() {
    LoadCase::addRows();
}

void BrewManagerStateTest::forgetsTheLastFailureWhenALoadStarts() {
    QFETCH(QString, load);
    const FakeBrew brew;
    brew.setBody(LoadCase::answers(brew, [&](const LoadCase&) { return brew.waitFor(u"go"_s); }));
    BrewManager manager(brewAt(brew));
    manager.errorMessage.set(u"brew tap failed"_s);

    const auto task = (manager.*LoadCase::named(load).load)();
    QCOMPARE(*manager.errorMessage, std::nullopt);
    brew.open(u"go"_s);
    QTRY_VERIFY(task.isReady());
    QCOMPARE(*manager.errorMessage, std::nullopt);
}

QTEST_GUILESS_MAIN(BrewManagerStateTest)
#include "tst_brewmanager_state.moc"
