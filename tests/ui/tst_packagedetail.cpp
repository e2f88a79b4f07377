// SPDX-License-Identifier: MIT
#include "BrewManager.h"
#include "BrowserDouble.h"
#include "Find.h"
#include "Input.h"
#include "LangManager.h"
#include "Samples.h"
#include "ScriptedBrew.h"
#include "UiTest.h"
#include "pages/PackageDetailView.h"
#include "style/Theme.h"
#include "style/Typography.h"
#include "widgets/ChipButton.h"
#include "widgets/DetailBadge.h"
#include "widgets/DetailRow.h"
#include "widgets/FlowLayout.h"
#include "widgets/Labels.h"
#include "widgets/Links.h"
#include "widgets/OutputText.h"
#include "widgets/Spinner.h"
#include "widgets/StateView.h"
#include "widgets/SymbolLabel.h"

#include <QApplication>
#include <QClipboard>
#include <QFontInfo>
#include <QLabel>
#include <QScopeGuard>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

/// The pane in a window of its own, as wide as in the sheet.
struct Detail final {
    Detail() = default;

    explicit Detail(const BrewPackage& package) {
        publish(package);
        show(package.id());
    }

    ~Detail() {
        // A run that is under way still needs the folder of its script.
        (void)QTest::qWaitFor([this] { return findVisible<Spinner>(window) == nullptr; });
    }

    Q_DISABLE_COPY_MOVE(Detail)

    void publish(const BrewPackage& package) {
        (package.type == PackageType::cask ? manager.casks : manager.formulae).set({package});
    }

    void show(const QString& id) {
        view = new PackageDetailView(id, manager, &window);
        auto* const layout = new QVBoxLayout(&window);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(view);
        window.resize(560, 470);
        window.show();
        if (!QTest::qWaitForWindowActive(&window))
            qFatal("The window doesn't become active");
    }

    /// Everything that labels say, from top to bottom.
    [[nodiscard]] QStringList labels() const {
        QStringList texts;
        for (const QLabel* const label : window.findChildren<QLabel*>()) {
            if (label->isVisible())
                texts.append(label->text());
        }
        return texts;
    }

    [[nodiscard]] QList<DetailBadge*> badges(bool areChips) const {
        QList<DetailBadge*> badges;
        for (DetailBadge* const badge : window.findChildren<DetailBadge*>()) {
            if ((badge->tone() == DetailBadge::Tone::Neutral) == areChips)
                badges.append(badge);
        }
        return badges;
    }

    [[nodiscard]] QStringList badgeTexts(bool areChips) const {
        QStringList texts;
        for (const DetailBadge* const badge : badges(areChips))
            texts.append(badge->text());
        return texts;
    }

    /// The chip with this text, which leads somewhere.
    [[nodiscard]] ChipButton& chip(const QString& text) const {
        for (ChipButton* const chip : window.findChildren<ChipButton*>()) {
            if (chip->text() == text)
                return *chip;
        }
        qFatal("There is no chip \"%s\"", qUtf8Printable(text));
    }

    [[nodiscard]] QString name() const {
        const auto* const label = findVisible<QLabel>(window, u"detailName"_s);
        return label != nullptr ? label->text() : QString();
    }

    [[nodiscard]] QString state() const {
        const auto* const state = findVisible<StateView>(window);
        return state != nullptr ? state->text() : QString();
    }

    [[nodiscard]] QString report() const {
        const auto* const text = findVisible<OutputText>(window);
        return text != nullptr ? text->output() : QString();
    }

    ScriptedBrew brew;
    BrewManager manager{brew.discovery()};
    QWidget window;
    PackageDetailView* view{};
};

BrewPackage wget() {
    BrewPackage package = Samples::formula(u"wget"_s, u"Fetches files"_s);
    package.dependencies = {u"openssl@3"_s, u"libidn2"_s, u"gettext"_s};
    return package;
}

} // namespace

class PackageDetailTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void tellsEverythingOfAPackage();
    void leavesOutWhatIsNotKnown();
    void namesItsBadges_data();
    void namesItsBadges();
    void prefersTheFormula();
    void saysWhenThereIsNoSuchPackage_data();
    void saysWhenThereIsNoSuchPackage();
    void followsThePackageInTheLists();
    void opensTheHomePage_data();
    void opensTheHomePage();
    void asksForTheReportOnce();
    void showsTheReport();
    void showsTheWordsOfAFailure();
    void keepsTheReportUntilTheNextOneIsThere();
    void letsALateReportOfTheLastPackageShow();
    void givesBadgesAndChipsTheirSizes();
    void keepsItsDistances();
    void wrapsItsChips();
    void opensADependencyThatIsInstalled();
    void followsWhatIsInstalled();
    void keepsTheKeyboardAcrossPackages();
    void marksAChipThatLeadsSomewhere();
    void cutsANameThatIsTooLong();
    void showsOnHoverTheChipThatIsCut();
    void keepsTheOtherBadgesBesideALongVersion();
    void tellsTheWholeOfALongValue();
    void setsALabelSmallerThatIsTooLong();
    void setsLabelAndValueOnOneLine_data();
    void setsLabelAndValueOnOneLine();
    void letsValuesBeCopied();
    void scrollsByTheKeyboard();
    void speaksTheLanguage_data();
    void speaksTheLanguage();
};

void PackageDetailTest::tellsEverythingOfAPackage() {
    const Detail detail(wget());
    QCOMPARE(detail.name(), u"wget"_s);
    QCOMPARE(detail.badgeTexts(false), (QStringList{u"Formula"_s, u"v1.1"_s}));
    QStringList labels = detail.labels();
    labels.removeAll(u"Loading info..."_s);
    labels.sort();
    QStringList expected{u"wget"_s, u"Description"_s, u"Fetches files"_s, u"Details"_s,
                         u"Name"_s, u"Version"_s,     u"Installed"_s,     u"homebrew/core/wget"_s,
                         u"1.2"_s,  u"1.1"_s,         u"Homepage"_s,      u"Dependencies (3)"_s};
    expected.sort();
    QCOMPARE(labels, expected);
    QCOMPARE(require<LinkButton>(detail.window).text(), u"https://example.org/wget"_s);
    QCOMPARE(detail.badgeTexts(true), (QStringList{u"openssl@3"_s, u"libidn2"_s, u"gettext"_s}));
    const auto& icon = require<SymbolLabel>(detail.window);
    QCOMPARE(icon.symbol(), u"shippingbox.fill"_s);
    // From top to bottom.
    const auto topOf = [&detail](const QString& text) {
        for (const QLabel* const label : detail.window.findChildren<QLabel*>()) {
            if (label->text() == text)
                return label->mapTo(&detail.window, QPoint(0, 0)).y();
        }
        return -1;
    };
    int last = 0;
    for (const QString& text :
         {u"wget"_s, u"Description"_s, u"Fetches files"_s, u"Details"_s, u"Name"_s, u"Version"_s,
          u"Installed"_s, u"Homepage"_s, u"Dependencies (3)"_s}) {
        QVERIFY2(topOf(text) >= last, qPrintable(text));
        last = topOf(text);
    }
}

void PackageDetailTest::leavesOutWhatIsNotKnown() {
    BrewPackage package = Samples::cask(u"iina"_s);
    package.homepage.clear();
    const Detail detail(package);
    QCOMPARE(require<SymbolLabel>(detail.window).symbol(), u"macwindow"_s);
    QVERIFY(!detail.labels().contains(u"Description"_s));
    QVERIFY(!detail.labels().contains(u"Homepage"_s));
    QVERIFY(findVisible<LinkButton>(detail.window) == nullptr);
    QVERIFY(detail.badges(true).isEmpty());
    for (const QString& label : detail.labels())
        QVERIFY(!label.startsWith("Dependencies"_L1));
    QVERIFY(detail.labels().contains(u"homebrew/cask/iina"_s));
}

void PackageDetailTest::namesItsBadges_data() {
    QTest::addColumn<BrewPackage>("package");
    QTest::addColumn<QStringList>("texts");
    QTest::addColumn<QList<DetailBadge::Tone>>("tones");
    using enum DetailBadge::Tone;
    QTest::newRow("formula") << Samples::formula(u"wget"_s) << QStringList{u"Formula"_s, u"v1.1"_s}
                             << QList<DetailBadge::Tone>{Formula, Good};
    QTest::newRow("outdated formula") << Samples::outdated(Samples::formula(u"wget"_s))
                                      << QStringList{u"Formula"_s, u"v1.1"_s, u"Update available"_s}
                                      << QList<DetailBadge::Tone>{Formula, Good, Outdated};
    QTest::newRow("cask") << Samples::cask(u"iina"_s) << QStringList{u"Cask"_s, u"v1.1"_s}
                          << QList<DetailBadge::Tone>{Cask, Good};
    BrewPackage unknown = Samples::formula(u"wget"_s);
    unknown.installedVersion.clear();
    QTest::newRow("version not known")
        << unknown << QStringList{u"Formula"_s, u"v"_s} << QList<DetailBadge::Tone>{Formula, Good};
}

