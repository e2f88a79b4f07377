// SPDX-License-Identifier: MIT
#include "Input.h"
#include "Pixels.h"
#include "UiTest.h"
#include "style/Look.h"
#include "style/Theme.h"
#include "style/Typography.h"
#include "widgets/RowListView.h"

#include <QPainter>

using namespace Qt::StringLiterals;

namespace {

using Kind = RowAction::Kind;

/// The tolerance for the colour of thin strokes.
constexpr int ofStrokes = 90;

/// A list of one row.
struct Window final {
    explicit Window(const Row& row)
        : view(new RowListView(48, RowListView::Selectable::Yes, &host)) {
        view->setRows({{.count = 1, .describe = [row](int) { return row; }}});
        view->resize(500, 60);
        // No mark of it in what is looked at.
        view->setFocusPolicy(Qt::NoFocus);
        host.resize(view->size());
        host.show();
        if (!QTest::qWaitForWindowExposed(&host))
            qFatal("The list doesn't appear");
    }

    [[nodiscard]] QImage image() const { return view->viewport()->grab().toImage(); }

    [[nodiscard]] QModelIndex index() const { return view->model()->index(0, 0); }

    [[nodiscard]] QRect rect() const { return view->visualRect(index()); }

    [[nodiscard]] QRect actionRect(qsizetype action = 0) const {
        return view->actionRect(index(), action);
    }

    QWidget host;
    RowListView* view;
};

/// Where a fill is seen behind a name and above what is below it; texts have shades of any colour.
QRect boundsBehind(const Window& window, const QString& name, const QColor& fill) {
    constexpr int margin = 18;
    const int left =
        margin + Typography::width(Typography::font(Typography::body, QFont::Medium), name);
    const QRect area(left, 0, window.rect().width() - left, window.rect().height());
    return Pixels::boundsOf(window.image().copy(area), fill).translated(left, 0);
}

const Theme& useTheme(bool isDark) {
    Look::setDark(isDark);
    return isDark ? Theme::dark() : Theme::light();
}

QSize textSize(const QFont& font, const QString& text) {
    return {Typography::width(font, text), QFontMetrics(font).height()};
}

/// How opaque a colour is where it is most so, by how far it leads away from what is below it.
double strongest(const QImage& image, const QColor& color, const QColor& below) {
    const auto distance = [&below](const QColor& other) {
        return qAbs(other.red() - below.red()) + qAbs(other.green() - below.green()) +
               qAbs(other.blue() - below.blue());
    };
    int farthest = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            farthest = qMax(farthest, distance(image.pixelColor(x, y)));
    }
    return static_cast<double>(farthest) / distance(color);
}

/// Whether a filled shape has round corners: none of its colour where they would be sharp, all
/// of it where they end.
bool isRounded(const QImage& image, const QRect& shape, int radius, const QColor& fill) {
    const auto isFilled = [&](int x, int y) {
        return Pixels::areAlike(image.pixelColor(x, y), fill);
    };
    const int middle = shape.center().y();
    return !isFilled(shape.left(), shape.top()) && !isFilled(shape.right(), shape.bottom()) &&
           isFilled(shape.left() + radius, shape.top()) && isFilled(shape.left(), middle) &&
           isFilled(shape.right() - radius, shape.bottom());
}

} // namespace

/// How a row is drawn, to the pixel.
class RowDelegateTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void cleanup() { Look::setDark(false); }

    void drawsATag_data();
    void drawsATag();
    void drawsItsTagsBehindTheName();
    void drawsItsTagsBehindTheNameInAnyFont();
    void drawsTheTrashCanPale_data();
    void drawsTheTrashCanPale();
    void drawsTheBadgeOfWhatIsInstalled_data();
    void drawsTheBadgeOfWhatIsInstalled();
    void drawsTheSymbolOfAType_data();
    void drawsTheSymbolOfAType();
    void drawsTheNewVersionInOrange();
    void keepsAllOfItInTheRow();
    void drawsSeveralActionsSideBySide();
};

void RowDelegateTest::drawsATag_data() {
    QTest::addColumn<bool>("isDark");
    QTest::addColumn<RowTag::Tone>("tone");
    using enum RowTag::Tone;
    QTest::newRow("outdated, light") << false << Outdated;
    QTest::newRow("outdated, dark") << true << Outdated;
    QTest::newRow("dependency, light") << false << Neutral;
    QTest::newRow("dependency, dark") << true << Neutral;
}

void RowDelegateTest::drawsATag() {
    QFETCH(bool, isDark);
    QFETCH(RowTag::Tone, tone);
    const Theme& theme = useTheme(isDark);
    const QString text = u"outdated"_s;
    const Window window({.id = u"a"_s, .title = u"wget"_s, .tags = {{text, tone}}});
    const QColor color = tone == RowTag::Tone::Outdated ? theme.outdatedTag : theme.neutralTag;
    QCOMPARE(qRound(color.alphaF() * 100), 15);
    const QColor fill = Pixels::on(theme.content, color);
    const QImage image = window.image();
    const QRect tag = boundsBehind(window, u"wget"_s, fill);
    // Size 9, medium, 5 points beside it and 1 above and below.
    QCOMPARE(tag.size(), textSize(Typography::font(9, QFont::Medium), text) + QSize(10, 2));
    QVERIFY(isRounded(image, tag, 3, fill));
}

