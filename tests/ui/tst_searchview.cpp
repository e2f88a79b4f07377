// SPDX-License-Identifier: MIT
#include "Input.h"
#include "LangManager.h"
#include "PageWindow.h"
#include "Samples.h"
#include "UiTest.h"
#include "pages/SearchView.h"
#include "widgets/RowListView.h"
#include "widgets/SearchField.h"

#include <QElapsedTimer>
#include <QKeyEvent>
#include <QScopeGuard>

using namespace Qt::StringLiterals;

namespace {

using Kind = RowAction::Kind;

constexpr qint64 delay = 500;

struct SearchWindow final {
    SearchWindow() { show(); }

    void show() { window.show(new SearchView(window.manager, window.selection)); }

    /// Gives the manager the results of a search.
    void publish(const QList<SearchResult>& results) {
        manager.searchResults.set(results);
        QCoreApplication::processEvents();
    }

    [[nodiscard]] PageDriver page() const { return window.page(); }

    [[nodiscard]] ListDriver list() const { return window.page().list(); }

    [[nodiscard]] Kind action(const QString& id) const { return list().row(id).actions.at(0).kind; }

    PageWindow window;
    ScriptedBrew& brew{window.brew};
    BrewManager& manager{window.manager};
};

/// Notes how long after the last character that was typed each search starts, in milliseconds.
class Starts final : public QObject {
public:
    explicit Starts(const SearchWindow& search) {
        BrewManager& manager = search.manager;
        manager.isSearching.subscribe(this, [this](bool isSearching) {
            if (isSearching)
                m_starts.append(m_sinceKey.elapsed());
        });
        search.page().searchField().installEventFilter(this);
        m_sinceKey.start();
    }

    [[nodiscard]] const QList<qint64>& all() const { return m_starts; }

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        // Before the field has seen it: however slow the machine is, what is waited for since
        // then is not shorter than what the page waits.
        if (event->type() == QEvent::KeyPress &&
            static_cast<QKeyEvent*>(event)->key() == Qt::Key_unknown)
            m_sinceKey.start();
        return false;
    }

private:
    QElapsedTimer m_sinceKey;
    QList<qint64> m_starts;
};

/// A timer may be early by the grain of its clock, and late by any time on a busy machine.
bool isAfterDelay(qint64 milliseconds) {
    constexpr qint64 grain = 20;
    return milliseconds >= delay - grain;
}

/// Waits for longer than a search would be delayed; returns whether one has started.
bool startsOneMore(const Starts& starts) {
    const qsizetype before = starts.all().size();
    return QTest::qWaitFor([&] { return starts.all().size() > before; },
                           static_cast<int>(2 * delay));
}

const SearchResult wget{u"wget"_s, PackageType::formula, false};
const SearchResult jq{u"jq"_s, PackageType::formula, true};
const SearchResult iina{u"iina"_s, PackageType::cask, false};

} // namespace

class SearchViewTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void invitesToType();
    void searchesOnceTypingHasStopped();
    void searchesForASingleCharacter();
    void startsToWaitAgainAtEveryKey();
    void searchesNothingWhenTheFieldIsCleared_data();
    void searchesNothingWhenTheFieldIsCleared();
    void searchesAtOnceByReturnAndAgainLater();
    void leavesABlankQueryToTheManager();
    void showsItsStatesInOrder();
    void keepsEarlierResultsWhileItSearches();
    void listsFormulaeBeforeCasks_data();
    void listsFormulaeBeforeCasks();
    void takesWhatIsTypedInTheResultsToTheField();
    void describesAHit();
    void installs_data();
    void installs();
    void saysInstalledAlsoWhileItInstalls();
    void searchesNothingAfterAFailedInstall();
    void keepsResultsButNotTheFieldWhenItIsShownAnew();
    void choosesWhatIsClicked();
    void speaksTheLanguage_data();
    void speaksTheLanguage();
};

void SearchViewTest::invitesToType() {
    const SearchWindow search;
    QCOMPARE(search.page().title(), u"Search"_s);
    QCOMPARE(search.page().state(), u"Type to search Homebrew packages"_s);
    QCOMPARE(search.page().stateSymbol(), u"magnifyingglass"_s);
    QCOMPARE(search.page().searchField().placeholderText(), u"Search Homebrew packages"_s);
    QVERIFY(!search.page().hasButton(u"refreshButton"_s));
    QCOMPARE(search.brew.runs(), QStringList());
}

