// SPDX-License-Identifier: MIT
#include "AppScene.h"
#include "BrewAt.h"
#include "Find.h"
#include "Painted.h"
#include "Pixels.h"
#include "UiTest.h"
#include "style/Look.h"
#include "style/Theme.h"
#include "style/Typography.h"
#include "widgets/DetailBadge.h"
#include "widgets/RowListView.h"
#include "widgets/Sheet.h"

#include <QAbstractButton>
#include <QHash>
#include <QLabel>
#include <QListView>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// A part of a window: where it is, and the font that it has.
struct Part final {
    QRect place;
    QFont font;
};

/// What a window shows, with its parts by their texts, object names or types.
struct Seen final {
    QImage picture;
    QHash<QString, Part> parts;

    [[nodiscard]] QImage pictureOf(const QString& part) const {
        return picture.copy(parts.value(part).place);
    }
};

/// Where the text of a badge or a button is: within its padding and its border.
QRect textPlace(const QWidget& widget, const QString& text) {
    constexpr int border = 2;
    const int padding = (widget.width() - Typography::width(widget.font(), text)) / 2;
    return widget.rect().adjusted(padding, border, -padding, -border);
}

Seen look(const QWidget& window) {
    Seen seen{Painted::pictureOf(window), {}};
    const auto add = [&](const QString& name, const QWidget& widget, const QRect& place) {
        if (!name.isEmpty())
            seen.parts.insert(
                name, {place.translated(widget.mapTo(&window, QPoint(0, 0))), widget.font()});
    };
    for (const QWidget* const widget : window.findChildren<QWidget*>()) {
        if (!widget->isVisible())
            continue;
        add(QString::fromLatin1(widget->metaObject()->className()), *widget, widget->rect());
        add(widget->objectName(), *widget, widget->rect());
        if (const auto* const label = qobject_cast<const QLabel*>(widget))
            add(label->text(), *label, label->rect());
        else if (const auto* const badge = qobject_cast<const DetailBadge*>(widget))
            add(badge->text(), *badge, textPlace(*badge, badge->text()));
        else if (const auto* const button = qobject_cast<const QAbstractButton*>(widget))
            add(button->text(), *button, textPlace(*button, button->text()));
    }
    // Rows by their identifiers, and those without one by their titles.
    if (const auto* const sidebar = findVisible<QListView>(window, u"sidebar"_s)) {
        for (int row = 0; row < sidebar->model()->rowCount(); ++row) {
            const QModelIndex index = sidebar->model()->index(row, 0);
            add(u"sidebar "_s + index.data().toString(), *sidebar->viewport(),
                sidebar->visualRect(index));
        }
    }
    if (ListDriver::isShown(window)) {
        const RowListView& list = ListDriver(window).view();
        for (int row = 0; row < list.model()->rowCount(); ++row) {
            const QModelIndex index = list.model()->index(row, 0);
            const QString id = ListDriver(window).ids().at(row);
            add(id.isEmpty() ? index.data(Qt::AccessibleTextRole).toString() : id, *list.viewport(),
                list.visualRect(index));
        }
    }
    return seen;
}

/// Sheets fade in.
bool isAtRest(const QWidget& window) {
    return std::ranges::none_of(window.findChildren<Sheet*>(), [](const Sheet* sheet) {
        return sheet->graphicsEffect() != nullptr;
    });
}

const QString withoutHomebrew = u"without Homebrew"_s;

Seen lookAt(const QString& name) {
    if (name == withoutHomebrew) {
        BrewManager manager(brewAt(u"/nonexistent/brew"_s));
        MainWindow window(manager, LangManager::shared(), {});
        window.show();
        if (!QTest::qWaitForWindowActive(&window))
            qFatal("The window doesn't become active");
        return look(window);
    }
    const auto scene = std::ranges::find_if(AppScene::all(), [&name](const AppScene& known) {
        return QLatin1StringView(known.name) == name;
    });
    if (scene == AppScene::all().end())
        qFatal("There is no scene \"%s\"", qUtf8Printable(name));
    AppWindow app;
    app.showLoaded();
    AppScene::fill(app);
    scene->enter(app);
    if (!QTest::qWaitFor([&app] { return isAtRest(app.window); }))
        qFatal("The sheet doesn't come to rest");
    // What has got another text is laid out anew in the next turn.
    QCoreApplication::processEvents();
    return look(app.window);
}