void RowDelegateTest::drawsItsTagsBehindTheName() {
    const Theme& theme = Theme::light();
    const Window window({.id = u"a"_s,
                         .title = u"wget"_s,
                         .subtitle = u"-"_s,
                         .tags = {{u"outdated"_s, RowTag::Tone::Outdated},
                                  {u"dependency"_s, RowTag::Tone::Neutral}}});
    const QRect outdated =
        boundsBehind(window, u"wget"_s, Pixels::on(theme.content, theme.outdatedTag));
    const QRect dependency =
        boundsBehind(window, u"wget"_s, Pixels::on(theme.content, theme.neutralTag));
    QVERIFY(outdated.isValid() && dependency.isValid());
    QVERIFY(outdated.right() < dependency.left());
    QCOMPARE(outdated.top(), dependency.top());
    // On the first of the two lines.
    QVERIFY(outdated.bottom() <= window.rect().center().y() + 1);
}

void RowDelegateTest::drawsItsTagsBehindTheNameInAnyFont() {
    // A surface of another density than the screen's: what is drawn there isn't what a font
    // measures by itself, as with fonts that lack a weight and are made up for it.
    constexpr double wider = 1.5;
    const Theme& theme = Theme::light();
    const auto distance = [&theme](const QString& name, double density) {
        const Window window({.id = u"a"_s,
                             .title = name,
                             .subtitle = u"-"_s,
                             .tags = {{u"i"_s, RowTag::Tone::Outdated}}});
        QImage image(window.view->size(), QImage::Format_RGB32);
        image.setDotsPerMeterX(qRound(image.dotsPerMeterX() * density));
        image.setDotsPerMeterY(qRound(image.dotsPerMeterY() * density));
        image.fill(theme.content);
        QPainter painter(&image);
        QStyleOptionViewItem option;
        option.rect = window.rect();
        option.widget = window.view;
        window.view->itemDelegate()->paint(&painter, option, window.index());
        painter.end();
        const QImage line = image.copy(0, 0, image.width(), window.rect().center().y());
        const int tag = Pixels::boundsOf(line, Pixels::on(theme.content, theme.outdatedTag)).left();
        const QImage text = line.copy(0, 0, tag - 2, line.height());
        return tag - Pixels::boundsOf(text, theme.text, 120).right();
    };
    const int usual = distance(u"bat"_s, 1);
    for (const QString& name : {u"bat"_s, u"ca-certificates"_s, u"imagemagick"_s}) {
        for (const double density : {1.0, wider}) {
            const int found = distance(name, density);
            QVERIFY2(qAbs(found - usual) <= 2, qPrintable(u"%1: %2"_s.arg(name).arg(found)));
        }
    }
}

void RowDelegateTest::drawsTheTrashCanPale_data() {
    QTest::addColumn<bool>("isDark");
    QTest::newRow("light") << false;
    QTest::newRow("dark") << true;
}

void RowDelegateTest::drawsTheTrashCanPale() {
    QFETCH(bool, isDark);
    const Theme& theme = useTheme(isDark);
    const Window window(
        {.id = u"a"_s, .title = u"wget"_s, .actions = {{.kind = Kind::Trash, .onTrigger = [] {}}}});
    const auto opacity = [&] {
        return strongest(window.image().copy(window.actionRect()), theme.destructive,
                         theme.content);
    };
    QVERIFY(qAbs(opacity() - 0.7) < 0.02);
    // Below the pointer it says what it does.
    Input::moveTo(*window.view->viewport(), QPoint(1, 1));
    Input::moveTo(*window.view->viewport(), window.actionRect().center());
    QTRY_VERIFY(opacity() > 0.95);
}

void RowDelegateTest::drawsTheBadgeOfWhatIsInstalled_data() {
    drawsTheTrashCanPale_data();
}

void RowDelegateTest::drawsTheBadgeOfWhatIsInstalled() {
    QFETCH(bool, isDark);
    const Theme& theme = useTheme(isDark);
    const QString text = u"Installed"_s;
    const Window window(
        {.id = u"a"_s, .title = u"jq"_s, .actions = {{.kind = Kind::Badge, .title = text}}});
    QColor tint = theme.good;
    tint.setAlphaF(0.1F);
    const QColor fill = Pixels::on(theme.content, tint);
    const QImage image = window.image();
    const QRect badge = Pixels::boundsOf(image, fill);
    QCOMPARE(badge.size(),
             textSize(Typography::font(Typography::caption, QFont::Medium), text) + QSize(12, 4));
    QVERIFY(isRounded(image, badge, 4, fill));
    QCOMPARE(badge, window.actionRect());
}

