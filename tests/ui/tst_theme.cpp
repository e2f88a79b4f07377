// SPDX-License-Identifier: MIT
#include "style/Theme.h"

#include <QGuiApplication>
#include <QTest>
#include <QWidget>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

/// A colour as it looks over an opaque one.
QColor over(const QColor& color, const QColor& below) {
    const auto mixed = [&](float top, float bottom) {
        return top * color.alphaF() + bottom * (1 - color.alphaF());
    };
    return QColor::fromRgbF(mixed(color.redF(), below.redF()),
                            mixed(color.greenF(), below.greenF()),
                            mixed(color.blueF(), below.blueF()));
}

double luminance(const QColor& color) {
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(static_cast<double>(color.redF())) +
           0.7152 * linear(static_cast<double>(color.greenF())) +
           0.0722 * linear(static_cast<double>(color.blueF()));
}

double contrast(const QColor& a, const QColor& b) {
    const double first = luminance(a);
    const double second = luminance(b);
    return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

/// Something that is drawn on a surface.
struct Pair final {
    QString what;
    QColor drawn;
    /// From the lowest to the one that it is drawn on.
    QList<QColor> surfaces;
    double goal;
};

constexpr double forText = 4.5;
constexpr double forIcons = 3;

QList<std::pair<QString, const Theme&>> allThemes() {
    using enum Theme::Contrast;
    return {{u"light"_s, Theme::light()},
            {u"dark"_s, Theme::dark()},
            {u"light, clearer"_s, Theme::light(Higher)},
            {u"dark, clearer"_s, Theme::dark(Higher)}};
}

using State = std::pair<QString, QList<QColor>>;

/// What a row of a list on `base` can look like.
QList<State> rowStates(const Theme& theme, const QColor& base) {
    return {{u"row"_s, {base}},
            {u"hovered row"_s, {base, theme.hover}},
            {u"selected row"_s, {base, theme.selection}}};
}

QList<State> buttonStates(const Theme& theme, const QColor& surface) {
    return {{u"button"_s, {surface}},
            {u"hovered button"_s, {surface, theme.hover}},
            {u"pressed button"_s, {surface, theme.pressed}}};
}

void addRows(QList<Pair>& pairs, const Theme& theme) {
    constexpr double installedTint = 0.1;
    constexpr double trashOpacity = 0.7;
    for (const auto& [state, surfaces] : rowStates(theme, theme.content)) {
        const bool isSelected = surfaces.constLast() == theme.selection;
        const auto add = [&, row = state, below = surfaces](const QString& what,
                                                            const QColor& drawn, double goal,
                                                            const QList<QColor>& extra = {}) {
            pairs.append({what + u" in a "_s + row, drawn, below + extra, goal});
        };
        add(u"name"_s, theme.text, forText);
        add(u"description"_s, theme.secondaryText, forText);
        add(u"new version"_s, isSelected ? theme.outdatedOnTint : theme.outdated, forText);
        add(u"outdated tag"_s, theme.outdatedOnTint, forText, {theme.outdatedTag});
        add(u"dependency tag"_s, theme.secondaryOnTint, forText, {theme.neutralTag});
        add(u"installed badge"_s, theme.goodOnTint, forText,
            {withOpacity(theme.good, installedTint)});
        add(u"formula symbol"_s, theme.accent, forIcons);
        add(u"cask symbol"_s, theme.cask, forIcons);
        add(u"trash can"_s, withOpacity(theme.destructive, isSelected ? 1 : trashOpacity),
            forIcons);
        add(u"lit trash can"_s, theme.destructive, forIcons, {theme.hover});
        add(u"pressed trash can"_s, theme.destructive, forIcons, {theme.pressed});
        add(u"focus ring"_s, theme.accent, forIcons);
        for (const auto& [button, face] : buttonStates(theme, theme.field))
            add(u"title of a "_s + button, theme.text, forText, face);
    }
}

void addSidebar(QList<Pair>& pairs, const Theme& theme) {
    for (const auto& [state, surfaces] : rowStates(theme, theme.sidebar)) {
        pairs.append({u"title in a sidebar "_s + state, theme.text, surfaces, forText});
        const bool isSelected = surfaces.constLast() == theme.selection;
        pairs.append({u"count in a sidebar "_s + state,
                      isSelected ? theme.secondaryOnTint : theme.secondaryText, surfaces, forText});
        pairs.append({u"icon in a sidebar "_s + state, theme.accent, surfaces, forIcons});
        pairs.append({u"ring in a sidebar "_s + state, theme.accent, surfaces, forIcons});
    }
    pairs.append({u"section title"_s, theme.secondaryText, {theme.sidebar}, forText});
    pairs.append({u"count pill"_s, theme.onCountPill, {theme.countPill}, forText});
}

void addDetail(QList<Pair>& pairs, const Theme& theme) {
    constexpr double badgeTint = 0.12;
    constexpr double chipTint = 0.1;
    const auto badge = [&](const QString& what, const QColor& text, const QColor& color) {
        pairs.append({what, text, {theme.content, withOpacity(color, badgeTint)}, forText});
    };
    badge(u"formula badge"_s, theme.accent, theme.accent);
    badge(u"cask badge"_s, theme.cask, theme.cask);
    badge(u"version badge"_s, theme.goodOnTint, theme.good);
    badge(u"update badge"_s, theme.outdatedOnTint, theme.outdated);
    pairs.append({u"chip"_s,
                  theme.text,
                  {theme.content, withOpacity(theme.secondaryText, chipTint)},
                  forText});
    for (const auto& [state, face] :
         buttonStates(theme, over(withOpacity(theme.secondaryText, chipTint), theme.content)))
        pairs.append({u"text of a chip as a "_s + state, theme.text, face, forText});
    pairs.append({u"link"_s, theme.accent, {theme.content}, forText});
    pairs.append({u"pressed link"_s, theme.accent, {theme.content, theme.pressed}, forText});
    pairs.append({u"sheet's button"_s, theme.text, {theme.sidebar, theme.field}, forText});
    pairs.append({u"command output"_s, theme.secondaryText, {theme.output}, forText});
}

/// The mark of the focus against whatever it may be drawn on.
void addFocus(QList<Pair>& pairs, const Theme& theme) {
    const auto add = [&](const QString& where, const QColor& mark, const QColor& surface) {
        for (const QColor& extra : {QColor(Qt::transparent), theme.hover, theme.pressed})
            pairs.append({u"focus mark on "_s + where, mark, {surface, extra}, forIcons});
    };
    add(u"the content"_s, theme.accent, theme.content);
    add(u"the sidebar"_s, theme.accent, theme.sidebar);
    add(u"a field"_s, theme.accent, theme.field);
    add(u"output"_s, theme.accent, theme.output);
    add(u"a segment's trough"_s, theme.accent, theme.trough);
    // The pointer changes nothing there.
    pairs.append({u"focus mark on the chosen segment"_s, theme.accent, {theme.segment}, forIcons});
    add(u"the failure strip"_s, theme.accent, theme.failure);
    add(u"a failed operation"_s, theme.accent, theme.operationFailure);
    add(u"a prominent button"_s, theme.onAccent, theme.accent);
}

void addOther(QList<Pair>& pairs, const Theme& theme) {
    constexpr double linkRowFill = 0.04;
    const QColor linkRow = withOpacity(theme.text, linkRowFill);
    for (const QColor& extra : {QColor(Qt::transparent), theme.hover, theme.pressed}) {
        pairs.append({u"link row"_s, theme.text, {theme.content, linkRow, extra}, forText});
        pairs.append({u"link row's arrow"_s,
                      theme.secondaryText,
                      {theme.content, linkRow, extra},
                      forIcons});
        pairs.append({u"icon button"_s, theme.text, {theme.content, extra}, forIcons});
        pairs.append({u"prominent button"_s, theme.onAccent, {theme.accent, extra}, forText});
        pairs.append(
            {u"destructive button"_s, theme.onDestructive, {theme.destructive, extra}, forText});
    }
    pairs.append({u"page title"_s, theme.text, {theme.content}, forText});
    pairs.append({u"state's text"_s, theme.secondaryText, {theme.content}, forText});
    pairs.append({u"symbol of a good state"_s, theme.good, {theme.content}, forIcons});
    pairs.append({u"warning symbol"_s, theme.outdated, {theme.content}, forIcons});
    pairs.append({u"field"_s, theme.text, {theme.field}, forText});
    pairs.append({u"placeholder"_s, theme.secondaryText, {theme.field}, forText});
    pairs.append({u"selected text"_s, theme.onAccent, {theme.accent}, forText});
    pairs.append({u"failure"_s, theme.text, {theme.failure}, forText});
    pairs.append({u"failure's symbol"_s, theme.outdated, {theme.failure}, forIcons});
    pairs.append({u"failed operation"_s, theme.text, {theme.operationFailure}, forText});
    pairs.append(
        {u"reason of a failure"_s, theme.secondaryText, {theme.operationFailure}, forText});
    pairs.append(
        {u"failed operation's symbol"_s, theme.destructive, {theme.operationFailure}, forIcons});
    pairs.append({u"alert's title"_s, theme.text, {theme.card}, forText});
    pairs.append({u"alert's message"_s, theme.secondaryText, {theme.card}, forText});
    pairs.append({u"alert's symbol"_s, theme.outdated, {theme.card}, forIcons});
    pairs.append({u"notice's symbol"_s, theme.accent, {theme.card}, forIcons});
    pairs.append({u"ring of an alert's answer"_s, theme.accent, {theme.card}, forIcons});
    pairs.append({u"chosen segment"_s, theme.text, {theme.trough, theme.segment}, forText});
    pairs.append({u"other segment"_s, theme.text, {theme.trough}, forText});
    pairs.append({u"hovered segment"_s, theme.text, {theme.trough, theme.hover}, forText});
    pairs.append({u"pressed segment"_s, theme.text, {theme.trough, theme.pressed}, forText});
    for (const QColor& behind : {theme.content, theme.sidebar}) {
        pairs.append({u"overlay"_s, theme.text, {behind, theme.overlay}, forText});
        pairs.append({u"transcript"_s, theme.secondaryText, {behind, theme.overlay}, forText});
    }
    // The panel lets through whatever it floats over, even a line of text.
    pairs.append({u"overlay over text"_s, theme.text, {theme.text, theme.overlay}, forText});
    pairs.append(
        {u"transcript over text"_s, theme.secondaryText, {theme.text, theme.overlay}, forText});
}

} // namespace

class ThemeTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void isReadableEverywhere_data();
    void isReadableEverywhere();
    void makesTheOverlayASurface();
    void hasTheColoursOfTheDesign_data();
    void hasTheColoursOfTheDesign();
    void bringsLinesAndQuietTextsForward_data();
    void bringsLinesAndQuietTextsForward();
    void followsThePaletteOfAWidget();
    void tellsTheToolkitItsColours_data();
    void tellsTheToolkitItsColours();
};

void ThemeTest::isReadableEverywhere_data() {
    QTest::addColumn<QColor>("drawn");
    QTest::addColumn<QList<QColor>>("surfaces");
    QTest::addColumn<double>("goal");
    for (const auto& [name, theme] : allThemes()) {
        QList<Pair> pairs;
        addRows(pairs, theme);
        addSidebar(pairs, theme);
        addDetail(pairs, theme);
        addFocus(pairs, theme);
        addOther(pairs, theme);
        for (const Pair& pair : pairs)
            QTest::addRow("%s: %s", qUtf8Printable(name), qUtf8Printable(pair.what))
                << pair.drawn << pair.surfaces << pair.goal;
    }
}

void ThemeTest::isReadableEverywhere() {
    QFETCH(QColor, drawn);
    QFETCH(QList<QColor>, surfaces);
    QFETCH(double, goal);
    QColor background = surfaces.takeFirst();
    QCOMPARE(background.alpha(), 255);
    for (const QColor& surface : surfaces)
        background = over(surface, background);
    const double reached = contrast(over(drawn, background), background);
    QVERIFY2(reached >= goal, qPrintable(u"%1 of %2"_s.arg(reached).arg(goal)));
}