/// A window needn't be looked at twice.
const Seen& seenIn(const QString& scene, bool isDark) {
    static QHash<std::pair<QString, bool>, Seen> all;
    const std::pair key(scene, isDark);
    if (!all.contains(key)) {
        Look::setDark(isDark);
        all.insert(key, lookAt(scene));
    }
    return all[key];
}

/// The rows of a table, which all need a scene and one of the themes.
class Table final {
public:
    explicit Table(bool isDark)
        : theme(isDark ? Theme::dark() : Theme::light()), m_isDark(isDark) {}

    QTestData& add(const QString& scene, const QString& what) const {
        const QString row = u"%1, %2: %3"_s.arg(m_isDark ? u"dark"_s : u"light"_s, scene, what);
        return QTest::newRow(qUtf8Printable(row)) << scene << m_isDark;
    }

    const Theme& theme;

private:
    bool m_isDark;
};

void addSceneColumns() {
    QTest::addColumn<QString>("scene");
    QTest::addColumn<bool>("isDark");
}

template <class AddRows>
void forBothThemes(AddRows addRows) {
    addRows(Table(false));
    addRows(Table(true));
}

QColor tinted(const QColor& below, const QColor& color, double opacity) {
    return Pixels::on(below, withOpacity(color, opacity));
}

} // namespace

/// What is painted on each page, in the light and in the dark colours.
class PaintedPagesTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void cleanupTestCase() { Look::setDark(false); }

    void drawsItsSymbols_data();
    void drawsItsSymbols();
    void setsItsTexts_data();
    void setsItsTexts();
    void setsTheTextsOfItsRows_data();
    void setsTheTextsOfItsRows();
    void fillsItsSurfaces_data();
    void fillsItsSurfaces();
    void hasItsSizes_data();
    void hasItsSizes();
    void liftsItsSheets_data();
    void liftsItsSheets();
    void turnsALargeSpinner_data();
    void turnsALargeSpinner();
};

