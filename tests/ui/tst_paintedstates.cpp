// SPDX-License-Identifier: MIT
#include "AppScene.h"
#include "BrowserDouble.h"
#include "Find.h"
#include "Focus.h"
#include "Input.h"
#include "Painted.h"
#include "Pixels.h"
#include "Samples.h"
#include "SheetDriver.h"
#include "UiTest.h"
#include "style/Look.h"
#include "style/LumoraStyle.h"
#include "style/Theme.h"
#include "style/Typography.h"
#include "widgets/Links.h"
#include "widgets/PushButton.h"
#include "widgets/RowListView.h"
#include "widgets/SearchField.h"
#include "widgets/SegmentedPicker.h"

#include <QListView>
#include <QScrollBar>

using namespace Qt::StringLiterals;

using enum SidebarCategory;

namespace {

/// The colour of a widget's pixel, which counts from its trailing and lower edge when negative.
QColor colorAt(const QWidget& widget, QPoint place) {
    const QImage picture = Painted::pictureOf(widget);
    return picture.pixelColor(place.x() < 0 ? picture.width() + place.x() : place.x(),
                              place.y() < 0 ? picture.height() + place.y() : place.y());
}

} // namespace

/// What is painted while something happens: below the pointer, with the focus, during a run.
class PaintedStatesTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase_data();
    void init();
    void cleanup();
    void cleanupTestCase();

    void lightsARow();
    void lightsASidebarRow();
    void lightsAnIconButton();
    void lightsALinkRow();
    void lightsASegment();
    void underlinesALink();
    void pressesALink();
    void marksTheFocus();
    void marksTheFocusOnTheAccent();
    void marksTheCurrentRow();
    void showsWhereAListIs();
    void showsARunInItsRow();

private:
    void show(SidebarCategory category);
    /// Waits until a pixel has this colour.
    void waitFor(const QWidget& widget, QPoint place, const QColor& color) const;

    const Theme* m_theme{};
    std::unique_ptr<AppWindow> m_app;
};

void PaintedStatesTest::initTestCase_data() {
    QTest::addColumn<bool>("isDark");
    QTest::newRow("light") << false;
    QTest::newRow("dark") << true;
}

void PaintedStatesTest::init() {
    QFETCH_GLOBAL(bool, isDark);
    Look::setDark(isDark);
    m_theme = isDark ? &Theme::dark() : &Theme::light();
    m_app = std::make_unique<AppWindow>();
    m_app->showLoaded();
    AppScene::fill(*m_app);
    // Away from where it was left: coming to where it is already would be no move.
    Input::moveTo(m_app->window, QPoint(1, 1));
}

void PaintedStatesTest::cleanup() {
    m_app.reset();
}

void PaintedStatesTest::cleanupTestCase() {
    Look::setDark(false);
}

void PaintedStatesTest::show(SidebarCategory category) {
    m_app->window.content()->setSelectedCategory(category);
    QCoreApplication::processEvents();
}

void PaintedStatesTest::waitFor(const QWidget& widget, QPoint place, const QColor& color) const {
    QTRY_VERIFY2(Pixels::areAlike(colorAt(widget, place), color),
                 qPrintable(colorAt(widget, place).name() + u" instead of "_s + color.name()));
}

void PaintedStatesTest::lightsARow() {
    const ListDriver list = m_app->page().list();
    const QPoint place(300, list.rect(u"formula-jq"_s).top() + 4);
    waitFor(*list.view().viewport(), place, m_theme->content);
    list.hover(u"formula-jq"_s);
    waitFor(*list.view().viewport(), place, Pixels::on(m_theme->content, m_theme->hover));
}

void PaintedStatesTest::lightsASidebarRow() {
    const SidebarDriver sidebar = m_app->sidebar();
    const QRect row = sidebar.rect(search);
    const QPoint place(row.center().x(), row.top() + 3);
    waitFor(*sidebar.view().viewport(), place, m_theme->sidebar);
    Input::moveTo(*sidebar.view().viewport(), row.center());
    waitFor(*sidebar.view().viewport(), place, Pixels::on(m_theme->sidebar, m_theme->hover));
}

