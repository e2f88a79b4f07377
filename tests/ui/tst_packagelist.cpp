// SPDX-License-Identifier: MIT
#include "Input.h"
#include "LangManager.h"
#include "PackageListCase.h"
#include "Samples.h"
#include "UiTest.h"
#include "widgets/RowListView.h"
#include "widgets/SearchField.h"

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QLocale>
#include <QScopeGuard>

using namespace Qt::StringLiterals;

/// The lists of installed formulae and casks: one page in two kinds.
class PackageListTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void loadsNothingByItself_data();
    void loadsNothingByItself();
    void showsItsStatesInOrder_data();
    void showsItsStatesInOrder();
    void keepsTheListWhileItIsLoadedAgain_data();
    void keepsTheListWhileItIsLoadedAgain();
    void looksAtItsOwnListAlone_data();
    void looksAtItsOwnListAlone();
    void refreshesOneLoadAtATime_data();
    void refreshesOneLoadAtATime();
    void describesAPackage_data();
    void describesAPackage();
    void tagsWhatIsOutdatedAndWhatIsADependency_data();
    void tagsWhatIsOutdatedAndWhatIsADependency();
    void tellsWhoNeedsADependency();
    void takesWhatIsTypedInTheListToTheFilter_data();
    void takesWhatIsTypedInTheListToTheFilter();
    void copiesTheNameOfARow_data();
    void copiesTheNameOfARow();
    void copiesNothingWithoutARow();
    void filters_data();
    void filters();
    void filtersAsTheLocaleKnowsCase_data();
    void filtersAsTheLocaleKnowsCase();
    void tellsAnEmptyFilterResultFromAnEmptyList_data();
    void tellsAnEmptyFilterResultFromAnEmptyList();
    void keepsTheFilterOverAReload_data();
    void keepsTheFilterOverAReload();
    void choosesWhatIsClicked_data();
    void choosesWhatIsClicked();
    void speaksTheLanguage_data();
    void speaksTheLanguage();
};

void PackageListTest::loadsNothingByItself_data() {
    PackageListCase::addRows();
}

void PackageListTest::loadsNothingByItself() {
    QFETCH(PackageType, type);
    const PackageListCase& list = PackageListCase::of(type);
    PageWindow window;
    list.show(window);
    QCOMPARE(window.page().state(), list.nothingInstalled);
    QVERIFY(!*(type == PackageType::cask ? window.manager.isLoadingCasks
                                         : window.manager.isLoadingFormulae));
    QCOMPARE(window.brew.runs(), QStringList());
}

void PackageListTest::showsItsStatesInOrder_data() {
    PackageListCase::addRows();
}

void PackageListTest::showsItsStatesInOrder() {
    QFETCH(PackageType, type);
    const PackageListCase& list = PackageListCase::of(type);
    PageWindow window;
    list.show(window);
    QCOMPARE(window.page().state(), list.nothingInstalled);
    QCOMPARE(window.page().stateSymbol(), list.symbol);
    QVERIFY(!window.page().isBusy());
    QVERIFY(!window.page().hasSearchField());
    QCOMPARE(window.page().title(), list.title + u" (0)"_s);

    list.setInstalled(window.brew, {list.package(u"wget"_s)});
    window.brew.hold(list.load);
    window.page().press(u"refreshButton"_s);
    QTRY_COMPARE(window.page().state(), list.loading);
    QVERIFY(window.page().isBusy());
    QVERIFY(!window.page().hasSearchField());
    QVERIFY(!window.page().hasList());

    window.brew.release(list.load);
    QTRY_VERIFY(window.page().hasList());
    QCOMPARE(window.page().state(), QString());
    QCOMPARE(window.page().list().ids(), QStringList{list.id(u"wget"_s)});
    QCOMPARE(window.page().title(), list.title + u" (1)"_s);
    QCOMPARE(window.page().searchField().placeholderText(), list.placeholder);

    list.setInstalled(window.brew, {});
    window.page().press(u"refreshButton"_s);
    QTRY_COMPARE(window.page().state(), list.nothingInstalled);
    QVERIFY(!window.page().hasList());
}