void PaintedPagesTest::drawsItsSymbols_data() {
    addSceneColumns();
    QTest::addColumn<QString>("symbol");
    QTest::addColumn<int>("side");
    QTest::addColumn<QColor>("color");
    QTest::addColumn<QColor>("below");
    forBothThemes([](const Table& table) {
        const Theme& theme = table.theme;
        const auto add = [&](const QString& scene, const QString& symbol, int side,
                             const QColor& color, const QColor& below) {
            table.add(scene, u"%1 of %2"_s.arg(symbol).arg(side))
                << symbol << side << color << below;
        };
        const QColor content = theme.content;
        const QColor trash = withOpacity(theme.destructive, 0.7);

        // In place of a list.
        const QColor pale = theme.secondaryText;
        add(u"empty formulae"_s, u"shippingbox"_s, 48, pale, content);
        add(u"empty casks"_s, u"macwindow"_s, 48, pale, content);
        add(u"empty updates"_s, u"checkmark.circle"_s, 48, theme.good, content);
        add(u"empty search"_s, u"magnifyingglass"_s, 48, pale, content);
        add(u"empty taps"_s, u"list.bullet"_s, 48, pale, content);
        add(u"detail of nothing"_s, u"doc.text.magnifyingglass"_s, 48, pale, content);
        add(withoutHomebrew, u"exclamationmark.triangle"_s, 64, theme.outdated, content);

        // In the sidebar.
        add(u"formulae"_s, u"shippingbox"_s, 18, theme.accent,
            Pixels::on(theme.sidebar, theme.selection));
        for (const QString& symbol :
             {u"macwindow"_s, u"arrow.triangle.2.circlepath"_s, u"magnifyingglass"_s,
              u"list.bullet"_s, u"gearshape"_s, u"info.circle"_s})
            add(u"formulae"_s, symbol, 18, theme.accent, theme.sidebar);
        add(u"formulae"_s, u"line.3.horizontal"_s, 18, theme.text, theme.sidebar);

        // In headers.
        add(u"formulae"_s, u"magnifyingglass"_s, 14, pale, theme.field);
        add(u"formulae"_s, u"arrow.clockwise"_s, 18, theme.text, content);
        add(u"loading formulae"_s, u"arrow.clockwise"_s, 18, withOpacity(theme.text, 0.35),
            content);
        add(u"updates"_s, u"arrow.triangle.2.circlepath"_s, 16, theme.text, theme.field);
        add(u"taps"_s, u"plus"_s, 18, theme.text, content);
        add(u"failure"_s, u"exclamationmark.triangle"_s, 16, theme.outdated, theme.failure);
        add(u"failure"_s, u"xmark"_s, 18, theme.text, theme.failure);

        // In rows.
        add(u"formulae"_s, u"trash"_s, 16, trash, content);
        add(u"casks"_s, u"trash"_s, 16, trash, content);
        for (const QString& scene : {u"updates"_s, u"search"_s}) {
            add(scene, u"shippingbox"_s, 20, theme.accent, content);
            add(scene, u"macwindow"_s, 20, theme.cask, content);
        }
        add(u"updates"_s, u"arrow.right"_s, 11, pale, content);
        add(u"taps"_s, u"list.bullet"_s, 20, theme.accent, content);
        add(u"taps"_s, u"trash"_s, 16, trash, content);

        add(u"detail of a formula"_s, u"shippingbox.fill"_s, 36, theme.accent, content);
        add(u"detail of a cask"_s, u"macwindow"_s, 36, theme.accent, content);

        add(u"settings"_s, u"globe"_s, 24, theme.accent, content);
        add(u"settings"_s, u"paintbrush"_s, 24, theme.accent, content);
        add(u"settings"_s, u"stethoscope"_s, 24, theme.good, content);
        for (const QString& symbol : {u"eye"_s, u"paintbrush.fill"_s, u"stethoscope"_s})
            add(u"settings"_s, symbol, 16, theme.text, theme.field);

        const QColor link = tinted(content, theme.text, 0.04);
        for (const QString& symbol : {u"house"_s, u"envelope"_s, u"doc.text"_s})
            add(u"about"_s, symbol, 18, theme.text, link);
        add(u"about"_s, u"arrow.up.right"_s, 12, pale, link);
    });
}

void PaintedPagesTest::drawsItsSymbols() {
    QFETCH(QString, scene);
    QFETCH(bool, isDark);
    QFETCH(QString, symbol);
    QFETCH(int, side);
    QFETCH(QColor, color);
    QFETCH(QColor, below);
    const Seen& seen = seenIn(scene, isDark);
    QVERIFY(Painted::placeOf({symbol, side, color, below}, seen.picture).isValid());
}