void RowDelegateTest::drawsTheSymbolOfAType_data() {
    QTest::addColumn<QString>("symbol");
    QTest::addColumn<Row::Tone>("tone");
    QTest::addColumn<QColor>("color");
    const Theme& theme = Theme::light();
    QTest::newRow("formula") << u"shippingbox"_s << Row::Tone::Formula << theme.accent;
    QTest::newRow("cask") << u"macwindow"_s << Row::Tone::Cask << theme.cask;
    QTest::newRow("tap") << u"list.bullet"_s << Row::Tone::Accent << theme.accent;
}

void RowDelegateTest::drawsTheSymbolOfAType() {
    QFETCH(QString, symbol);
    QFETCH(Row::Tone, tone);
    QFETCH(QColor, color);
    const Window window({.id = u"a"_s, .title = u"wget"_s, .symbol = symbol, .symbolTone = tone});
    const QImage image = window.image();
    const QRect icon = Pixels::boundsOf(image, color);
    QVERIFY(icon.isValid());
    QVERIFY(icon.width() <= 20 && icon.height() <= 20);
    const QRect title = Pixels::boundsOf(image, Theme::light().text, ofStrokes);
    // A frame of 20 points, then 12 to the text; 18 in front of both.
    QVERIFY(icon.left() >= 18 && icon.right() < 18 + 20);
    QVERIFY(title.left() >= 18 + 20 + 12 && title.left() <= 18 + 20 + 12 + 3);
}

void RowDelegateTest::drawsTheNewVersionInOrange() {
    const Theme& theme = Theme::light();
    const Window window(
        {.id = u"a"_s, .title = u"l"_s, .subtitle = u"lll"_s, .newVersion = u"HHH"_s});
    const QImage image = window.image();
    const QRect version = Pixels::boundsOf(image, theme.outdated, ofStrokes);
    QVERIFY(version.isValid());
    QVERIFY(version.top() >= window.rect().center().y());
    // Behind the current version, the arrow and 4 points on each side of it.
    const int behind =
        18 + Typography::width(Typography::digits(Typography::caption), u"lll"_s) + 4 + 11 + 4;
    QVERIFY(version.left() >= behind && version.left() <= behind + 3);
}

void RowDelegateTest::keepsAllOfItInTheRow() {
    const QString endless(2'000, u'w');
    const Window window({.id = u"a"_s,
                         .title = endless,
                         .subtitle = endless,
                         .tags = {{u"outdated"_s, RowTag::Tone::Outdated}},
                         .version = endless,
                         .actions = {{.kind = Kind::Trash}}});
    const Theme& theme = Theme::light();
    const QImage image = window.image();
    const QRect tag = Pixels::boundsOf(image, Pixels::on(theme.content, theme.outdatedTag));
    const QRect version = Pixels::boundsOf(image, theme.secondaryText, 10);
    const QRect action = window.actionRect();
    // The name gives way to the tag, the version to the action.
    QVERIFY(tag.isValid() && tag.right() < window.rect().center().x());
    QVERIFY(version.right() < action.left());
    QVERIFY(window.rect().contains(version));
}

void RowDelegateTest::drawsSeveralActionsSideBySide() {
    const Theme& theme = Theme::light();
    const QString installed = u"Installed"_s;
    const RowAction badge{.kind = Kind::Badge, .title = installed};
    const RowAction trash{.kind = Kind::Trash, .onTrigger = [] {}};
    const Window alone({.id = u"a"_s, .title = u"wget"_s, .actions = {trash}});
    const Window window({.id = u"a"_s,
                         .title = QString(2'000, u'w'),
                         .actions = {badge, {.kind = Kind::Button, .title = u"Pin"_s}, trash}});
    const QImage image = window.image();
    // The last one where one alone would be, each 12 points from the next.
    QCOMPARE(window.actionRect(2), alone.actionRect());
    constexpr int generosity = 7;
    const QRect icon =
        window.actionRect(2).adjusted(generosity, generosity, -generosity, -generosity);
    QCOMPARE(window.actionRect(1).right() + 1 + 12, icon.left());
    QCOMPARE(window.actionRect(0).right() + 1 + 12, window.actionRect(1).left());
    QColor tint = theme.good;
    tint.setAlphaF(0.1F);
    QCOMPARE(Pixels::boundsOf(image, Pixels::on(theme.content, tint)), window.actionRect(0));
    const QImage drawnTrash = image.copy(icon);
    QVERIFY(strongest(drawnTrash, theme.destructive, theme.content) > 0.6);
    // The name gives way to all of them.
    QImage texts = image.copy(0, 0, window.actionRect(0).left(), image.height());
    QVERIFY(Pixels::boundsOf(texts, theme.text, ofStrokes).right() <
            window.actionRect(0).left() - 11);
}

LUMORA_UI_TEST_MAIN(RowDelegateTest)
#include "tst_rowdelegate.moc"