void PackageDetailTest::namesItsBadges() {
    QFETCH(BrewPackage, package);
    QFETCH(QStringList, texts);
    QFETCH(QList<DetailBadge::Tone>, tones);
    const Detail detail(package);
    QCOMPARE(detail.badgeTexts(false), texts);
    QList<DetailBadge::Tone> shown;
    for (const DetailBadge* const badge : detail.badges(false))
        shown.append(badge->tone());
    QCOMPARE(shown, tones);
}

void PackageDetailTest::prefersTheFormula() {
    // No identifier fits both lists unless a list holds what it shouldn't.
    Detail detail;
    BrewPackage intruder = Samples::formula(u"wget"_s, u"of the casks"_s);
    detail.manager.casks.set({intruder});
    detail.manager.formulae.set({Samples::formula(u"wget"_s, u"of the formulae"_s)});
    detail.show(u"formula-wget"_s);
    QVERIFY(detail.labels().contains(u"of the formulae"_s));
    detail.manager.formulae.set({});
    QTRY_VERIFY(detail.labels().contains(u"of the casks"_s));
}

void PackageDetailTest::saysWhenThereIsNoSuchPackage_data() {
    QTest::addColumn<QString>("id");
    QTest::newRow("unknown") << u"formula-curl"_s;
    QTest::newRow("other type") << u"cask-wget"_s;
    QTest::newRow("other case") << u"formula-Wget"_s;
    QTest::newRow("nothing") << u""_s;
}

void PackageDetailTest::saysWhenThereIsNoSuchPackage() {
    QFETCH(QString, id);
    Detail detail;
    detail.publish(wget());
    detail.show(id);
    QCOMPARE(detail.state(), u"Package not found"_s);
    QCOMPARE(require<SymbolLabel>(detail.window).symbol(), u"doc.text.magnifyingglass"_s);
    QCOMPARE(detail.name(), QString());
    QCOMPARE(detail.brew.runs(), QStringList());
}

void PackageDetailTest::followsThePackageInTheLists() {
    Detail detail(wget());
    BrewPackage upgraded = wget();
    upgraded.installedVersion = u"1.2"_s;
    detail.publish(upgraded);
    QTRY_COMPARE(detail.badgeTexts(false), (QStringList{u"Formula"_s, u"v1.2"_s}));
    QSignalSpy title(detail.view, &PackageDetailView::titleChanged);
    detail.manager.formulae.set({});
    QTRY_COMPARE(detail.state(), u"Package not found"_s);
    QCOMPARE(detail.name(), QString());
    QCOMPARE(title.last(), QVariantList{u"Package not found"_s});
    detail.publish(upgraded);
    QTRY_COMPARE(detail.name(), u"wget"_s);
    QCOMPARE(detail.state(), QString());
    QCOMPARE(title.last(), QVariantList{u"wget"_s});
}

void PackageDetailTest::opensTheHomePage_data() {
    QTest::addColumn<QString>("homepage");
    QTest::addColumn<QString>("opened");
    QTest::newRow("address") << u"https://example.org/wget"_s << u"https://example.org/wget"_s;
    QTest::newRow("http") << u"http://example.org"_s << u"http://example.org"_s;
    QTest::newRow("no address") << u"http://exa mple.org/%zz"_s << u"https://brew.sh"_s;
}

void PackageDetailTest::opensTheHomePage() {
    QFETCH(QString, homepage);
    QFETCH(QString, opened);
    const BrowserDouble browser;
    BrewPackage package = wget();
    package.homepage = homepage;
    const Detail detail(package);
    auto& link = require<LinkButton>(detail.window);
    QCOMPARE(link.text(), homepage);
    Input::click(link);
    QCOMPARE(browser.opened(), QStringList{opened});
    link.setFocus();
    Input::key(Qt::Key_Space);
    QCOMPARE(browser.opened(), (QStringList{opened, opened}));
}