void PaintedPagesTest::setsItsTexts_data() {
    addSceneColumns();
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("size");
    QTest::addColumn<QFont::Weight>("weight");
    QTest::addColumn<QColor>("color");
    QTest::addColumn<QColor>("below");
    forBothThemes([](const Table& table) {
        const Theme& theme = table.theme;
        const auto add = [&](const QString& scene, const QString& text, double size,
                             QFont::Weight weight, const QColor& color, const QColor& below) {
            table.add(scene, text) << text << size << weight << color << below;
        };
        const QColor content = theme.content;
        const QColor pale = theme.secondaryText;
        using enum QFont::Weight;

        add(u"formulae"_s, u"Formulae (2)"_s, 15, DemiBold, theme.text, content);
        add(u"empty formulae"_s, u"No formulae installed"_s, 13, Normal, pale, content);
        add(u"empty casks"_s, u"No casks installed"_s, 13, Normal, pale, content);
        add(u"empty updates"_s, u"All packages are up to date"_s, 18, Normal, pale, content);
        add(u"empty search"_s, u"Type to search Homebrew packages"_s, 13, Normal, pale, content);
        add(u"empty taps"_s, u"No taps configured"_s, 18, Normal, pale, content);
        add(u"loading formulae"_s, u"Loading formulae..."_s, 13, Normal, pale, content);
        add(u"loading casks"_s, u"Loading casks..."_s, 13, Normal, pale, content);
        add(u"loading updates"_s, u"Checking for updates..."_s, 13, Normal, pale, content);
        add(u"loading search"_s, u"Searching..."_s, 13, Normal, pale, content);
        add(u"loading taps"_s, u"Loading taps..."_s, 13, Normal, pale, content);
        add(u"detail of nothing"_s, u"Package not found"_s, 13, Normal, pale, content);
        add(withoutHomebrew, u"Homebrew Not Found"_s, 22, Bold, theme.text, content);
        add(withoutHomebrew,
            u"Lumora requires Homebrew to be installed.\nPlease install Homebrew first."_s, 13,
            Normal, pale, content);
        add(withoutHomebrew, u"Install Homebrew"_s, 14, Medium, theme.onAccent, theme.accent);
        add(u"failure"_s, u"brew info --installed --formula failed"_s, 12, Normal, theme.text,
            theme.failure);
        add(u"overlay"_s, u"Running..."_s, 11.5, Medium, theme.text,
            Pixels::on(content, theme.overlay));

        const QString formula = u"detail of a formula"_s;
        add(formula, u"wget"_s, 20, Bold, theme.text, content);
        add(formula, u"Formula"_s, 11, Medium, theme.accent, tinted(content, theme.accent, 0.12));
        add(formula, u"v1.1"_s, 11, Medium, theme.goodOnTint, tinted(content, theme.good, 0.12));
        add(formula, u"Update available"_s, 11, Medium, theme.outdatedOnTint,
            tinted(content, theme.outdated, 0.12));
        for (const QString& headline : {u"Description"_s, u"Details"_s, u"Dependencies (3)"_s})
            add(formula, headline, 13, DemiBold, theme.text, content);
        add(formula, u"Fetches files"_s, 13, Normal, theme.text, content);
        add(formula, u"Name"_s, 13, Normal, pale, content);
        add(formula, u"homebrew/core/wget"_s, 13, Normal, theme.text, content);
        add(formula, u"Homepage"_s, 13, Medium, pale, content);
        add(formula, u"https://example.org/wget"_s, 13, Normal, theme.accent, content);
        add(formula, u"gettext"_s, 11.5, Normal, theme.text, tinted(content, pale, 0.1));
        add(formula, u"Close"_s, 13, Normal, theme.text, theme.field);
        add(u"detail of a cask"_s, u"Cask"_s, 11, Medium, theme.cask,
            tinted(content, theme.cask, 0.12));

        for (const QString& title : {u"Language"_s, u"Cleanup"_s, u"Doctor"_s})
            add(u"settings"_s, title, 17, Bold, theme.text, content);
        add(u"settings"_s, u"Check your Homebrew installation for potential problems."_s, 13,
            Normal, pale, content);
        for (const QString& title : {u"Output"_s, u"Diagnosis"_s})
            add(u"settings with outputs"_s, title, 13, DemiBold, theme.text, content);
        add(u"no category"_s, u"Select a category"_s, 13, Normal, pale, content);
        add(u"about"_s, u"Lumora"_s, 20, Bold, theme.text, content);
        add(u"about"_s, u"Version 0.1.9"_s, 12, Normal, pale, content);
        add(u"add tap"_s, u"Add Tap"_s, 13, DemiBold, theme.text, content);
        add(u"add tap"_s, u"Enter the tap name (e.g., user/repo)"_s, 11.5, Normal, pale, content);
        add(u"add tap"_s, u"Cancel"_s, 13, Normal, theme.text, theme.field);
    });
}

