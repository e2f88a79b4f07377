// SPDX-License-Identifier: MIT
#include "pages/SettingsView.h"

#include "BrewManager.h"
#include "L10n.h"
#include "LangManager.h"
#include "style/Metrics.h"
#include "style/Symbol.h"
#include "style/Theme.h"
#include "style/Typography.h"
#include "widgets/Alert.h"
#include "widgets/Boxes.h"
#include "widgets/Labels.h"
#include "widgets/OutputText.h"
#include "widgets/PushButton.h"
#include "widgets/SegmentedPicker.h"
#include "widgets/Spinner.h"
#include "widgets/SymbolLabel.h"

#include <QPointer>

using namespace Qt::StringLiterals;

namespace {

constexpr int padding = 20;
constexpr int sectionSpacing = 18;
constexpr int innerSpacing = 12;
constexpr int outputSpacing = 4;
constexpr int buttonSpacing = 8;

/// A section's symbol beside its title and, if it has one, its explanation.
QLayout* makeHeading(const QString& symbol, ThemeColor color, const QString& title,
                     const QString& explanation = {}) {
    constexpr int iconSize = 24;
    constexpr int lineSpacing = 2;
    // Fonts of different scripts would move everything below.
    constexpr int titleHeight = 22;
    constexpr double titleSize = 17;
    auto* const titleLabel = new PlainLabel(title, Typography::font(titleSize, QFont::Bold));
    titleLabel->setFixedHeight(titleHeight);
    QVBoxLayout* const texts = Boxes::column(lineSpacing, {titleLabel});
    if (!explanation.isEmpty()) {
        auto* const label = new SecondaryLabel(explanation, Typography::body);
        label->setWordWrap(true);
        texts->addWidget(label);
    }
    return Boxes::row(innerSpacing, {new SymbolLabel(symbol, iconSize, color), {texts, 1}});
}

PushButton* makeButton(const QString& symbol, const QString& title) {
    constexpr int iconSize = 16;
    auto* const button = new PushButton(Symbol::icon(symbol), title);
    button->setIconSize({iconSize, iconSize});
    button->setFont(Typography::font(Typography::body, QFont::Medium));
    button->setAccessibleName(title);
    return button;
}

} // namespace

SettingsView::SettingsView(LangManager& langManager, BrewManager& manager, QWidget* parent)
    : Page(manager, parent), m_langManager(langManager) {
    auto* const content = new QWidget;
    content->setLayout(Boxes::column(sectionSpacing,
                                     {makeLanguage(), Boxes::hairline(), makeCleanup(),
                                      Boxes::hairline(), makeDoctor(), Boxes::stretch()},
                                     {padding, padding - 2, padding, padding}));
    content->setMaximumWidth(Metrics::widestContent);
    setScrolledContent(content);
}

QLayout* SettingsView::makeLanguage() {
    QStringList names;
    for (const Lang lang : allLangs)
        names.append(displayName(lang));
    m_picker = new SegmentedPicker(names, L10n::language());
    m_picker->setObjectName(u"languagePicker"_s);
    // Queued: the arrow keys move the focus after the choice, and it is to be moved before
    // everything is built anew.
    connect(
        m_picker, &SegmentedPicker::chosen, this,
        [this](int index) {
            m_langManager.setCurrent(allLangs.at(static_cast<std::size_t>(index)));
        },
        Qt::QueuedConnection);
    m_langManager.current().subscribe(this, [this](Lang) { scheduleRender(); });
    return Boxes::column(innerSpacing,
                         {makeHeading(u"globe"_s, &Theme::accent, L10n::language()), m_picker});
}