void SearchViewTest::searchesOnceTypingHasStopped() {
    const SearchWindow search;
    const Starts starts(search);
    search.page().typeToSearch(u"abc"_s);
    QTRY_COMPARE(starts.all().size(), 1);
    QVERIFY(isAfterDelay(starts.all().constFirst()));
    QTRY_COMPARE(search.brew.runs(), QStringList{u"search abc"_s});
    // And never again by itself.
    QVERIFY(!startsOneMore(starts));
}

void SearchViewTest::searchesForASingleCharacter() {
    const SearchWindow search;
    search.page().typeToSearch(u"r"_s);
    QTRY_COMPARE(search.brew.runs(), QStringList{u"search r"_s});
}

void SearchViewTest::startsToWaitAgainAtEveryKey() {
    const SearchWindow search;
    const Starts starts(search);
    QString typed = u"a"_s;
    search.page().typeToSearch(typed);
    QElapsedTimer sinceFirstKey;
    sinceFirstKey.start();
    // Key after key for longer than the delay.
    while (!isAfterDelay(sinceFirstKey.elapsed() - delay)) {
        Input::type(u"b"_s);
        typed += u'b';
    }
    const qsizetype inBetween = starts.all().size();
    QTRY_COMPARE(search.brew.runs().value(inBetween), u"search "_s + typed);
    // A machine that stood still between two keys may have searched there, but not too soon.
    for (const qint64 start : starts.all())
        QVERIFY(isAfterDelay(start));
}

void SearchViewTest::searchesNothingWhenTheFieldIsCleared_data() {
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("Escape") << Qt::Key_Escape;
    QTest::newRow("Backspace") << Qt::Key_Backspace;
}

void SearchViewTest::searchesNothingWhenTheFieldIsCleared() {
    QFETCH(Qt::Key, key);
    SearchWindow search;
    const Starts starts(search);
    search.publish({wget});
    search.page().typeToSearch(u"a"_s);
    QVERIFY(search.page().hasList());
    Input::key(key);
    QCOMPARE(search.manager.searchResults->size(), 0);
    QTRY_COMPARE(search.page().state(), u"Type to search Homebrew packages"_s);
    QVERIFY(!startsOneMore(starts));
    QCOMPARE(search.brew.runs(), QStringList());
}

void SearchViewTest::searchesAtOnceByReturnAndAgainLater() {
    const SearchWindow search;
    const Starts starts(search);
    search.page().typeToSearch(u"ab"_s);
    search.brew.hold(u"search ab"_s);
    Input::key(Qt::Key_Return);
    QCOMPARE(starts.all().size(), 1);
    QTRY_COMPARE(starts.all().size(), 2);
    QVERIFY(isAfterDelay(starts.all().constLast()));
    QTRY_COMPARE(search.brew.runs(), (QStringList{u"search ab"_s, u"search ab"_s}));
    search.brew.release(u"search ab"_s);
    QTRY_VERIFY(!*search.manager.isSearching);
}

void SearchViewTest::leavesABlankQueryToTheManager() {
    SearchWindow search;
    search.publish({wget});
    search.page().typeToSearch(u"  "_s);
    QVERIFY(search.page().hasList());
    Input::key(Qt::Key_Return);
    QTRY_COMPARE(search.page().state(), u"No results found"_s);
    QVERIFY(!*search.manager.isSearching);
    QCOMPARE(search.brew.runs(), QStringList());
}

void SearchViewTest::showsItsStatesInOrder() {
    const SearchWindow search;
    search.brew.answer(u"search wget"_s, "==> Formulae\nwget\nwgetpaste\n\n==> Casks\nwgetter\n");
    search.brew.hold(u"search wget"_s);
    search.page().typeToSearch(u"wget"_s);
    QTRY_COMPARE(search.page().state(), u"No results found"_s);
    Input::key(Qt::Key_Return);
    QTRY_COMPARE(search.page().state(), u"Searching..."_s);
    QVERIFY(search.page().isBusy());
    search.brew.release(u"search wget"_s);
    QTRY_VERIFY(search.page().hasList());
    QCOMPARE(search.list().texts(), (QStringList{u"Formulae (2)"_s, u"wget"_s, u"wgetpaste"_s,
                                                 u"Casks (1)"_s, u"wgetter"_s}));
    search.brew.answer(u"search xyz"_s, {}, 1);
    search.page().typeToSearch(u"xyz"_s);
    Input::key(Qt::Key_Return);
    QTRY_COMPARE(search.page().state(), u"No results found"_s);
    QCOMPARE(search.page().stateSymbol(), u"magnifyingglass"_s);
}

