// SPDX-License-Identifier: MIT
#include "../core/DescriptorLimit.h"
#include "AwkwardNames.h"
#include "BrewAt.h"
#include "BrewManager.h"
#include "FreshHome.h"
#include "Lines.h"
#include "PackageNamed.h"
#include "PublicationRecorder.h"

#include <QtTest>

using namespace Qt::StringLiterals;

class SearchTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void handsTheQueryOverUnchanged_data();
    void handsTheQueryOverUnchanged();
    void emptiesTheResultsForABlankQuery_data();
    void emptiesTheResultsForABlankQuery();
    void runsForAQueryOfLineEnds();
    void publishesStepByStep();
    void readsHits_data();
    void readsHits();
    void marksWhatIsInstalledAsItsOwnType();
    void marksByTheListsAtItsStart();
    void takesAFailureForNoHits_data();
    void takesAFailureForNoHits();
    void keepsTheHitsWhenBrewCannotBeStarted();

private:
    const FreshHome m_home;
};

namespace {

QStringList described(const QList<SearchResult>& results) {
    QStringList rows;
    for (const SearchResult& result : results)
        rows.append(result.id() + (result.isInstalled ? u" installed"_s : QString()));
    return rows;
}

} // namespace

void SearchTest::handsTheQueryOverUnchanged_data() {
    QTest::addColumn<QString>("query");
    for (const AwkwardName& row : awkwardNames()) {
        if (!row.name.isEmpty())
            QTest::newRow(row.what) << row.name;
    }
    QTest::newRow("blanks around") << u" \twget\u3000"_s;
    QTest::newRow("regular expression") << u"/^lib.*(a|b)$/"_s;
}

void SearchTest::handsTheQueryOverUnchanged() {
    QFETCH(QString, query);
    const FakeBrew brew;
    brew.setBody(brew.recordArguments());
    BrewManager manager(brewAt(brew));
    QCoro::waitFor(manager.search(query));
    QCOMPARE(brew.recordedRuns(), (QList<QStringList>{{u"search"_s, query}}));
}

void SearchTest::emptiesTheResultsForABlankQuery_data() {
    QTest::addColumn<QString>("query");
    QTest::newRow("empty") << u""_s;
    QTest::newRow("spaces") << u"   "_s;
    QTest::newRow("tab") << u"\t"_s;
    QTest::newRow("ideographic space") << u"\u3000"_s;
    QTest::newRow("no-break space") << u"\u00a0"_s;
    QTest::newRow("all of them") << u" \t\u3000\u00a0\u2003"_s;
}

void SearchTest::emptiesTheResultsForABlankQuery() {
    QFETCH(QString, query);
    const FakeBrew brew;
    brew.setBody(brew.recordArguments());
    BrewManager manager(brewAt(brew));
    manager.searchResults.set({{.name = u"wget"_s}});
    manager.isSearching.set(true);
    manager.errorMessage.set(u"brew tap failed"_s);
    const PublicationRecorder recorder(manager);

    const auto task = manager.search(query);
    QVERIFY(task.isReady());
    QCOMPARE(recorder.lines(), QStringList{u"announced: searchResults = 0"_s});

    // By now a run started by mistake would have been recorded, too.
    QCoro::waitFor(manager.search(u"after"_s));
    QCOMPARE(brew.recordedRuns(), (QList<QStringList>{{u"search"_s, u"after"_s}}));
}

void SearchTest::runsForAQueryOfLineEnds() {
    const FakeBrew brew;
    brew.setBody(brew.recordArguments());
    BrewManager manager(brewAt(brew));
    QCoro::waitFor(manager.search(u"\n\n"_s));
    QCOMPARE(brew.recordedRuns(), (QList<QStringList>{{u"search"_s, u"\n\n"_s}}));
}