void PaintedPagesTest::setsItsTexts() {
    QFETCH(QString, scene);
    QFETCH(bool, isDark);
    QFETCH(QString, text);
    QFETCH(double, size);
    QFETCH(QFont::Weight, weight);
    QFETCH(QColor, color);
    QFETCH(QColor, below);
    const Seen& seen = seenIn(scene, isDark);
    QVERIFY(seen.parts.contains(text));
    const QFont font = seen.parts.value(text).font;
    QCOMPARE(font.pointSizeF(), Typography::font(size).pointSizeF());
    QCOMPARE(font.weight(), weight);
    QVERIFY(Painted::isAllOf(seen.pictureOf(text), {text, font, color, below}));
}

void PaintedPagesTest::setsTheTextsOfItsRows_data() {
    addSceneColumns();
    QTest::addColumn<QString>("row");
    QTest::addColumn<QRect>("place");
    QTest::addColumn<Painted::Text>("text");
    forBothThemes([](const Table& table) {
        const Theme& theme = table.theme;
        const auto add = [&](const QString& scene, const QString& row, const QRect& place,
                             const Painted::Text& text) {
            table.add(scene, u"%1 of %2"_s.arg(text.text, row)) << row << place << text;
        };
        const QColor content = theme.content;
        const QColor pale = theme.secondaryText;
        const QFont caption = Typography::font(11.5);
        const QFont strong = Typography::font(11.5, QFont::Medium);
        const QFont body = Typography::font(13, QFont::Medium);
        const QFont small = Typography::font(9, QFont::Medium);
        const QFont pill = Typography::font(11.5, QFont::Bold);
        // From a row's leading edge; its second line; and what stands before its trash can.
        const QRect name(18, 6, 100, 18);
        const QRect second(18, 25, 400, 18);
        const QRect version(574, 10, 100, 28);
        // Behind an icon.
        const QRect named(50, 0, 200, 36);

        add(u"formulae"_s, u"formula-jq"_s, name, {u"jq"_s, body, theme.text, content});
        add(u"formulae"_s, u"formula-jq"_s, second, {u"JSON processor"_s, caption, pale, content});
        add(u"formulae"_s, u"formula-jq"_s, version,
            {u"1.2"_s, Typography::font(12), pale, content});
        add(u"casks"_s, u"cask-iina"_s, second, {u"Media player"_s, caption, pale, content});
        add(u"search"_s, u"formula-curl"_s, named, {u"curl"_s, body, theme.text, content});
        add(u"taps"_s, u"user/tools"_s, named, {u"user/tools"_s, body, theme.text, content});

        // Counts in the sidebar, 18 from the row's end, one of them on a pill.
        const auto count = [](const QFont& font, const QString& digits, int padding) {
            const int width = Typography::width(font, digits);
            return QRect(180 - 18 - padding - width, 8, width, 14);
        };
        const QFont plain = Typography::font(12);
        add(u"formulae"_s, u"sidebar Formulae"_s, count(plain, u"2"_s, 0),
            {u"2"_s, plain, theme.secondaryOnTint, Pixels::on(theme.sidebar, theme.selection)});
        add(u"formulae"_s, u"sidebar Casks"_s, count(plain, u"1"_s, 0),
            {u"1"_s, plain, pale, theme.sidebar});
        add(u"formulae"_s, u"sidebar Updates"_s, count(pill, u"2"_s, 6),
            {u"2"_s, pill, theme.onCountPill, theme.countPill});
        const QRect title(44, 0, 80, 30);
        add(u"formulae"_s, u"sidebar Casks"_s, title,
            {u"Casks"_s, body, theme.text, theme.sidebar});

        // Titles of sections.
        add(u"formulae"_s, u"sidebar Packages"_s, QRect(18, 10, 120, 24),
            {u"Packages"_s, Typography::font(11, QFont::DemiBold), pale, theme.sidebar});
        add(u"updates"_s, u"Formulae (1)"_s, QRect(18, 5, 120, 24),
            {u"Formulae (1)"_s, Typography::font(11.5, QFont::DemiBold), pale, content});

        // Tags stand 6 behind the name and 6 from each other; their texts lie 5 within.
        const int outdated = 18 + Typography::width(body, u"wget"_s) + 6 + 5;
        const int outdatedWidth = Typography::width(small, u"outdated"_s);
        const int dependency = outdated + outdatedWidth + 5 + 6 + 5;
        const int tagMiddle = 15;
        const int tagHeight = QFontMetrics(small).height();
        const auto tag = [&](int x, int width) {
            return QRect(x, tagMiddle - tagHeight / 2, width, tagHeight);
        };
        add(u"formulae"_s, u"formula-wget"_s, tag(outdated, outdatedWidth),
            {u"outdated"_s, small, theme.outdatedOnTint, Pixels::on(content, theme.outdatedTag)});
        add(u"formulae"_s, u"formula-wget"_s,
            tag(dependency, Typography::width(small, u"dependency"_s)),
            {u"dependency"_s, small, theme.secondaryOnTint, Pixels::on(content, theme.neutralTag)});

        // The versions of an update with the arrow between them, 4 from each.
        const int current = Typography::width(caption, u"1.0"_s);
        add(u"updates"_s, u"formula-wget"_s, QRect(50, 25, current + 2, 18),
            {u"1.0"_s, caption, pale, content});
        add(u"updates"_s, u"formula-wget"_s, QRect(50 + current + 4 + 11 + 2, 25, 100, 18),
            {u"2.0"_s, strong, theme.outdated, content});

        // Actions at the trailing edge.
        const QFont button = Typography::font(12, QFont::Medium);
        const int update = Typography::width(button, u"Update"_s);
        add(u"updates"_s, u"formula-wget"_s, QRect(702 - 11 - update, 14, update, 20),
            {u"Update"_s, button, theme.text, theme.field});
        const int install = Typography::width(button, u"Install"_s);
        add(u"search"_s, u"formula-curl"_s, QRect(702 - 11 - install, 8, install, 20),
            {u"Install"_s, button, theme.text, theme.field});
        const int installed = Typography::width(strong, u"Installed"_s);
        add(u"search"_s, u"formula-jq"_s, QRect(702 - 6 - installed, 11, installed, 14),
            {u"Installed"_s, strong, theme.goodOnTint, tinted(content, theme.good, 0.1)});
    });
}