void PackageListTest::keepsTheListWhileItIsLoadedAgain_data() {
    PackageListCase::addRows();
}

void PackageListTest::keepsTheListWhileItIsLoadedAgain() {
    QFETCH(PackageType, type);
    const PackageListCase& list = PackageListCase::of(type);
    PageWindow window;
    list.publish(window.manager, {list.package(u"jq"_s), list.package(u"wget"_s)});
    list.show(window);
    window.brew.fail(list.load);
    window.brew.hold(list.load);
    window.page().press(u"refreshButton"_s);
    QTRY_VERIFY(!window.page().button(u"refreshButton"_s).isEnabled());
    QCOMPARE(window.page().list().ids(), (QStringList{list.id(u"jq"_s), list.id(u"wget"_s)}));
    window.brew.release(list.load);
    QTRY_VERIFY(window.page().button(u"refreshButton"_s).isEnabled());
    // A load that fails leaves what is there.
    QCOMPARE(window.page().list().ids(), (QStringList{list.id(u"jq"_s), list.id(u"wget"_s)}));
}

void PackageListTest::looksAtItsOwnListAlone_data() {
    PackageListCase::addRows();
}

void PackageListTest::looksAtItsOwnListAlone() {
    QFETCH(PackageType, type);
    const PackageListCase& list = PackageListCase::of(type);
    const PackageListCase& other =
        PackageListCase::of(type == PackageType::cask ? PackageType::formula : PackageType::cask);
    PageWindow window;
    other.publish(window.manager, {other.package(u"wget"_s)});
    (type == PackageType::cask ? window.manager.isLoadingFormulae : window.manager.isLoadingCasks)
        .set(true);
    list.show(window);
    QCOMPARE(window.page().state(), list.nothingInstalled);
    QVERIFY(window.page().button(u"refreshButton"_s).isEnabled());
}

void PackageListTest::refreshesOneLoadAtATime_data() {
    PackageListCase::addRows();
}

void PackageListTest::refreshesOneLoadAtATime() {
    QFETCH(PackageType, type);
    const PackageListCase& list = PackageListCase::of(type);
    PageWindow window;
    list.publish(window.manager, {list.package(u"wget"_s)});
    list.show(window);
    const QAbstractButton& button = window.page().button(u"refreshButton"_s);
    QCOMPARE(button.toolTip(), u"<qt>"_s + list.refreshHelp + u"</qt>"_s);
    QCOMPARE(button.accessibleName(), list.refreshHelp);
    QVERIFY(button.isEnabled());

    window.brew.hold(list.load);
    window.page().press(u"refreshButton"_s);
    QTRY_VERIFY(!button.isEnabled());
    window.page().press(u"refreshButton"_s);
    window.brew.release(list.load);
    QTRY_VERIFY(button.isEnabled());
    QCOMPARE(window.brew.runs(), QStringList{list.load});
}

void PackageListTest::describesAPackage_data() {
    PackageListCase::addRows();
}

void PackageListTest::describesAPackage() {
    QFETCH(PackageType, type);
    const PackageListCase& list = PackageListCase::of(type);
    PageWindow window;
    list.publish(window.manager,
                 {list.package(u"jq"_s, u"JSON processor"_s), list.package(u"wget"_s),
                  Samples::outdated(list.package(u"zsh"_s, u"Shell"_s))});
    list.show(window);
    QCOMPARE(window.page().list().texts(),
             (QStringList{u"jq, JSON processor, 1.2"_s, u"wget, 1.2"_s,
                          u"zsh, Shell, 1.2, outdated"_s}));
    const Row row = window.page().list().row(list.id(u"jq"_s));
    QCOMPARE(row.title, u"jq"_s);
    QCOMPARE(row.subtitle, u"JSON processor"_s);
    // What the package has now to offer, not what is installed of it.
    QCOMPARE(row.version, u"1.2"_s);
    QCOMPARE(row.actions.at(0).kind, RowAction::Kind::Trash);
    QVERIFY(row.symbol.isEmpty());
    QCOMPARE(window.page().list().row(list.id(u"wget"_s)).subtitle, QString());
}

