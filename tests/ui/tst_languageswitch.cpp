// SPDX-License-Identifier: MIT
#include "AppWindow.h"
#include "Find.h"
#include "Input.h"
#include "Samples.h"
#include "SheetDriver.h"
#include "UiTest.h"
#include "shell/OperationOverlay.h"
#include "widgets/SearchField.h"
#include "widgets/SegmentedPicker.h"

#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QScopeGuard>
#include <QSettings>

using namespace Qt::StringLiterals;

namespace {

QAbstractButton& segment(const AppWindow& app, Lang lang) {
    return *require<SegmentedPicker>(app.window).segment(static_cast<int>(lang));
}

} // namespace

/// The language is chosen on the settings page and changes everything at once.
class LanguageSwitchTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void changesEveryTextAtOnce();
    void staysOnThePageAndTheSegment();
    void followsTheArrowKeys();
    void forgetsFiltersButNotTheLists();
    void bringsTheDetailInTheNewLanguage();
    void bringsTheOverlayInTheNewLanguage();
    void remembersTheChoice();
    void needsNoPlaceForTheChoice();
};

void LanguageSwitchTest::changesEveryTextAtOnce() {
    AppWindow app;
    app.showLoaded();
    app.choose(SidebarCategory::settings);
    Input::click(segment(app, Lang::ko));
    QTRY_COMPARE(app.page().title(), u"설정"_s);
    QCOMPARE(app.sidebar().titles(),
             (QStringList{u"패키지:"_s, u"Formulae"_s, u"Casks"_s, u"동작:"_s, u"업데이트"_s,
                          u"검색"_s, u"시스템:"_s, u"Taps"_s, u"설정"_s, u"정보"_s}));
    QCOMPARE(app.page().button(u"previewButton"_s).text(), u"미리보기"_s);
    Input::click(segment(app, Lang::ja));
    QTRY_COMPARE(app.page().title(), u"設定"_s);
    QCOMPARE(app.sidebar().titles().constFirst(), u"パッケージ:"_s);
    QCOMPARE(app.page().button(u"doctorButton"_s).text(), u"Doctor実行"_s);
    Input::click(segment(app, Lang::en));
    QTRY_COMPARE(app.page().title(), u"Settings"_s);
}

void LanguageSwitchTest::staysOnThePageAndTheSegment() {
    AppWindow app;
    app.showLoaded();
    app.choose(SidebarCategory::settings);
    Input::click(segment(app, Lang::ja));
    QTRY_COMPARE(app.page().title(), u"設定"_s);
    QCOMPARE(app.window.content()->selectedCategory(), SidebarCategory::settings);
    QCOMPARE(app.sidebar().selected(), u"設定"_s);
    QCOMPARE(require<SegmentedPicker>(app.window).current(), static_cast<int>(Lang::ja));
    QTRY_COMPARE(QApplication::focusWidget(), &segment(app, Lang::ja));
}

void LanguageSwitchTest::followsTheArrowKeys() {
    AppWindow app;
    app.showLoaded();
    app.choose(SidebarCategory::settings);
    segment(app, Lang::en).setFocus();
    Input::key(Qt::Key_Right);
    QTRY_COMPARE(app.page().title(), u"設定"_s);
    QTRY_COMPARE(QApplication::focusWidget(), &segment(app, Lang::ja));
    Input::key(Qt::Key_Left);
    QTRY_COMPARE(app.page().title(), u"Settings"_s);
    QTRY_COMPARE(QApplication::focusWidget(), &segment(app, Lang::en));
    Input::key(Qt::Key_Left);
    QTRY_COMPARE(app.page().title(), u"설정"_s);
    QTRY_COMPARE(QApplication::focusWidget(), &segment(app, Lang::ko));
}

void LanguageSwitchTest::forgetsFiltersButNotTheLists() {
    AppWindow app;
    app.brew.setFormulae({Samples::formula(u"jq"_s), Samples::formula(u"wget"_s)});
    app.showLoaded();
    app.page().typeToSearch(u"wg"_s);
    QTRY_COMPARE(app.page().title(), u"Formulae (1)"_s);
    LangManager::shared().setCurrent(Lang::ja);
    QTRY_COMPARE(app.page().title(), u"Formulae (2)"_s);
    QCOMPARE(app.page().searchField().text(), QString());
    QCOMPARE(app.page().searchField().placeholderText(), u"formulaeを検索"_s);
    QCOMPARE(app.page().list().ids(), (QStringList{u"formula-jq"_s, u"formula-wget"_s}));
}

void LanguageSwitchTest::bringsTheDetailInTheNewLanguage() {
    AppWindow app;
    app.brew.setFormulae({Samples::formula(u"wget"_s)});
    app.showLoaded();
    app.page().list().click(u"formula-wget"_s);
    QCOMPARE(SheetDriver(app.window).button(u"closeDetail"_s).text(), u"Close"_s);
    LangManager::shared().setCurrent(Lang::ko);
    QCOMPARE(SheetDriver(app.window).button(u"closeDetail"_s).text(), u"닫기"_s);
    QVERIFY(app.window.content()->showsDetail());
    QCOMPARE(app.window.content()->selection().selectedPackageID(), u"formula-wget"_s);
    Input::key(Qt::Key_Escape);
    QTRY_VERIFY(!SheetDriver::isOpen(app.window));
}

void LanguageSwitchTest::bringsTheOverlayInTheNewLanguage() {
    AppWindow app;
    app.showLoaded();
    app.brew.hold(u"upgrade"_s);
    app.manager.upgradeAll();
    QTRY_VERIFY(findVisible<OperationOverlay>(app.window) != nullptr);
    LangManager::shared().setCurrent(Lang::ja);
    const auto& overlay = require<OperationOverlay>(app.window);
    QCOMPARE(require<QLabel>(overlay, u"runningLabel"_s).text(), u"実行中..."_s);
    QCOMPARE(overlay.output(), u"Upgrading all packages...\n"_s);
    app.brew.release(u"upgrade"_s);
    QTRY_VERIFY(findVisible<OperationOverlay>(app.window) == nullptr);
}

void LanguageSwitchTest::remembersTheChoice() {
    AppWindow app;
    app.showLoaded();
    app.choose(SidebarCategory::settings);
    Input::click(segment(app, Lang::ko));
    QCOMPARE(*LangManager::shared().current(), Lang::ko);
    QCOMPARE(QSettings().value("appLanguage"_L1).toString(), u"ko"_s);
}

void LanguageSwitchTest::needsNoPlaceForTheChoice() {
    // Nobody, not even root, writes to a folder as if it were a file.
    const QString preferences = QSettings().fileName();
    QVERIFY(!QFile::exists(preferences) || QFile::remove(preferences));
    QVERIFY(QDir().mkpath(preferences));
    const auto tidyUp = qScopeGuard([&preferences] { QDir().rmdir(preferences); });
    AppWindow app;
    app.showLoaded();
    app.choose(SidebarCategory::settings);
    Input::click(segment(app, Lang::ja));
    QTRY_COMPARE(app.page().title(), u"設定"_s);
    Input::click(segment(app, Lang::ko));
    QTRY_COMPARE(app.page().title(), u"설정"_s);
    QVERIFY(QFileInfo(preferences).isDir());
}

LUMORA_UI_TEST_MAIN(LanguageSwitchTest)
#include "tst_languageswitch.moc"