void PaintedPagesTest::setsTheTextsOfItsRows() {
    QFETCH(QString, scene);
    QFETCH(bool, isDark);
    QFETCH(QString, row);
    QFETCH(QRect, place);
    QFETCH(Painted::Text, text);
    const Seen& seen = seenIn(scene, isDark);
    QVERIFY(seen.parts.contains(row));
    QVERIFY(Painted::isAllOf(seen.pictureOf(row).copy(place), text));
}

void PaintedPagesTest::fillsItsSurfaces_data() {
    addSceneColumns();
    QTest::addColumn<QString>("part");
    QTest::addColumn<QPoint>("place");
    QTest::addColumn<QColor>("color");
    forBothThemes([](const Table& table) {
        const Theme& theme = table.theme;
        // Places count from the trailing and the lower edge when they are negative.
        const auto add = [&](const QString& scene, const QString& part, const QPoint& place,
                             const QColor& color) {
            table.add(scene, u"%1 at %2, %3"_s.arg(part).arg(place.x()).arg(place.y()))
                << part << place << color;
        };
        const auto lined = [&theme](const QColor& below) {
            return Pixels::on(below, theme.hairline);
        };
        add(u"formulae"_s, u"sidebar"_s, {2, 300}, theme.sidebar);
        add(u"formulae"_s, u"PageHeader"_s, {300, 2}, theme.content);
        add(u"formulae"_s, u"PageHeader"_s, {300, -1}, lined(theme.content));
        add(u"formulae"_s, u"searchField"_s, {-6, 15}, theme.field);
        // A border lies half on the fill and half outside.
        add(u"formulae"_s, u"searchField"_s, {100, 0},
            Pixels::on(tinted(theme.content, theme.field, 0.5), theme.fieldBorder));
        add(u"formulae"_s, u"formula-jq"_s, {300, -1}, lined(theme.content));
        add(u"formulae"_s, u"QSplitterHandle"_s, {2, 300}, lined(theme.sidebar));
        add(u"failure"_s, u"failureStrip"_s, {1, 1}, theme.failure);
        add(u"failure"_s, u"failureStrip"_s, {300, -1}, lined(theme.failure));
        add(u"failed operation"_s, u"operationStrip"_s, {1, 1}, theme.operationFailure);
        add(u"failed operation"_s, u"operationStrip"_s, {300, -1}, lined(theme.operationFailure));
        add(u"successful operation"_s, u"operationStrip"_s, {1, 1}, theme.content);
        add(u"settings"_s, u"hairline"_s, {100, 0}, lined(theme.content));
        add(u"settings"_s, u"languagePicker"_s, {100, 1}, theme.trough);
        add(u"settings"_s, u"English"_s, {0, 1}, theme.segment);
        add(u"settings"_s, u"日本語"_s, {0, 1}, theme.trough);
        // Badges have round corners.
        add(u"detail of a formula"_s, u"DetailBadge"_s, {0, 0}, theme.content);
        add(u"settings with outputs"_s, u"OutputText"_s, {-20, 3}, theme.output);
        add(u"detail of a formula"_s, u"sheetFooter"_s, {20, 20}, theme.sidebar);
        add(u"detail of a formula"_s, u"sheetFooter"_s, {20, 0}, lined(theme.sidebar));
        add(u"detail of a formula"_s, u"hairline"_s, {100, 0}, lined(theme.content));
        add(u"detail of a formula"_s, u"sheet"_s, {2, 400}, Pixels::on(theme.sidebar, theme.scrim));
        // The chosen row, dimmed by the sheet that it has opened.
        add(u"detail of a formula"_s, u"formula-wget"_s, {-12, 24},
            Pixels::on(Pixels::on(theme.content, theme.selection), theme.scrim));
        add(u"about"_s, u"LinkRow"_s, {150, 2}, tinted(theme.content, theme.text, 0.04));
        add(withoutHomebrew, u"installHomebrewButton"_s, {8, 18}, theme.accent);
        add(u"add tap"_s, u"confirmAddTap"_s, {8, 15}, tinted(theme.content, theme.accent, 0.4));
    });
}