void PackageListTest::tagsWhatIsOutdatedAndWhatIsADependency_data() {
    QTest::addColumn<BrewPackage>("package");
    QTest::addColumn<QStringList>("tags");
    const BrewPackage dependency = Samples::dependency(u"wget"_s);
    QTest::newRow("formula") << Samples::formula(u"wget"_s) << QStringList{};
    QTest::newRow("outdated") << Samples::outdated(Samples::formula(u"wget"_s))
                              << QStringList{u"outdated"_s};
    QTest::newRow("dependency") << dependency << QStringList{u"dependency"_s};
    QTest::newRow("both") << Samples::outdated(dependency)
                          << QStringList{u"outdated"_s, u"dependency"_s};
    QTest::newRow("cask") << Samples::cask(u"wget"_s) << QStringList{};
    QTest::newRow("outdated cask")
        << Samples::outdated(Samples::cask(u"wget"_s)) << QStringList{u"outdated"_s};
}

void PackageListTest::tagsWhatIsOutdatedAndWhatIsADependency() {
    QFETCH(BrewPackage, package);
    QFETCH(QStringList, tags);
    const PackageListCase& list = PackageListCase::of(package.type);
    PageWindow window;
    list.publish(window.manager, {package});
    list.show(window);
    QStringList shown;
    for (const RowTag& tag : window.page().list().row(package.id()).tags) {
        shown.append(tag.text);
        QCOMPARE(tag.tone,
                 tag.text == u"outdated"_s ? RowTag::Tone::Outdated : RowTag::Tone::Neutral);
    }
    QCOMPARE(shown, tags);
}

void PackageListTest::tellsWhoNeedsADependency() {
    const PackageListCase& list = PackageListCase::of(PackageType::formula);
    PageWindow window;
    BrewPackage tapped = Samples::dependency(u"gettext"_s);
    tapped.fullName = u"user/tap/gettext"_s;
    BrewPackage wget = Samples::formula(u"wget"_s);
    wget.dependencies = {u"libidn2"_s, u"user/tap/gettext"_s};
    BrewPackage curl = Samples::formula(u"curl"_s);
    curl.dependencies = {u"libidn2"_s, u"lib"_s};
    list.publish(window.manager, {curl, tapped, Samples::dependency(u"idn"_s),
                                  Samples::dependency(u"libidn2"_s), wget});
    list.show(window);
    // Whatever else is filtered out.
    window.page().typeToSearch(u"i"_s);
    QTRY_COMPARE(window.page().title(), u"Formulae (2)"_s);
    const ListDriver shown = window.page().list();
    const auto said = [&shown](const QString& id) {
        const QModelIndex index = shown.view().rows().indexOf(id);
        return index.data(Qt::AccessibleDescriptionRole).toString();
    };
    QCOMPARE(said(u"formula-libidn2"_s), u"dependency: curl, wget"_s);
    // Nobody does any more.
    QCOMPARE(said(u"formula-idn"_s), QString());
    QCOMPARE(shown.row(u"formula-idn"_s).tags.at(0).explanation(), QString());
    Input::key(Qt::Key_Escape);
    QTRY_COMPARE(window.page().title(), u"Formulae (5)"_s);
    QCOMPARE(said(u"formula-gettext"_s), u"dependency: wget"_s);
    QCOMPARE(said(u"formula-wget"_s), QString());
}

void PackageListTest::takesWhatIsTypedInTheListToTheFilter_data() {
    PackageListCase::addRows();
}