void PackageDetailTest::asksForTheReportOnce() {
    Detail detail;
    detail.brew.answer(u"info wget"_s, "wget: stable 1.2\n");
    detail.publish(wget());
    detail.show(u"formula-wget"_s);
    QTRY_COMPARE(detail.report(), u"wget: stable 1.2\n"_s);
    // Other versions of the package are no other package.
    detail.publish(Samples::outdated(wget()));
    detail.manager.casks.set({Samples::cask(u"iina"_s)});
    QTRY_COMPARE(detail.badgeTexts(false).size(), 3);
    detail.view->setPackageID(u"cask-iina"_s);
    QTRY_COMPARE(detail.brew.runs(), (QStringList{u"info wget"_s, u"info iina"_s}));
}

void PackageDetailTest::showsTheReport() {
    Detail detail;
    detail.brew.answer(u"info wget"_s, "==> wget: <b>stable</b> 1.2\n\n  Fetches &amp; more\n");
    detail.brew.hold(u"info wget"_s);
    detail.publish(wget());
    detail.show(u"formula-wget"_s);
    QTRY_VERIFY(detail.labels().contains(u"Loading info..."_s));
    QVERIFY(findVisible<Spinner>(detail.window) != nullptr);
    QVERIFY(!detail.labels().contains(u"brew info"_s));
    detail.brew.release(u"info wget"_s);
    QTRY_VERIFY(detail.labels().contains(u"brew info"_s));
    QVERIFY(!detail.labels().contains(u"Loading info..."_s));
    QVERIFY(findVisible<Spinner>(detail.window) == nullptr);
    const auto& text = require<OutputText>(detail.window);
    QCOMPARE(text.toPlainText(), u"==> wget: <b>stable</b> 1.2\n\n  Fetches &amp; more"_s);
    QVERIFY(QFontInfo(text.font()).fixedPitch());
    QVERIFY(text.isReadOnly());
    QCOMPARE(text.palette().color(QPalette::Text), Theme::light().secondaryText);
    QCOMPARE(text.width(), detail.window.width() - 2 * 16);
}

void PackageDetailTest::showsTheWordsOfAFailure() {
    Detail detail;
    detail.brew.answer(u"info wget"_s, "Error: nothing known of it\n", 1);
    detail.publish(wget());
    detail.show(u"formula-wget"_s);
    QTRY_COMPARE(detail.report(), u"Error: nothing known of it\n"_s);
    // Nothing printed is nothing shown.
    detail.brew.answer(u"info iina"_s, {}, 1, "Error: on the other stream\n");
    detail.manager.casks.set({Samples::cask(u"iina"_s)});
    detail.view->setPackageID(u"cask-iina"_s);
    QTRY_COMPARE(detail.report(), QString());
    QTRY_VERIFY(!detail.labels().contains(u"Loading info..."_s));
    QVERIFY(!detail.labels().contains(u"brew info"_s));
}

void PackageDetailTest::keepsTheReportUntilTheNextOneIsThere() {
    Detail detail;
    detail.brew.answer(u"info wget"_s, "of wget");
    detail.brew.answer(u"info iina"_s, "of iina");
    detail.brew.hold(u"info iina"_s);
    detail.publish(wget());
    detail.publish(Samples::cask(u"iina"_s));
    detail.show(u"formula-wget"_s);
    QTRY_COMPARE(detail.report(), u"of wget"_s);
    detail.view->setPackageID(u"cask-iina"_s);
    QTRY_COMPARE(detail.name(), u"iina"_s);
    QCOMPARE(detail.report(), u"of wget"_s);
    QVERIFY(!detail.labels().contains(u"Loading info..."_s));
    detail.brew.release(u"info iina"_s);
    QTRY_COMPARE(detail.report(), u"of iina"_s);
}

void PackageDetailTest::letsALateReportOfTheLastPackageShow() {
    Detail detail;
    detail.brew.answer(u"info wget"_s, "of wget");
    detail.brew.answer(u"info iina"_s, "of iina");
    detail.brew.hold(u"info wget"_s);
    detail.brew.hold(u"info iina"_s);
    detail.publish(wget());
    detail.publish(Samples::cask(u"iina"_s));
    detail.show(u"formula-wget"_s);
    QTRY_COMPARE(detail.brew.runs(), QStringList{u"info wget"_s});
    detail.view->setPackageID(u"cask-iina"_s);
    QTRY_COMPARE(detail.brew.runs().size(), 2);
    detail.brew.release(u"info wget"_s);
    QTRY_COMPARE(detail.report(), u"of wget"_s);
    QCOMPARE(detail.name(), u"iina"_s);
    detail.brew.release(u"info iina"_s);
    QTRY_COMPARE(detail.report(), u"of iina"_s);
}