void PaintedPagesTest::fillsItsSurfaces() {
    QFETCH(QString, scene);
    QFETCH(bool, isDark);
    QFETCH(QString, part);
    QFETCH(QPoint, place);
    QFETCH(QColor, color);
    const QImage picture = seenIn(scene, isDark).pictureOf(part);
    const auto inside = [](int at, int length) { return at < 0 ? length + at : at; };
    const QColor found =
        picture.pixelColor(inside(place.x(), picture.width()), inside(place.y(), picture.height()));
    QVERIFY2(Pixels::areAlike(found, color),
             qPrintable(found.name() + u" instead of "_s + color.name()));
}

void PaintedPagesTest::hasItsSizes_data() {
    QTest::addColumn<QString>("scene");
    QTest::addColumn<QString>("part");
    QTest::addColumn<QSize>("size");
    const auto add = [](const QString& scene, const QString& part, QSize size) {
        QTest::newRow(qUtf8Printable(part)) << scene << part << size;
    };
    add(u"formulae"_s, u"PageHeader"_s, {720, 52});
    add(u"formulae"_s, u"searchField"_s, {210, 30});
    add(u"taps"_s, u"addTapButton"_s, {30, 30});
    // An icon of 16 and, 4 to its right, the text; 9 on both sides of them.
    const int text = QFontMetrics(Typography::font(13)).size(0, u"Update All"_s).width();
    add(u"updates"_s, u"updateAllButton"_s, {9 + 16 + 4 + text + 9, 30});
    add(u"failure"_s, u"failureStrip"_s, {720, 31});
    add(u"failure"_s, u"closeFailure"_s, {24, 24});
    add(u"failed operation"_s, u"operationStrip"_s, {720, 38});
    add(u"output"_s, u"sheetFooter"_s, {560, 52});
    add(u"overlay"_s, u"Spinner"_s, {14, 14});
    add(u"add tap"_s, u"tapNameField"_s, {300, 30});
    add(u"detail of a formula"_s, u"sheetFooter"_s, {560, 52});
}