void PackageListTest::takesWhatIsTypedInTheListToTheFilter() {
    QFETCH(PackageType, type);
    const PackageListCase& list = PackageListCase::of(type);
    PageWindow window;
    list.publish(window.manager, {list.package(u"curl"_s), list.package(u"wget"_s)});
    list.show(window);
    SearchField& field = window.page().searchField();
    window.page().list().view().setFocus();
    // Commands of the list, and of none, stay what they are.
    QKeyEvent backspace(QEvent::KeyPress, Qt::Key_Backspace, Qt::NoModifier, u"\b"_s);
    QApplication::sendEvent(&window.page().list().view(), &backspace);
    Input::key(Qt::Key_W, Qt::AltModifier);
    QCOMPARE(field.text(), QString());
    QVERIFY(!field.hasFocus());
    Input::type(u"wg"_s);
    QVERIFY(field.hasFocus());
    QCOMPARE(field.text(), u"wg"_s);
    QTRY_COMPARE(window.page().title(), list.title + u" (1)"_s);
    // It goes on where the text ends.
    Input::key(Qt::Key_Home);
    Input::key(Qt::Key_Down);
    QVERIFY(window.page().list().view().hasFocus());
    Input::type(u"x"_s);
    QCOMPARE(field.text(), u"wgx"_s);
    QTRY_COMPARE(window.page().title(), list.title + u" (0)"_s);
    // Nor do the letters need a row.
    Input::key(Qt::Key_Down);
    Input::type(u"y"_s);
    QCOMPARE(field.text(), u"wgxy"_s);
}

void PackageListTest::copiesTheNameOfARow_data() {
    PackageListCase::addRows();
}

void PackageListTest::copiesTheNameOfARow() {
    QFETCH(PackageType, type);
    const PackageListCase& list = PackageListCase::of(type);
    PageWindow window;
    list.publish(window.manager, {list.package(u"curl"_s, u"Transfers"_s),
                                  list.package(u"wget"_s, u"Fetches files"_s)});
    list.show(window);
    window.page().list().view().setFocus();
    Input::key(Qt::Key_Down);
    Input::key(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), u"wget"_s);
    QCOMPARE(window.page().searchField().text(), QString());
}

void PackageListTest::copiesNothingWithoutARow() {
    QTest::failOnWarning(QRegularExpression(u"not valid"_s));
    const QString before = u"what was copied before"_s;
    QGuiApplication::clipboard()->setText(before);
    PageWindow window;
    const PackageListCase& list = PackageListCase::of(PackageType::formula);
    list.publish(window.manager, {list.package(u"jq"_s)});
    list.show(window);
    window.page().list().view().setFocus();
    window.page().list().view().setCurrentIndex({});
    Input::key(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), before);
}

void PackageListTest::filters_data() {
    QTest::addColumn<PackageType>("type");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QStringList>("names");
    for (const PackageType type : {PackageType::formula, PackageType::cask}) {
        const auto add = [type](const char* name, const QString& typed, const QStringList& names) {
            QTest::addRow("%s: %s", type == PackageType::cask ? "casks" : "formulae", name)
                << type << typed << names;
        };
        add("name or description", u"SSL"_s, {u"curl"_s, u"openssl"_s});
        add("lower case", u"ssl"_s, {u"curl"_s, u"openssl"_s});
        add("part of a name", u"ge"_s, {u"wget"_s});
        add("description alone", u"fetches"_s, {u"wget"_s});
        add("nothing", u"no such thing"_s, {});
        add("blanks count", u" ssl"_s, {u"curl"_s});
        add("not the full name", u"homebrew/"_s, {});
        add("not the home page", u"example.org"_s, {});
        add("not the version", u"1.2"_s, {});
        add("no pattern", u".*"_s, {});
        add("a dot is a dot", u"n.c"_s, {u"n.c"_s});
        add("not ASCII", u"ÜBER"_s, {u"n.c"_s});
    }
}