void ThemeTest::makesTheOverlayASurface() {
    constexpr double noticeable = 1.15;
    constexpr double invisible = 1.05;
    for (const Theme* const theme : {&Theme::light(), &Theme::dark()}) {
        QVERIFY(theme->overlay.alphaF() < 1.0F);
        for (const QColor& behind : {theme->content, theme->sidebar}) {
            const QColor panel = over(theme->overlay, behind);
            QVERIFY(contrast(over(theme->fieldBorder, panel), behind) > noticeable);
            // Translucent, but nobody can tell a text below from what it stands on.
            QVERIFY(contrast(over(theme->overlay, theme->text), panel) < invisible);
        }
    }
}

void ThemeTest::hasTheColoursOfTheDesign_data() {
    QTest::addColumn<QColor Theme::*>("token");
    QTest::addColumn<QColor>("light");
    QTest::addColumn<QColor>("dark");
    const auto add = [](const char* name, QColor Theme::*token, const QColor& light,
                        const QColor& dark) { QTest::newRow(name) << token << light << dark; };
    const auto black = [](double opacity) { return withOpacity(Qt::black, opacity); };
    const auto white = [](double opacity) { return withOpacity(Qt::white, opacity); };
    const QColor amber = withOpacity(QColor(0xF59E0B), 0.15);
    add("content", &Theme::content, 0xFFFFFF, 0x1E1F22);
    add("sidebar", &Theme::sidebar, 0xF3F4F6, 0x26282C);
    add("field", &Theme::field, 0xFFFFFF, 0x2C2E33);
    add("text", &Theme::text, 0x1C1E21, 0xECEEF1);
    add("secondary text", &Theme::secondaryText, 0x656A72, 0xA0A6B0);
    add("hairline", &Theme::hairline, black(0.08), white(0.09));
    add("field border", &Theme::fieldBorder, black(0.12), white(0.15));
    add("accent", &Theme::accent, 0x0B62D6, 0x5AA2FF);
    add("selection", &Theme::selection, withOpacity(QColor(0x0B62D6), 0.12),
        withOpacity(QColor(0x5AA2FF), 0.18));
    add("hover", &Theme::hover, black(0.04), white(0.05));
    add("outdated", &Theme::outdated, 0xB45309, 0xFBAB4A);
    add("outdated tag", &Theme::outdatedTag, amber, amber);
    add("count pill", &Theme::countPill, 0xC2570C, 0xC2570C);
    add("on the count pill", &Theme::onCountPill, Qt::white, Qt::white);
    add("failure", &Theme::failure, 0xFDEFDC, 0x3A2E1D);
    add("green", &Theme::good, 0x15803D, 0x5DD68A);
    add("purple", &Theme::cask, 0x7C3AED, 0xB798FF);
    add("red", &Theme::destructive, 0xD0312D, 0xFF6B66);
    add("card of an alert", &Theme::card, 0xFFFFFF, 0x26282C);
    add("shadow of the overlay", &Theme::overlayShadow, black(0.33), black(0.33));
}