QLayout* SettingsView::makeCleanup() {
    m_previewButton = makeButton(u"eye"_s, L10n::preview());
    m_previewButton->setObjectName(u"previewButton"_s);
    m_cleanupButton = makeButton(u"paintbrush.fill"_s, L10n::runCleanup());
    m_cleanupButton->setObjectName(u"cleanupButton"_s);
    m_cleanupSpinner = new Spinner(Spinner::Size::Small);
    m_cleanupOutput = new OutputSection(L10n::output(), outputSpacing);
    m_cleanupOutput->setObjectName(u"cleanupOutput"_s);
    connect(m_previewButton, &PushButton::clicked, this, [this] { previewCleanup(); });
    connect(m_cleanupButton, &PushButton::clicked, this, &SettingsView::askToCleanUp);
    return Boxes::column(
        innerSpacing,
        {makeHeading(u"paintbrush"_s, &Theme::accent, L10n::cleanupTitle(), L10n::cleanupDesc()),
         Boxes::row(buttonSpacing,
                    {m_previewButton, m_cleanupButton, m_cleanupSpinner, Boxes::stretch()}),
         m_cleanupOutput});
}

QLayout* SettingsView::makeDoctor() {
    m_doctorButton = makeButton(u"stethoscope"_s, L10n::runDoctor());
    m_doctorButton->setObjectName(u"doctorButton"_s);
    m_doctorSpinner = new Spinner(Spinner::Size::Small);
    m_doctorOutputSection = new OutputSection(L10n::diagnosis(), outputSpacing);
    m_doctorOutputSection->setObjectName(u"doctorOutput"_s);
    connect(m_doctorButton, &PushButton::clicked, this, [this] { runDoctor(); });
    return Boxes::column(
        innerSpacing,
        {makeHeading(u"stethoscope"_s, &Theme::good, L10n::doctor(), L10n::doctorDesc()),
         Boxes::row(buttonSpacing, {m_doctorButton, m_doctorSpinner, Boxes::stretch()}),
         m_doctorOutputSection});
}

void SettingsView::render() {
    setTitle(L10n::settings());
    m_picker->setCurrent(static_cast<int>(*m_langManager.current()));
    m_previewButton->setEnabled(!m_isLoadingPreview);
    m_cleanupButton->setEnabled(!m_isRunningCleanup);
    m_cleanupSpinner->setVisible(m_isLoadingPreview || m_isRunningCleanup);
    m_cleanupOutput->setOutput(m_cleanupPreview);
    m_doctorButton->setEnabled(!m_isRunningDoctor);
    m_doctorSpinner->setVisible(m_isRunningDoctor);
    m_doctorOutputSection->setOutput(m_doctorOutput);
}

void SettingsView::askToCleanUp() {
    if (std::exchange(m_showConfirmCleanup, true))
        return;
    Alert::confirm(
        this,
        {.title = L10n::runCleanup(),
         .message = L10n::confirmCleanup(),
         .destructive = L10n::runCleanup(),
         .cancel = L10n::cancel()},
        [this] { runCleanup(); }, [this] { m_showConfirmCleanup = false; });
}

QCoro::Task<> SettingsView::previewCleanup() {
    const QPointer page(this);
    m_isLoadingPreview = true;
    scheduleRender();
    const QString text = co_await manager().cleanupDryRun();
    if (!page)
        co_return;
    page->m_cleanupPreview =
        QStringView(text).trimmed().isEmpty() ? L10n::nothingToCleanUp() : text;
    page->m_isLoadingPreview = false;
    page->scheduleRender();
}

QCoro::Task<> SettingsView::runCleanup() {
    const QPointer page(this);
    m_isRunningCleanup = true;
    scheduleRender();
    const QString text = co_await manager().cleanup();
    if (!page)
        co_return;
    page->m_cleanupPreview = text;
    page->m_isRunningCleanup = false;
    page->scheduleRender();
}

QCoro::Task<> SettingsView::runDoctor() {
    const QPointer page(this);
    m_isRunningDoctor = true;
    scheduleRender();
    const QString text = co_await manager().doctor();
    if (!page)
        co_return;
    page->m_doctorOutput = text;
    page->m_isRunningDoctor = false;
    page->scheduleRender();
}