void PaintedStatesTest::lightsAnIconButton() {
    const QAbstractButton& button = m_app->page().button(u"refreshButton"_s);
    constexpr QPoint place(15, 2);
    waitFor(button, place, m_theme->content);
    Input::moveTo(button);
    waitFor(button, place, Pixels::on(m_theme->content, m_theme->hover));
    Input::press(button);
    waitFor(button, place, Pixels::on(m_theme->content, m_theme->pressed));
    // Outside of it, so that nothing is run.
    Input::moveTo(m_app->window, QPoint(400, 300));
    Input::release(m_app->window, QPoint(400, 300));
    waitFor(button, place, m_theme->content);
}

void PaintedStatesTest::lightsALinkRow() {
    show(about);
    const auto& row = require<LinkRow>(m_app->window);
    constexpr QPoint place(150, 3);
    const QColor fill = Pixels::on(m_theme->content, withOpacity(m_theme->text, 0.04));
    waitFor(row, place, fill);
    Input::moveTo(row);
    waitFor(row, place, Pixels::on(fill, m_theme->hover));
    Input::press(row);
    waitFor(row, place, Pixels::on(fill, m_theme->pressed));
    Input::moveTo(m_app->window, QPoint(5, 5));
    Input::release(m_app->window, QPoint(5, 5));
    waitFor(row, place, fill);
}

void PaintedStatesTest::lightsASegment() {
    show(settings);
    const auto& picker = require<SegmentedPicker>(m_app->window);
    const int chosen = picker.current();
    const QAbstractButton& other = *picker.segment(chosen == 0 ? 1 : 0);
    constexpr QPoint place(20, 3);
    waitFor(other, place, m_theme->trough);
    Input::moveTo(other);
    waitFor(other, place, Pixels::on(m_theme->trough, m_theme->hover));
    Input::press(other);
    waitFor(other, place, Pixels::on(m_theme->trough, m_theme->pressed));
    Input::moveTo(m_app->window, QPoint(5, 5));
    Input::release(m_app->window, QPoint(5, 5));
    waitFor(other, place, m_theme->trough);
    QCOMPARE(picker.current(), chosen);
    // There is nothing to press where it is chosen.
    Input::press(*picker.segment(chosen));
    waitFor(*picker.segment(chosen), place, m_theme->segment);
    Input::release(*picker.segment(chosen));
}

void PaintedStatesTest::pressesALink() {
    const BrowserDouble browser;
    m_app->window.content()->selection().setSelectedPackageID(u"formula-wget"_s);
    const SheetDriver sheet(m_app->window);
    const auto& link = require<LinkButton>(sheet.panel());
    QTRY_VERIFY(sheet.takesPresses());
    const QPoint place(1, link.height() / 2);
    waitFor(link, place, m_theme->content);
    Input::press(link);
    waitFor(link, place, Pixels::on(m_theme->content, m_theme->pressed));
    Input::moveTo(sheet.panel(), QPoint(2, 2));
    Input::release(sheet.panel(), QPoint(2, 2));
    waitFor(link, place, m_theme->content);
    QCOMPARE(browser.opened(), QStringList());
}

void PaintedStatesTest::marksTheFocusOnTheAccent() {
    QWidget host;
    PushButton button(u"Install Homebrew"_s, &host);
    button.move(20, 20);
    LumoraStyle::setProminence(&button, LumoraStyle::Prominence::Prominent);
    host.show();
    QVERIFY(QTest::qWaitForWindowActive(&host));
    Input::moveTo(host, QPoint(1, 1));
    button.setFocus();
    constexpr QPoint edge(40, 1);
    constexpr QPoint mark(40, 3);
    waitFor(button, mark, m_theme->accent);
    Input::key(Qt::Key_Tab);
    QVERIFY(button.hasFocus());
    waitFor(button, edge, m_theme->accent);
    waitFor(button, mark, m_theme->onAccent);
    waitFor(button, mark - QPoint(0, 1), m_theme->onAccent);
}

