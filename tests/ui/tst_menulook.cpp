// SPDX-License-Identifier: MIT
#include "Pixels.h"
#include "UiTest.h"
#include "style/Theme.h"

#include <QApplication>
#include <QMenu>

using namespace Qt::StringLiterals;

namespace {

/// A menu in one of the themes, opened.
struct ShownMenu final {
    explicit ShownMenu(const Theme& itsTheme) : theme(itsTheme) {
        QApplication::setPalette(theme.palette());
        off->setEnabled(false);
        last->setShortcut(QKeySequence(u"Ctrl+Q"_s));
        submenu->addAction(u"inner"_s);
        menu.popup({20, 20});
        if (!QTest::qWaitForWindowExposed(&menu))
            qFatal("The menu doesn't open");
    }

    ~ShownMenu() { QApplication::setPalette(before); }

    Q_DISABLE_COPY_MOVE(ShownMenu)

    /// The menu, or an entry of it.
    [[nodiscard]] QImage picture(const QAction* entry = nullptr) {
        const QImage whole = menu.grab().toImage();
        return entry != nullptr ? whole.copy(menu.actionGeometry(const_cast<QAction*>(entry)))
                                : whole;
    }

    /// Where the picture of an entry has anything but this surface.
    [[nodiscard]] QRect inkOn(const QColor& surface, const QAction* entry) {
        const QImage image = picture(entry);
        QRect ink;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (!Pixels::areAlike(image.pixelColor(x, y), surface))
                    ink |= QRect(x, y, 1, 1);
            }
        }
        return ink;
    }

    const Theme& theme;
    QPalette before{QApplication::palette()};
    QMenu menu;
    QAction* first{menu.addAction(u"First entry"_s)};
    QAction* off{menu.addAction(u"First entry"_s)};
    QAction* separator{menu.addSeparator()};
    QMenu* submenu{menu.addMenu(u"More"_s)};
    QAction* last{menu.addAction(u"First entry"_s)};
};

} // namespace

class MenuLookTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void isRounded();
    void beginsWithItsTexts_data();
    void beginsWithItsTexts();
    void marksTheCurrentEntryQuietly_data();
    void marksTheCurrentEntryQuietly();
    void dimsWhatIsTurnedOff_data();
    void dimsWhatIsTurnedOff();
    void setsKeysAndSubmenusApart_data();
    void setsKeysAndSubmenusApart();
};

void MenuLookTest::isRounded() {
    ShownMenu shown(Theme::light());
    const QRegion window = shown.menu.mask();
    for (const QPoint corner : {shown.menu.rect().topLeft(), shown.menu.rect().topRight(),
                                shown.menu.rect().bottomLeft(), shown.menu.rect().bottomRight()})
        QVERIFY(!window.contains(corner));
    QVERIFY(window.contains(shown.menu.rect().center()));
    QVERIFY(window.contains(QPoint(shown.menu.width() / 2, 0)));
    // In one piece with the border.
    const QColor border = Pixels::on(shown.theme.card, shown.theme.fieldBorder);
    const int middle = shown.menu.height() / 2;
    QVERIFY(Pixels::areAlike(shown.picture().pixelColor(0, middle), border, 20));
    QVERIFY(Pixels::areAlike(shown.picture().pixelColor(2, middle), shown.theme.card));
}

void MenuLookTest::beginsWithItsTexts_data() {
    QTest::addColumn<const Theme*>("theme");
    QTest::newRow("light") << &Theme::light();
    QTest::newRow("dark") << &Theme::dark();
}

void MenuLookTest::beginsWithItsTexts() {
    QFETCH(const Theme* const, theme);
    ShownMenu shown(*theme);
    // No empty column where others have icons.
    for (const QAction* const entry : {shown.first, shown.off, shown.last}) {
        const int left = shown.inkOn(theme->card, entry).left();
        QVERIFY2(left >= 8 && left <= 14, qPrintable(QString::number(left)));
    }
    QVERIFY(shown.menu.actionGeometry(shown.first).height() >= 24);
}

void MenuLookTest::marksTheCurrentEntryQuietly_data() {
    beginsWithItsTexts_data();
}

void MenuLookTest::marksTheCurrentEntryQuietly() {
    QFETCH(const Theme* const, theme);
    ShownMenu shown(*theme);
    shown.menu.setActiveAction(shown.first);
    const QColor mark = Pixels::on(theme->card, theme->selection);
    const QImage picture = shown.picture(shown.first);
    QVERIFY(Pixels::areAlike(picture.pixelColor(5, picture.height() / 2), mark));
    QVERIFY(Pixels::areAlike(picture.pixelColor(picture.width() / 2, 2), mark));
    // Rounded, and the text is what it was.
    QVERIFY(Pixels::areAlike(picture.pixelColor(0, 0), theme->card, 2));
    QVERIFY(Pixels::boundsOf(picture, theme->text, 60).isValid());
    // What is turned off isn't marked.
    shown.menu.setActiveAction(shown.off);
    QVERIFY(Pixels::areAlike(shown.picture(shown.off).pixelColor(5, picture.height() / 2),
                             theme->card));
}

void MenuLookTest::dimsWhatIsTurnedOff_data() {
    beginsWithItsTexts_data();
}

void MenuLookTest::dimsWhatIsTurnedOff() {
    QFETCH(const Theme* const, theme);
    ShownMenu shown(*theme);
    const QColor dimmed =
        Pixels::on(theme->card, theme->palette().color(QPalette::Disabled, QPalette::Text));
    // The same words at the same place, without an edge of another colour beside them.
    QCOMPARE(shown.inkOn(theme->card, shown.off), shown.inkOn(theme->card, shown.first));
    const QImage picture = shown.picture(shown.off);
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const int lightness = picture.pixelColor(x, y).lightness();
            QVERIFY(lightness <= std::max(dimmed.lightness(), theme->card.lightness()) + 1);
            QVERIFY(lightness >= std::min(dimmed.lightness(), theme->card.lightness()) - 1);
        }
    }
}

void MenuLookTest::setsKeysAndSubmenusApart_data() {
    beginsWithItsTexts_data();
}

void MenuLookTest::setsKeysAndSubmenusApart() {
    QFETCH(const Theme* const, theme);
    ShownMenu shown(*theme);
    for (const QAction* const entry : {shown.last, shown.submenu->menuAction()}) {
        const QRect ink = shown.inkOn(theme->card, entry);
        const int right = shown.picture(entry).width() - 1 - ink.right();
        QVERIFY2(right >= 8 && right <= 14, qPrintable(QString::number(right)));
    }
    // Between the longest text and the keys is room.
    const QImage withKey = shown.picture(shown.last);
    const int textEnd = shown.inkOn(theme->card, shown.first).right();
    const QRect beside(textEnd + 1, 0, 24, withKey.height());
    for (int x = beside.left(); x <= beside.right(); ++x) {
        for (int y = 0; y < beside.height(); ++y)
            QVERIFY(Pixels::areAlike(withKey.pixelColor(x, y), theme->card));
    }
    const QRect line = shown.inkOn(theme->card, shown.separator);
    QCOMPARE(line.height(), 1);
    QVERIFY(line.left() > 0);
}

LUMORA_UI_TEST_MAIN(MenuLookTest)
#include "tst_menulook.moc"