void PackageDetailTest::givesBadgesAndChipsTheirSizes() {
    const Detail detail(wget());
    for (const bool areChips : {false, true}) {
        for (const DetailBadge* const badge : detail.badges(areChips)) {
            const QFontMetricsF metrics(badge->font());
            const double text = metrics.horizontalAdvance(badge->text());
            QCOMPARE(badge->width(), qCeil(text) + 2 * 8);
            QCOMPARE(badge->height(), badge->fontMetrics().height() + 2 * (areChips ? 3 : 2));
        }
    }
    // On a tint of 12 % of its own colour.
    const DetailBadge* const badge = detail.badges(false).constFirst();
    const QImage image = badge->window()->grab().toImage();
    const QPoint left = badge->mapTo(badge->window(), QPoint(3, badge->height() / 2));
    const QColor accent = Theme::light().accent;
    const auto tinted = [](int part) { return qRound(part * 0.12 + 255 * 0.88); };
    const QColor fill = image.pixelColor(left);
    QVERIFY(qAbs(fill.red() - tinted(accent.red())) <= 1);
    QVERIFY(qAbs(fill.green() - tinted(accent.green())) <= 1);
    QVERIFY(qAbs(fill.blue() - tinted(accent.blue())) <= 1);
}

void PackageDetailTest::wrapsItsChips() {
    BrewPackage package = wget();
    package.dependencies.clear();
    for (int i = 0; i < 40; ++i)
        package.dependencies.append(u"dependency-%1"_s.arg(i));
    const Detail detail(package);
    QVERIFY(detail.labels().contains(u"Dependencies (40)"_s));
    const QList<DetailBadge*> chips = detail.badges(true);
    QCOMPARE(chips.size(), 40);
    QCOMPARE(chips.at(1)->x(), chips.at(0)->geometry().right() + 1 + 6);
    QVERIFY(chips.constLast()->y() > chips.constFirst()->y());
    for (const DetailBadge* const chip : chips)
        QVERIFY(chip->geometry().right() <= chip->parentWidget()->width());
    QCOMPARE(require<QScrollArea>(detail.window).horizontalScrollBar()->maximum(), 0);
}

void PackageDetailTest::opensADependencyThatIsInstalled() {
    Detail detail;
    BrewPackage tapped = Samples::formula(u"gettext"_s);
    tapped.fullName = u"user/tap/gettext"_s;
    BrewPackage package = wget();
    package.dependencies = {u"openssl@3"_s, u"libidn2"_s, u"user/tap/gettext"_s, u"iina"_s};
    detail.manager.formulae.set({Samples::formula(u"libidn2"_s), tapped, package});
    // A cask is no formula's dependency.
    detail.manager.casks.set({Samples::cask(u"iina"_s)});
    detail.show(package.id());
    QCOMPARE(detail.badgeTexts(true), (QStringList{u"openssl@3"_s, u"iina"_s}));
    const QSignalSpy requested(detail.view, &PackageDetailView::packageRequested);
    Input::click(detail.chip(u"libidn2"_s));
    auto& chip = detail.chip(u"user/tap/gettext"_s);
    QCOMPARE(chip.accessibleName(), u"user/tap/gettext"_s);
    chip.setFocus();
    Input::key(Qt::Key_Return);
    QCOMPARE(requested.size(), 2);
    QCOMPARE(requested.at(0), QVariantList{u"formula-libidn2"_s});
    QCOMPARE(requested.at(1), QVariantList{u"formula-gettext"_s});
}

void PackageDetailTest::followsWhatIsInstalled() {
    Detail detail(wget());
    QCOMPARE(detail.badgeTexts(true).size(), 3);
    detail.manager.formulae.set({Samples::formula(u"gettext"_s), wget()});
    QTRY_COMPARE(detail.badgeTexts(true), (QStringList{u"openssl@3"_s, u"libidn2"_s}));
    QCOMPARE(detail.chip(u"gettext"_s).text(), u"gettext"_s);
    detail.manager.formulae.set({wget()});
    QTRY_COMPARE(detail.badgeTexts(true).size(), 3);
}