void PackageListTest::filters() {
    QFETCH(PackageType, type);
    QFETCH(QString, typed);
    QFETCH(QStringList, names);
    const PackageListCase& list = PackageListCase::of(type);
    PageWindow window;
    list.publish(window.manager,
                 {list.package(u"curl"_s, u"Transfers with ssl and more"_s),
                  list.package(u"n.c"_s, u"Sagt über alles etwas"_s), list.package(u"openssl"_s),
                  list.package(u"wget"_s, u"Fetches files"_s)});
    list.show(window);
    window.page().typeToSearch(typed);
    QStringList ids;
    for (const QString& name : names)
        ids.append(list.id(name));
    QTRY_COMPARE(window.page().title(), u"%1 (%2)"_s.arg(list.title).arg(names.size()));
    QCOMPARE(window.page().list().ids(), ids);
    QCOMPARE(window.page().searchField().text(), typed);

    // Everything is back when the text is gone.
    Input::key(Qt::Key_Escape);
    QTRY_COMPARE(window.page().title(), list.title + u" (4)"_s);
    QCOMPARE(window.page().list().ids().size(), 4);
}

void PackageListTest::filtersAsTheLocaleKnowsCase_data() {
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<int>("matches");
    const QLocale turkish(QLocale::Turkish);
    const QLocale english(QLocale::English);
    // There are "dil", "dılı" and something that gives "IŞIK"; to a Turkish reader the capitals of
    // i and ı are İ and I.
    QTest::newRow("Turkish capital with dot") << turkish << u"DİL"_s << 1;
    QTest::newRow("Turkish capital without dot") << turkish << u"DILI"_s << 1;
    QTest::newRow("Turkish, small") << turkish << u"dil"_s << 1;
    // And the other way round: what is typed small is found where it is written large.
    QTest::newRow("Turkish, small without dot") << turkish << u"ışık"_s << 1;
    QTest::newRow("Turkish, small with dot") << turkish << u"işik"_s << 0;
    QTest::newRow("Azerbaijani") << QLocale(QLocale::Azerbaijani) << u"DILI"_s << 1;
    QTest::newRow("English, no such letter") << english << u"ışık"_s << 0;
    QTest::newRow("English capital") << english << u"DIL"_s << 1;
    QTest::newRow("English, small") << english << u"dil"_s << 1;
}

void PackageListTest::filtersAsTheLocaleKnowsCase() {
    QFETCH(QLocale, locale);
    QFETCH(QString, typed);
    QFETCH(int, matches);
    const QLocale before;
    QLocale::setDefault(locale);
    const auto restore = qScopeGuard([&before] { QLocale::setDefault(before); });
    const PackageListCase& list = PackageListCase::of(PackageType::formula);
    PageWindow window;
    list.publish(window.manager, {list.package(u"dil"_s), list.package(u"dılı"_s),
                                  list.package(u"lamba"_s, u"Evde IŞIK"_s)});
    list.show(window);
    window.page().typeToSearch(typed);
    QTRY_COMPARE(window.page().title(), u"Formulae (%1)"_s.arg(matches));
}

void PackageListTest::tellsAnEmptyFilterResultFromAnEmptyList_data() {
    PackageListCase::addRows();
}

void PackageListTest::tellsAnEmptyFilterResultFromAnEmptyList() {
    QFETCH(PackageType, type);
    const PackageListCase& list = PackageListCase::of(type);
    PageWindow window;
    list.publish(window.manager, {list.package(u"wget"_s)});
    list.show(window);
    window.page().typeToSearch(u"xyz"_s);
    QTRY_COMPARE(window.page().title(), list.title + u" (0)"_s);
    QVERIFY(window.page().hasList());
    QCOMPARE(window.page().list().ids(), QStringList());
    QCOMPARE(window.page().state(), QString());
    list.publish(window.manager, {});
    QTRY_COMPARE(window.page().state(), list.nothingInstalled);
}

void PackageListTest::keepsTheFilterOverAReload_data() {
    PackageListCase::addRows();
}