void SearchTest::publishesStepByStep() {
    const FakeBrew brew;
    brew.setBody(brew.waitFor(u"go"_s) + brew.print("wget\nwget2\n"));
    BrewManager manager(brewAt(brew));
    const PublicationRecorder recorder(manager);
    const auto task = manager.search(u"wget"_s);
    QCOMPARE(recorder.lines(), lines(uR"(
        announced: isSearching = true
        announced: errorMessage = none
    )"_s));
    QVERIFY(!task.isReady());
    brew.open(u"go"_s);
    QTRY_VERIFY(task.isReady());
    QCOMPARE(recorder.lines().sliced(2), lines(uR"(
        announced: searchResults = 2: "wget", "wget2"
        announced: isSearching = false
    )"_s));
}

void SearchTest::readsHits_data() {
    QTest::addColumn<QByteArray>("output");
    QTest::addColumn<QStringList>("hits");
    QTest::newRow("two kinds") << QByteArray("==> Formulae\nwget\nwget2\n\n==> Casks\niina\n")
                               << QStringList{u"formula-wget"_s, u"formula-wget2"_s,
                                              u"cask-iina"_s};
    QTest::newRow("without headings")
        << QByteArray("wget\niina\n") << QStringList{u"formula-wget"_s, u"formula-iina"_s};
    QTest::newRow("hits before a heading")
        << QByteArray("jq\n==> Casks\niina\n") << QStringList{u"formula-jq"_s, u"cask-iina"_s};
    QTest::newRow("casks first") << QByteArray("==> Casks\niina\n==> Formulae\njq\n")
                                 << QStringList{u"cask-iina"_s, u"formula-jq"_s};
    QTest::newRow("unknown heading") << QByteArray("==> Casks\niina\n==> Pouring jq\n==>\nvlc\n")
                                     << QStringList{u"cask-iina"_s, u"cask-vlc"_s};
    QTest::newRow("heading inside a line")
        << QByteArray("\u001b[1m==> Casks\u001b[0m\niina\n") << QStringList{u"cask-iina"_s};
    QTest::newRow("heading with a count")
        << QByteArray("==> Casks (2)\niina\n") << QStringList{u"cask-iina"_s};
    QTest::newRow("both headings in a line")
        << QByteArray("==> Casks ==> Formulae\njq\n") << QStringList{u"formula-jq"_s};
    QTest::newRow("not sorted, duplicates kept")
        << QByteArray("b\na\nb\n") << QStringList{u"formula-b"_s, u"formula-a"_s, u"formula-b"_s};
    QTest::newRow("blanks around")
        << QByteArray("  \tjq \n \t \n\n xz\t") << QStringList{u"formula-jq"_s, u"formula-xz"_s};
    QTest::newRow("several words")
        << QByteArray("No formulae found.\na ==> b\n")
        << QStringList{u"formula-No formulae found."_s, u"formula-a ==> b"_s};
    QTest::newRow("singular is no heading of formulae")
        << QByteArray("==> Casks\niina\n==> Formula\njq\n")
        << QStringList{u"cask-iina"_s, u"cask-jq"_s};
    QTest::newRow("singular is no heading of casks")
        << QByteArray("==> Cask\niina\n") << QStringList{u"formula-iina"_s};
    QTest::newRow("decoration is part of the name")
        << QByteArray("\u001b[1mjq\u001b[0m\nxz ✔\n")
        << QStringList{u"formula-\u001b[1mjq\u001b[0m"_s, u"formula-xz ✔"_s};
    QTest::newRow("line ends of another system")
        << QByteArray("==> Casks\r\niina\r\n") << QStringList{u"cask-iina\r"_s};
    QTest::newRow("text that could be composed")
        << QByteArray("cafe\u0301\n") << QStringList{u"formula-cafe\u0301"_s};
    QTest::newRow("NUL") << QByteArray("a\0b\nc\n", 6)
                         << QStringList{u"formula-a\0b"_s, u"formula-c"_s};
    QTest::newRow("nothing") << QByteArray() << QStringList();
    QTest::newRow("not UTF-8") << QByteArray("jq\n\xff\n") << QStringList();
}

void SearchTest::readsHits() {
    QFETCH(QByteArray, output);
    QFETCH(QStringList, hits);
    const FakeBrew brew;
    brew.setBody(brew.print(output));
    BrewManager manager(brewAt(brew));
    manager.searchResults.set({{.name = u"old"_s}});
    QCoro::waitFor(manager.search(u"x"_s));
    QCOMPARE(described(*manager.searchResults), hits);
}

void SearchTest::marksWhatIsInstalledAsItsOwnType() {
    const FakeBrew brew;
    brew.setBody(brew.print("==> Formulae\njq\nJQ\nboth\niina\n==> Casks\njq\nboth\niina\n"
                            "==> Formulae\nuser/tools/jq\njq ✔\n"));
    BrewManager manager(brewAt(brew));
    manager.formulae.set({packageNamed(u"jq"_s), packageNamed(u"both"_s)});
    // Names are compared, not what else a package is called.
    BrewPackage fromATap = packageNamed(u"jq-tools"_s);
    fromATap.fullName = u"user/tools/jq"_s;
    manager.formulae.set(*manager.formulae + QList{fromATap});
    manager.casks.set({packageNamed(u"iina"_s), packageNamed(u"both"_s)});
    QCoro::waitFor(manager.search(u"x"_s));
    QCOMPARE(
        described(*manager.searchResults),
        (QStringList{u"formula-jq installed"_s, u"formula-JQ"_s, u"formula-both installed"_s,
                     u"formula-iina"_s, u"cask-jq"_s, u"cask-both installed"_s,
                     u"cask-iina installed"_s, u"formula-user/tools/jq"_s, u"formula-jq ✔"_s}));
}

void SearchTest::marksByTheListsAtItsStart() {
    const FakeBrew brew;
    brew.setBody(brew.waitFor(u"go"_s) +
                 brew.print("==> Formulae\njq\nxz\n==> Casks\niina\nvlc\n"));
    BrewManager manager(brewAt(brew));
    manager.formulae.set({packageNamed(u"jq"_s)});
    manager.casks.set({packageNamed(u"iina"_s)});
    const auto task = manager.search(u"x"_s);
    manager.formulae.set({packageNamed(u"xz"_s)});
    manager.casks.set({packageNamed(u"vlc"_s)});
    brew.open(u"go"_s);
    QTRY_VERIFY(task.isReady());
    QCOMPARE(described(*manager.searchResults),
             (QStringList{u"formula-jq installed"_s, u"formula-xz"_s, u"cask-iina installed"_s,
                          u"cask-vlc"_s}));
}

void SearchTest::takesAFailureForNoHits_data() {
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("results");
    QTest::newRow("no hit") << QByteArray("echo 'Error: No formulae found' >&2; exit 1") << u"0"_s;
    QTest::newRow("a line and a failure") << QByteArray("echo jq; exit 1") << uR"(1: "jq")"_s;
    QTest::newRow("ended by a signal") << QByteArray("kill -9 $$") << u"0"_s;
    QTest::newRow("brew has gone") << QByteArray() << u"0"_s;
}

void SearchTest::takesAFailureForNoHits() {
    QFETCH(QByteArray, body);
    QFETCH(QString, results);
    const FakeBrew brew(body);
    BrewManager manager(brewAt(brew));
    if (body.isEmpty())
        brew.remove();
    manager.searchResults.set({{.name = u"old"_s}});
    const PublicationRecorder recorder(manager);
    QCoro::waitFor(manager.search(u"x"_s));
    QCOMPARE(recorder.lines(),
             (QStringList{u"announced: isSearching = true"_s, u"announced: errorMessage = none"_s,
                          u"announced: searchResults = "_s + results,
                          u"announced: isSearching = false"_s}));
}

void SearchTest::keepsTheHitsWhenBrewCannotBeStarted() {
    const FakeBrew brew;
    BrewManager manager(brewAt(brew));
    manager.searchResults.set({{.name = u"old"_s}});
    const PublicationRecorder recorder(manager);
    {
        const DescriptorLimit none(0);
        QCoro::waitFor(manager.search(u"x"_s));
    }
    QCOMPARE(recorder.lines(), lines(uR"(
        announced: isSearching = true
        announced: errorMessage = none
        announced: errorMessage = "Search failed: /bin/zsh could not be started: Too many open files."
        announced: isSearching = false
    )"_s));
    QCOMPARE(described(*manager.searchResults), QStringList{u"formula-old"_s});
}

QTEST_GUILESS_MAIN(SearchTest)
#include "tst_search.moc"