void SearchViewTest::keepsEarlierResultsWhileItSearches() {
    SearchWindow search;
    search.publish({wget});
    search.brew.hold(u"search a"_s);
    search.page().typeToSearch(u"a"_s);
    Input::key(Qt::Key_Return);
    QVERIFY(*search.manager.isSearching);
    QCoreApplication::processEvents();
    QCOMPARE(search.list().texts(), (QStringList{u"Formulae (1)"_s, u"wget"_s}));
    QCOMPARE(search.page().state(), QString());
    search.brew.release(u"search a"_s);
    QTRY_COMPARE(search.page().state(), u"No results found"_s);
}

void SearchViewTest::listsFormulaeBeforeCasks_data() {
    QTest::addColumn<QList<SearchResult>>("results");
    QTest::addColumn<QStringList>("rows");
    using Results = QList<SearchResult>;
    QTest::newRow("mixed") << Results{iina, wget, jq}
                           << QStringList{u"Formulae (2)"_s, u"wget"_s, u"jq, Installed"_s,
                                          u"Casks (1)"_s, u"iina"_s};
    QTest::newRow("casks") << Results{iina} << QStringList{u"Casks (1)"_s, u"iina"_s};
    QTest::newRow("formulae") << Results{wget} << QStringList{u"Formulae (1)"_s, u"wget"_s};
    QTest::newRow("twice the same")
        << Results{wget, wget} << QStringList{u"Formulae (2)"_s, u"wget"_s, u"wget"_s};
}

void SearchViewTest::listsFormulaeBeforeCasks() {
    QFETCH(QList<SearchResult>, results);
    QFETCH(QStringList, rows);
    SearchWindow search;
    search.publish(results);
    QCOMPARE(search.list().texts(), rows);
}

void SearchViewTest::takesWhatIsTypedInTheResultsToTheField() {
    const SearchWindow search;
    search.page().typeToSearch(u"w"_s);
    search.manager.searchResults.set({wget, jq});
    QTRY_VERIFY(search.page().hasList());
    search.list().view().setFocus();
    Input::type(u"g"_s);
    QVERIFY(search.page().searchField().hasFocus());
    QCOMPARE(search.page().searchField().text(), u"wg"_s);
}

void SearchViewTest::describesAHit() {
    SearchWindow search;
    search.publish({wget, jq, iina});
    const Row formula = search.list().row(u"formula-wget"_s);
    QCOMPARE(formula.symbol, u"shippingbox"_s);
    QCOMPARE(formula.symbolTone, Row::Tone::Formula);
    QCOMPARE(formula.actions.at(0).kind, Kind::Button);
    QCOMPARE(formula.actions.at(0).title, u"Install"_s);
    const Row installed = search.list().row(u"formula-jq"_s);
    QCOMPARE(installed.actions.at(0).kind, Kind::Badge);
    QCOMPARE(installed.actions.at(0).title, u"Installed"_s);
    const Row cask = search.list().row(u"cask-iina"_s);
    QCOMPARE(cask.symbol, u"macwindow"_s);
    QCOMPARE(cask.symbolTone, Row::Tone::Cask);
}

void SearchViewTest::installs_data() {
    QTest::addColumn<QString>("id");
    QTest::addColumn<QStringList>("runs");
    QTest::newRow("formula") << u"formula-wget"_s
                             << QStringList{u"install wget"_s, ScriptedBrew::infoFormulae,
                                            u"search wget"_s};
    QTest::newRow("cask") << u"cask-iina"_s
                          << QStringList{u"install --cask iina"_s, ScriptedBrew::infoCasks,
                                         u"search iina"_s};
}