void PackageDetailTest::keepsTheKeyboardAcrossPackages() {
    Detail detail;
    BrewPackage package = wget();
    package.desc = u"line of words "_s.repeated(100);
    detail.manager.formulae.set({Samples::formula(u"libidn2"_s, package.desc), package});
    detail.show(package.id());
    auto& scroll = require<QScrollArea>(detail.window, u"detailScroll"_s);
    detail.chip(u"libidn2"_s).setFocus();
    scroll.ensureWidgetVisible(&detail.chip(u"libidn2"_s));
    QVERIFY(scroll.verticalScrollBar()->value() > 0);
    detail.view->setPackageID(u"formula-libidn2"_s);
    QTRY_COMPARE(detail.name(), u"libidn2"_s);
    QVERIFY(scroll.hasFocus());
    QCOMPARE(scroll.verticalScrollBar()->value(), 0);
    // From there on in the order that is read.
    Input::key(Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), &require<LinkButton>(detail.window));
}

void PackageDetailTest::marksAChipThatLeadsSomewhere() {
    Detail detail;
    detail.manager.formulae.set({Samples::formula(u"libidn2"_s), wget()});
    detail.show(wget().id());
    ChipButton& chip = detail.chip(u"libidn2"_s);
    const DetailBadge& badge = *detail.badges(true).constFirst();
    QCOMPARE(chip.height(), badge.height());
    QCOMPARE(chip.geometry().left(), badge.geometry().right() + 1 + 6);
    const auto fillOf = [](QWidget& widget) {
        const QPoint place(3, widget.height() / 2);
        return widget.window()->grab().toImage().pixelColor(widget.mapTo(widget.window(), place));
    };
    Input::moveTo(detail.window, QPoint(0, 0));
    const QColor atRest = fillOf(chip);
    QVERIFY(atRest != Theme::light().content);
    QCOMPARE(atRest, fillOf(*detail.badges(true).constFirst()));
    Input::moveTo(chip);
    QTRY_VERIFY(fillOf(chip).lightness() < atRest.lightness());
    const QColor hovered = fillOf(chip);
    Input::press(chip);
    QVERIFY(fillOf(chip).lightness() < hovered.lightness());
    Input::moveTo(detail.window, QPoint(0, 0));
    Input::release(detail.window, QPoint(0, 0));
    QTRY_COMPARE(fillOf(chip), atRest);
    // No mark for the mouse, which has left the focus there.
    const QPoint edge = chip.mapTo(&detail.window, QPoint(chip.width() / 2, 1));
    QVERIFY(detail.window.grab().toImage().pixelColor(edge) != Theme::light().accent);
    Input::key(Qt::Key_Backtab, Qt::ShiftModifier);
    Input::key(Qt::Key_Tab);
    QVERIFY(chip.hasFocus());
    QCOMPARE(detail.window.grab().toImage().pixelColor(edge), Theme::light().accent);
}

void PackageDetailTest::keepsItsDistances() {
    Detail detail;
    detail.brew.answer(u"info wget"_s, "wget: stable 1.2\n");
    detail.publish(wget());
    detail.show(u"formula-wget"_s);
    QTRY_VERIFY(!detail.report().isEmpty());
    const auto place = [&detail](const QWidget& widget) {
        return QRect(widget.mapTo(&detail.window, QPoint(0, 0)), widget.size());
    };
    const auto label = [&](const QString& text) {
        for (const QLabel* const widget : detail.window.findChildren<QLabel*>()) {
            if (widget->isVisible() && widget->text() == text)
                return place(*widget);
        }
        return QRect();
    };
    const auto gap = [](const QRect& above, const QRect& below) {
        return below.top() - above.bottom() - 1;
    };
    QTRY_COMPARE(gap(label(u"brew info"_s), place(require<OutputText>(detail.window))), 6);
    QCOMPARE(place(require<SymbolLabel>(detail.window)).left(), 16);
    QCOMPARE(qMin(place(require<SymbolLabel>(detail.window)).top(), label(u"wget"_s).top()), 16);
    QCOMPARE(label(u"Description"_s).left(), 16);
    QCOMPARE(gap(label(u"Description"_s), label(u"Fetches files"_s)), 4);
    QCOMPARE(gap(label(u"Details"_s), label(u"Name"_s)), 8);
    QCOMPARE(gap(label(u"Name"_s), label(u"Version"_s)), 8);
    QCOMPARE(gap(label(u"Version"_s), label(u"Installed"_s)), 8);
    QCOMPARE(gap(label(u"Dependencies (3)"_s), place(*detail.badges(true).constFirst())), 6);
    // Values begin after a column of 100 points, the link's text among them.
    QCOMPARE(label(u"homebrew/core/wget"_s).left(), 16 + 100);
    const auto& link = require<LinkButton>(detail.window);
    QCOMPARE(place(link).left() + LinkButton::focusMargin, 16 + 100);
    QVERIFY(label(u"Homepage"_s).right() < place(link).left());
}