void PaintedPagesTest::hasItsSizes() {
    QFETCH(QString, scene);
    QFETCH(QString, part);
    QFETCH(QSize, size);
    QCOMPARE(seenIn(scene, false).parts.value(part).place.size(), size);
}

void PaintedPagesTest::liftsItsSheets_data() {
    addSceneColumns();
    forBothThemes(
        [](const Table& table) { table.add(u"detail of a formula"_s, u"PackageDetailView"_s); });
}

void PaintedPagesTest::liftsItsSheets() {
    QFETCH(QString, scene);
    QFETCH(bool, isDark);
    const Theme& theme = isDark ? Theme::dark() : Theme::light();
    const Seen& seen = seenIn(scene, isDark);
    const QRect panel = seen.parts.value(u"PackageDetailView"_s).place;
    const auto at = [&](QPoint place) { return seen.picture.pixelColor(place); };
    // Round at its corners.
    QVERIFY(!Pixels::areAlike(at(panel.topLeft()), theme.content));
    QVERIFY(Pixels::areAlike(at(panel.topLeft() + QPoint(12, 0)), theme.content));
    // With a shadow around it.
    const QColor dimmed = Pixels::on(theme.sidebar, theme.scrim);
    const QPoint beside(panel.left() - 1, panel.center().y());
    QVERIFY(at(beside).lightness() < dimmed.lightness() - 2);
    QVERIFY(Pixels::areAlike(at(beside - QPoint(19, 0)), dimmed));
}

void PaintedPagesTest::turnsALargeSpinner_data() {
    addSceneColumns();
    forBothThemes([](const Table& table) {
        for (const QString& page :
             {u"formulae"_s, u"casks"_s, u"updates"_s, u"search"_s, u"taps"_s})
            table.add(u"loading "_s + page, u"spinner"_s);
    });
}

void PaintedPagesTest::turnsALargeSpinner() {
    QFETCH(QString, scene);
    QFETCH(bool, isDark);
    const Theme& theme = isDark ? Theme::dark() : Theme::light();
    const QImage spinner = seenIn(scene, isDark).pictureOf(u"Spinner"_s);
    QCOMPARE(spinner.size(), QSize(32, 32));
    // A ring that reaches the edges, with an arc on it.
    const int middle = spinner.width() / 2;
    for (const QPoint& place : {QPoint(1, middle), QPoint(middle, 1), QPoint(30, middle)})
        QVERIFY(!Pixels::areAlike(spinner.pixelColor(place), theme.content));
    QVERIFY(Pixels::areAlike(spinner.pixelColor(middle, middle), theme.content));
    QVERIFY(Pixels::boundsOf(spinner, theme.secondaryText).isValid());
}

LUMORA_UI_TEST_MAIN(PaintedPagesTest)
#include "tst_paintedpages.moc"