void SearchViewTest::installs() {
    QFETCH(QString, id);
    QFETCH(QStringList, runs);
    SearchWindow search;
    search.brew.setFormulae({Samples::formula(u"wget"_s)});
    search.brew.setCasks({Samples::cask(u"iina"_s)});
    search.brew.answer(u"search wget"_s, "==> Formulae\nwget\n");
    search.brew.answer(u"search iina"_s, "==> Casks\niina\n");
    search.brew.hold(runs.at(0));
    search.brew.hold(runs.at(1));
    search.publish({wget, {u"other"_s}, iina});
    search.list().clickAction(id);
    QTRY_COMPARE(search.action(id), Kind::Spinner);
    for (const QString& other : search.list().ids()) {
        if (!other.isEmpty() && other != id)
            QVERIFY(search.list().row(other).actions.at(0).canTrigger());
    }
    search.brew.release(runs.at(0));
    // One after the other; the row is free again as soon as the install is through.
    QTRY_COMPARE(search.brew.runs(), runs.first(2));
    QTRY_COMPARE(search.action(id), Kind::Button);
    search.brew.release(runs.at(1));
    QTRY_COMPARE(search.list().texts().size(), 2);
    QCOMPARE(search.action(id), Kind::Badge);
    QCOMPARE(search.brew.runs(), runs);
    QCOMPARE(search.page().searchField().text(), QString());
}

void SearchViewTest::saysInstalledAlsoWhileItInstalls() {
    SearchWindow search;
    search.publish({wget});
    search.brew.fail(u"install wget"_s);
    search.brew.hold(u"install wget"_s);
    search.list().clickAction(u"formula-wget"_s);
    QTRY_COMPARE(search.action(u"formula-wget"_s), Kind::Spinner);
    // Another search has found it installed.
    search.publish({{u"wget"_s, PackageType::formula, true}});
    QTRY_COMPARE(search.action(u"formula-wget"_s), Kind::Badge);
    QVERIFY(*search.manager.isRunningOperation);
    search.brew.release(u"install wget"_s);
    QTRY_VERIFY(!*search.manager.isRunningOperation);
}

void SearchViewTest::searchesNothingAfterAFailedInstall() {
    SearchWindow search;
    search.publish({wget, iina});
    search.brew.fail(u"install wget"_s);
    search.list().clickAction(u"formula-wget"_s);
    QTRY_COMPARE(search.action(u"formula-wget"_s), Kind::Spinner);
    QTRY_COMPARE(search.action(u"formula-wget"_s), Kind::Button);
    QVERIFY(!*search.manager.isSearching && !*search.manager.isLoadingFormulae);
    QCOMPARE(search.brew.runs(), QStringList{u"install wget"_s});
    QCOMPARE(search.list().texts().size(), 4);
}

void SearchViewTest::keepsResultsButNotTheFieldWhenItIsShownAnew() {
    SearchWindow search;
    const Starts starts(search);
    search.publish({wget});
    search.page().typeToSearch(u"a"_s);
    search.show();
    QTRY_COMPARE(search.page().searchField().text(), QString());
    QCOMPARE(search.list().texts(), (QStringList{u"Formulae (1)"_s, u"wget"_s}));
    // What was waiting to be searched went with the page.
    QVERIFY(!startsOneMore(starts));
    QCOMPARE(search.brew.runs(), QStringList());
}

void SearchViewTest::choosesWhatIsClicked() {
    SearchWindow search;
    search.publish({wget, iina});
    search.list().click(u"cask-iina"_s);
    QCOMPARE(search.window.selection.selectedPackageID(), u"cask-iina"_s);
    QTRY_COMPARE(search.list().selectedIds(), QStringList{u"cask-iina"_s});
}

void SearchViewTest::speaksTheLanguage_data() {
    QTest::addColumn<Lang>("lang");
    QTest::addColumn<QStringList>("texts");
    QTest::newRow("ko") << Lang::ko
                        << QStringList{u"검색"_s, u"Homebrew 패키지 검색"_s, u"설치"_s,
                                       u"설치됨"_s};
    QTest::newRow("ja") << Lang::ja
                        << QStringList{u"検索"_s, u"Homebrewパッケージを検索"_s, u"インストール"_s,
                                       u"インストール済み"_s};
}

void SearchViewTest::speaksTheLanguage() {
    QFETCH(Lang, lang);
    QFETCH(QStringList, texts);
    LangManager::shared().setCurrent(lang);
    const auto restore = qScopeGuard([] { LangManager::shared().setCurrent(Lang::en); });
    SearchWindow search;
    QCOMPARE(search.page().title(), texts.at(0));
    QCOMPARE(search.page().state(), texts.at(1));
    QCOMPARE(search.page().searchField().placeholderText(), texts.at(1));
    search.publish({wget, jq});
    QCOMPARE(search.list().row(u"formula-wget"_s).actions.at(0).title, texts.at(2));
    QCOMPARE(search.list().row(u"formula-jq"_s).actions.at(0).title, texts.at(3));
}

LUMORA_UI_TEST_MAIN(SearchViewTest)
#include "tst_searchview.moc"