void PackageListTest::keepsTheFilterOverAReload() {
    QFETCH(PackageType, type);
    const PackageListCase& list = PackageListCase::of(type);
    PageWindow window;
    list.publish(window.manager, {list.package(u"jq"_s), list.package(u"wget"_s)});
    list.show(window);
    window.page().typeToSearch(u"get"_s);
    QTRY_COMPARE(window.page().title(), list.title + u" (1)"_s);
    list.setInstalled(window.brew,
                      {list.package(u"jq"_s), list.package(u"nuget"_s), list.package(u"wget"_s)});
    window.page().press(u"refreshButton"_s);
    QTRY_COMPARE(window.page().title(), list.title + u" (2)"_s);
    QCOMPARE(window.page().list().ids(), (QStringList{list.id(u"nuget"_s), list.id(u"wget"_s)}));
}

void PackageListTest::choosesWhatIsClicked_data() {
    PackageListCase::addRows();
}

void PackageListTest::choosesWhatIsClicked() {
    QFETCH(PackageType, type);
    const PackageListCase& list = PackageListCase::of(type);
    PageWindow window;
    list.publish(window.manager, {list.package(u"jq"_s), list.package(u"wget"_s)});
    list.show(window);
    window.page().list().click(list.id(u"wget"_s));
    QCOMPARE(window.selection.selectedPackageID(), list.id(u"wget"_s));
    QTRY_COMPARE(window.page().list().selectedIds(), QStringList{list.id(u"wget"_s)});
    window.selection.setSelectedPackageID(std::nullopt);
    QTRY_COMPARE(window.page().list().selectedIds(), QStringList());
}

void PackageListTest::speaksTheLanguage_data() {
    QTest::addColumn<Lang>("lang");
    QTest::addColumn<PackageType>("type");
    QTest::addColumn<QStringList>("texts");
    using enum PackageType;
    QTest::newRow("formulae ko") << Lang::ko << formula
                                 << QStringList{u"설치된 formulae 없음"_s, u"formulae 검색"_s,
                                                u"formulae 목록 새로고침"_s, u"업데이트 필요"_s};
    QTest::newRow("casks ko") << Lang::ko << cask
                              << QStringList{u"설치된 cask 없음"_s, u"cask 검색"_s,
                                             u"cask 목록 새로고침"_s, u"업데이트 필요"_s};
    QTest::newRow("formulae ja") << Lang::ja << formula
                                 << QStringList{u"インストール済みのformulaeなし"_s,
                                                u"formulaeを検索"_s, u"formulaeリストを更新"_s,
                                                u"更新あり"_s};
    QTest::newRow("casks ja") << Lang::ja << cask
                              << QStringList{u"インストール済みのcaskなし"_s, u"caskを検索"_s,
                                             u"caskリストを更新"_s, u"更新あり"_s};
}

void PackageListTest::speaksTheLanguage() {
    QFETCH(Lang, lang);
    QFETCH(PackageType, type);
    QFETCH(QStringList, texts);
    LangManager::shared().setCurrent(lang);
    const auto restore = qScopeGuard([] { LangManager::shared().setCurrent(Lang::en); });
    const PackageListCase& list = PackageListCase::of(type);
    PageWindow window;
    list.show(window);
    QCOMPARE(window.page().state(), texts.at(0));
    list.publish(window.manager, {Samples::outdated(list.package(u"wget"_s))});
    QTRY_VERIFY(window.page().hasList());
    QCOMPARE(window.page().searchField().placeholderText(), texts.at(1));
    QCOMPARE(window.page().button(u"refreshButton"_s).accessibleName(), texts.at(2));
    QCOMPARE(window.page().list().row(list.id(u"wget"_s)).tags.constFirst().text, texts.at(3));
    QCOMPARE(window.page().title(), list.title + u" (1)"_s);
}

LUMORA_UI_TEST_MAIN(PackageListTest)
#include "tst_packagelist.moc"