void PackageDetailTest::cutsANameThatIsTooLong() {
    const BrewPackage package = Samples::formula(QString(200, u'w'));
    const Detail detail(package);
    const auto& name = require<ElidedLabel>(detail.window, u"detailName"_s);
    QVERIFY(name.text().endsWith(u'…') && name.text().size() < 100);
    QCOMPARE(name.toolTip(), u"<qt>"_s + package.name + u"</qt>"_s);
    QVERIFY(name.mapTo(&detail.window, QPoint(name.width(), 0)).x() <= 560 - 16);
}

void PackageDetailTest::showsOnHoverTheChipThatIsCut() {
    Detail detail;
    const QString longName = u"<b>"_s + QString(200, u'w');
    BrewPackage package = wget();
    package.dependencies = {u"libidn2"_s, longName};
    detail.manager.formulae.set(
        {Samples::formula(u"libidn2"_s), Samples::formula(longName), package});
    detail.show(package.id());
    QTRY_COMPARE(detail.chip(longName).toolTip(), u"<qt>%1</qt>"_s.arg(longName.toHtmlEscaped()));
    QCOMPARE(detail.chip(u"libidn2"_s).toolTip(), QString());
}

void PackageDetailTest::keepsTheOtherBadgesBesideALongVersion() {
    BrewPackage package = Samples::outdated(wget());
    package.installedVersion = u"1.2.3"_s;
    const QString longVersion = u"2025.10.05-"_s.repeated(20);
    Detail detail(package);
    QCOMPARE(detail.badges(false).at(1)->toolTip(), QString());
    package.installedVersion = longVersion;
    detail.manager.formulae.set({package});
    QTRY_COMPARE(detail.badges(false).at(1)->text(), u'v' + longVersion);
    QTRY_COMPARE(detail.badges(false).at(1)->toolTip(), u"<qt>v"_s + longVersion + u"</qt>"_s);
    for (const int place : {0, 2}) {
        const DetailBadge& badge = *detail.badges(false).at(place);
        QVERIFY2(badge.width() >= badge.sizeHint().width(), qPrintable(badge.text()));
    }
    const DetailBadge& last = *detail.badges(false).constLast();
    QVERIFY(last.mapTo(&detail.window, QPoint(last.width(), 0)).x() <= 560 - 16);
    QVERIFY(detail.badges(false).at(1)->width() > 100);
}

void PackageDetailTest::tellsTheWholeOfALongValue() {
    BrewPackage package = wget();
    package.version = u"2025.10.05-"_s.repeated(20);
    package.homepage = u"https://example.org/"_s + u"wget/"_s.repeated(40);
    Detail detail(package);
    const auto value = [&](const QString& fullText) -> const ElidedLabel& {
        for (const auto* const label : detail.window.findChildren<ElidedLabel*>()) {
            if (label->fullText() == fullText && label->objectName().isEmpty())
                return *label;
        }
        qFatal("Nothing shows \"%s\"", qUtf8Printable(fullText));
    };
    const ElidedLabel& version = value(package.version);
    QVERIFY(version.text().endsWith(u'…'));
    QCOMPARE(version.toolTip(), u"<qt>"_s + package.version + u"</qt>"_s);
    QCOMPARE(version.accessibleName(), u"Version: "_s + package.version);
    QCOMPARE(value(package.fullName).toolTip(), QString());
    const auto& link = require<LinkButton>(detail.window);
    QVERIFY(link.width() < link.sizeHint().width());
    QCOMPARE(link.toolTip(), u"<qt>"_s + package.homepage + u"</qt>"_s);
    package.homepage = u"https://example.org/"_s;
    detail.manager.formulae.set({package});
    QTRY_COMPARE(require<LinkButton>(detail.window).text(), package.homepage);
    QCOMPARE(require<LinkButton>(detail.window).toolTip(), QString());
}

void PackageDetailTest::setsALabelSmallerThatIsTooLong() {
    QVERIFY(DetailRow(u"Name"_s, QString()).findChild<SecondaryLabel*>()->font() ==
            Typography::font(Typography::body));
    for (const QChar character : {u'済', u'n'}) {
        QString text;
        while (Typography::width(Typography::font(Typography::body), text) <= 100)
            text += character;
        const DetailRow row(text, QString());
        const auto* const label = row.findChild<SecondaryLabel*>();
        QCOMPARE(label->width(), 100);
        QVERIFY(label->font().pointSizeF() < Typography::font(Typography::body).pointSizeF());
        QVERIFY(Typography::width(label->font(), text) <= 100);
    }
}