void PaintedStatesTest::underlinesALink() {
    m_app->window.content()->selection().setSelectedPackageID(u"formula-wget"_s);
    const SheetDriver sheet(m_app->window);
    const auto& link = require<LinkButton>(sheet.panel());
    const auto isShown = [&](bool isUnderlined) {
        QFont font = link.font();
        font.setUnderline(isUnderlined);
        return Painted::isAllOf(Painted::pictureOf(link),
                                {link.text(), font, m_theme->accent, m_theme->content});
    };
    QTRY_VERIFY(isShown(false));
    // Before, the pointer is over nothing in it either.
    QTRY_VERIFY(sheet.takesPresses());
    Input::moveTo(link);
    QTRY_VERIFY(isShown(true));
    QVERIFY(!isShown(false));
}

void PaintedStatesTest::marksTheFocus() {
    const QWidget& field = m_app->page().searchField();
    Input::key(Qt::Key_F, Qt::ControlModifier);
    waitFor(field, {100, 1}, m_theme->accent);
    const QWidget& button = m_app->page().button(u"refreshButton"_s);
    QVERIFY(Focus::tabTo(u"refreshButton"_s));
    waitFor(button, {15, 1}, m_theme->accent);
    QVERIFY(!Pixels::areAlike(colorAt(field, {100, 1}), m_theme->accent));
    // It would say nothing where the pointer is anyway.
    Input::press(button);
    waitFor(button, {15, 1}, Pixels::on(m_theme->content, m_theme->pressed));
}

void PaintedStatesTest::marksTheCurrentRow() {
    const ListDriver list = m_app->page().list();
    QVERIFY(Focus::tabTo([&list](const QWidget& widget) { return &widget == &list.view(); }));
    Input::key(Qt::Key_Down);
    const QRect row = list.rect(list.currentId());
    waitFor(*list.view().viewport(), {300, row.top() + 1}, m_theme->accent);
}

void PaintedStatesTest::showsWhereAListIs() {
    constexpr int many = 100;
    m_app->manager.formulae.set(Samples::manyFormulae(many));
    const auto& view = require<RowListView>(m_app->window);
    const QScrollBar& bar = *view.verticalScrollBar();
    QTRY_VERIFY(bar.isVisible());
    const QPoint onThumb(bar.width() / 2, 10);
    waitFor(bar, onThumb, Pixels::on(m_theme->content, withOpacity(m_theme->secondaryText, 0.35)));
    Input::moveTo(bar, onThumb);
    waitFor(bar, onThumb, Pixels::on(m_theme->content, withOpacity(m_theme->secondaryText, 0.65)));
}

void PaintedStatesTest::showsARunInItsRow() {
    show(updates);
    const QString run = u"upgrade wget"_s;
    m_app->brew.hold(run);
    const ListDriver list = m_app->page().list();
    list.clickAction(u"formula-wget"_s);
    const auto pictureOf = [&list](const QString& id, QRect place) {
        return Painted::pictureOf(*list.view().viewport())
            .copy(place.translated(list.rect(id).topLeft()));
    };
    // An arc of 14 in the row that was pressed.
    QTRY_VERIFY(Pixels::boundsOf(pictureOf(u"formula-wget"_s, {688, 17, 14, 14}),
                                 m_theme->secondaryText, 20)
                    .isValid());
    // No other can be pressed meanwhile.
    const QFont font = Typography::font(12, QFont::Medium);
    const int width = Typography::width(font, u"Update"_s);
    QVERIFY(Painted::isAllOf(
        pictureOf(u"cask-iina"_s, {702 - 11 - width, 14, width, 20}),
        {u"Update"_s, font, withOpacity(m_theme->secondaryText, 0.6), m_theme->field}));
    m_app->brew.release(run);
    QTRY_VERIFY(!*m_app->manager.isRunningOperation);
    m_app->waitUntilLoaded();
}

LUMORA_UI_TEST_MAIN(PaintedStatesTest)
#include "tst_paintedstates.moc"