void ThemeTest::hasTheColoursOfTheDesign() {
    QFETCH(QColor Theme::*, token);
    QFETCH(QColor, light);
    QFETCH(QColor, dark);
    QCOMPARE(Theme::light().*token, light);
    QCOMPARE(Theme::dark().*token, dark);
}

void ThemeTest::followsThePaletteOfAWidget() {
    QWidget parent;
    const QWidget child(&parent);
    for (const auto& [name, theme] : allThemes()) {
        parent.setPalette(theme.palette());
        QVERIFY2(&Theme::of(&child) == &theme, qPrintable(name));
        // Whatever is turned off.
        parent.setEnabled(false);
        QVERIFY2(&Theme::of(&child) == &theme, qPrintable(name));
        parent.setEnabled(true);
    }
}

void ThemeTest::bringsLinesAndQuietTextsForward_data() {
    QTest::addColumn<bool>("isDark");
    QTest::newRow("light") << false;
    QTest::newRow("dark") << true;
}

void ThemeTest::bringsLinesAndQuietTextsForward() {
    QFETCH(bool, isDark);
    using enum Theme::Contrast;
    const Theme& usual = isDark ? Theme::dark() : Theme::light();
    const Theme& clearer = isDark ? Theme::dark(Higher) : Theme::light(Higher);
    const auto reached = [](const Theme& theme, QColor Theme::*drawn, QColor Theme::*surface) {
        return contrast(over(theme.*drawn, theme.*surface), theme.*surface);
    };
    constexpr double ofEnhancedText = 7;
    for (QColor Theme::*const surface : {&Theme::content, &Theme::sidebar, &Theme::field}) {
        QVERIFY(reached(clearer, &Theme::secondaryText, surface) >= ofEnhancedText);
        QVERIFY(reached(clearer, &Theme::hairline, surface) >=
                1.5 * reached(usual, &Theme::hairline, surface));
        QVERIFY(reached(clearer, &Theme::fieldBorder, surface) >= forIcons);
    }
    // Nothing else is another colour.
    QCOMPARE(clearer.content, usual.content);
    QCOMPARE(clearer.accent, usual.accent);
}

void ThemeTest::tellsTheToolkitItsColours_data() {
    QTest::addColumn<int>("place");
    for (int i = 0; i < allThemes().size(); ++i)
        QTest::newRow(qUtf8Printable(allThemes().at(i).first)) << i;
}

void ThemeTest::tellsTheToolkitItsColours() {
    QFETCH(int, place);
    const Theme& theme = allThemes().at(place).second;
    const QPalette palette = theme.palette();
    QCOMPARE(palette.color(QPalette::Window), theme.content);
    QCOMPARE(palette.color(QPalette::WindowText), theme.text);
    QCOMPARE(palette.color(QPalette::Base), theme.field);
    QCOMPARE(palette.color(QPalette::PlaceholderText), theme.secondaryText);
    QCOMPARE(palette.color(QPalette::Highlight), theme.accent);
    // The toolkit's own pieces (message boxes, menus, tool tips) are to be readable, too.
    const auto isReadable = [&palette](QPalette::ColorRole text, QPalette::ColorRole surface) {
        return contrast(palette.color(text), palette.color(surface)) >= forText;
    };
    QVERIFY(isReadable(QPalette::WindowText, QPalette::Window));
    QVERIFY(isReadable(QPalette::Text, QPalette::Base));
    QVERIFY(isReadable(QPalette::ButtonText, QPalette::Button));
    QVERIFY(isReadable(QPalette::ToolTipText, QPalette::ToolTipBase));
    QVERIFY(isReadable(QPalette::HighlightedText, QPalette::Highlight));
    QVERIFY(isReadable(QPalette::Link, QPalette::Window));
}

QTEST_MAIN(ThemeTest)
#include "tst_theme.moc"