void PackageDetailTest::setsLabelAndValueOnOneLine_data() {
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("value");
    // Each begins with the same letter, whose foot is looked for.
    QTest::newRow("in Latin script") << u"xa"_s << u"xa"_s;
    QTest::newRow("a label in another script") << u"x名前"_s << u"xa"_s;
    QTest::newRow("a value in another script") << u"xa"_s << u"x名前"_s;
    QTest::newRow("a label set smaller") << u"xインストール済みの名前"_s << u"xa"_s;
}

void PackageDetailTest::setsLabelAndValueOnOneLine() {
    QFETCH(QString, label);
    QFETCH(QString, value);
    const auto footAt = [](const QImage& image, int left) {
        const int narrow = Typography::width(Typography::font(Typography::tag), u"x"_s) - 1;
        const QImage letter = image.copy(left, 0, narrow, image.height());
        for (int y = letter.height() - 1; y >= 0; --y) {
            for (int x = 0; x < letter.width(); ++x) {
                if (letter.pixelColor(x, y).lightness() < 200)
                    return y;
            }
        }
        return -1;
    };
    DetailRow text(label, value);
    DetailRow link(label, new LinkButton(value, u"https://example.org"_s));
    for (DetailRow* const row : {&text, &link}) {
        row->resize(400, row->sizeHint().height());
        const QImage image = row->grab().toImage();
        QVERIFY(footAt(image, 0) > 0);
        QCOMPARE(footAt(image, 0), footAt(image, 100));
    }
}

void PackageDetailTest::letsValuesBeCopied() {
    const Detail detail(wget());
    for (QLabel* const label : detail.window.findChildren<QLabel*>()) {
        if (label->text() != u"homebrew/core/wget"_s)
            continue;
        Input::press(*label, QPoint(0, label->height() / 2));
        Input::moveTo(*label, QPoint(label->width() - 1, label->height() / 2));
        Input::release(*label, QPoint(label->width() - 1, label->height() / 2));
        QCOMPARE(label->selectedText(), u"homebrew/core/wget"_s);
        Input::key(Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QGuiApplication::clipboard()->text(), u"homebrew/core/wget"_s);
        return;
    }
    QFAIL("The full name isn't shown");
}

void PackageDetailTest::scrollsByTheKeyboard() {
    Detail detail;
    detail.brew.answer(u"info wget"_s, QByteArray("line\n").repeated(100));
    detail.publish(wget());
    detail.show(u"formula-wget"_s);
    QTRY_VERIFY(!detail.report().isEmpty());
    auto& scroll = require<QScrollArea>(detail.window, u"detailScroll"_s);
    QTRY_VERIFY(scroll.verticalScrollBar()->maximum() > 0);
    scroll.setFocus();
    Input::key(Qt::Key_PageDown);
    QVERIFY(scroll.verticalScrollBar()->value() > 0);
}

void PackageDetailTest::speaksTheLanguage_data() {
    QTest::addColumn<Lang>("lang");
    QTest::addColumn<QStringList>("texts");
    QTest::newRow("ko") << Lang::ko
                        << QStringList{u"설명"_s,      u"상세 정보"_s, u"이름"_s,      u"버전"_s,
                                       u"설치 버전"_s, u"홈페이지"_s,  u"의존성 (3)"_s};
    QTest::newRow("ja") << Lang::ja << QStringList{u"説明"_s,
                                                   u"詳細"_s,
                                                   u"名前"_s,
                                                   u"バージョン"_s,
                                                   u"インストール済み"_s,
                                                   u"ホームページ"_s,
                                                   u"依存関係 (3)"_s};
}

void PackageDetailTest::speaksTheLanguage() {
    QFETCH(Lang, lang);
    QFETCH(QStringList, texts);
    LangManager::shared().setCurrent(lang);
    const auto restore = qScopeGuard([] { LangManager::shared().setCurrent(Lang::en); });
    const Detail detail(wget());
    for (const QString& text : texts)
        QVERIFY2(detail.labels().contains(text), qPrintable(text));
    QCOMPARE(detail.badgeTexts(false).constFirst(), u"Formula"_s);
}

LUMORA_UI_TEST_MAIN(PackageDetailTest)
#include "tst_packagedetail.moc"
