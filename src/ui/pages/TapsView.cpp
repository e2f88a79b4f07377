// SPDX-License-Identifier: MIT
#include "pages/TapsView.h"

#include "Blanks.h"
#include "BrewManager.h"
#include "CoroutineParameters.h"
#include "L10n.h"
#include "pages/AddTapSheet.h"
#include "style/Theme.h"
#include "widgets/Alert.h"
#include "widgets/IconButton.h"
#include "widgets/RowListView.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int rowHeight = 36;

} // namespace

TapsView::TapsView(BrewManager& manager, QWidget* parent)
    : ListPage(manager, nullptr, L10n::taps(), rowHeight, parent),
      m_refreshButton(addRefreshButton(L10n::refreshTaps())) {
    auto* const addButton = new IconButton(u"plus"_s, L10n::addTapHelp());
    addButton->setObjectName(u"addTapButton"_s);
    addHeaderControl(addButton);

    connect(m_refreshButton, &IconButton::clicked, this, [this] { this->manager().loadTaps(); });
    connect(addButton, &IconButton::clicked, this, &TapsView::showAddSheet);
}

TapsView::~TapsView() {
    if (m_addSheet)
        m_addSheet->dismiss();
}

void TapsView::firstShown() {
    if (manager().taps->isEmpty())
        manager().loadTaps();
}

void TapsView::render() {
    const QList<BrewTap>& taps = *manager().taps;
    setTitle(counted(L10n::taps(), taps.size()));
    m_refreshButton->setEnabled(!*manager().isLoadingTaps);
    if (m_addSheet)
        m_addSheet->setAdding(m_isAddingTap);
    list().setRows({section(taps, [this](const BrewTap& tap) {
        return Row{
            .id = tap.id(),
            .title = tap.name,
            .symbol = u"list.bullet"_s,
            .symbolTone = Row::Tone::Accent,
            .actions = {{.kind = RowAction::Kind::Trash,
                         .title = L10n::remove(),
                         .toolTip = L10n::removeTapHelp(),
                         .onTrigger = [this, name = tap.name] { askToRemove(name); }}},
        };
    })});
    if (!taps.isEmpty())
        showList();
    else if (*manager().isLoadingTaps)
        showBusy(L10n::loadingTaps());
    else
        showSymbol(u"list.bullet"_s, &Theme::secondaryText, L10n::noTapsConfigured(),
                   StateView::TextSize::Title);
}

void TapsView::showAddSheet() {
    if (m_addSheet)
        return;
    m_addSheet = new AddTapSheet(window());
    m_addSheet->setAdding(m_isAddingTap);
    connect(m_addSheet, &AddTapSheet::addRequested, this, [this](const QString& newTapName) {
        const QString name = trimmedOfBlanks(newTapName).toString();
        if (!name.isEmpty())
            addTap(name);
    });
    m_addSheet->present();
}

QCoro::Task<> TapsView::addTap(QString name) {
    static_assert(takesParametersByValue<&TapsView::addTap>);
    const QPointer page(this);
    const QPointer brewManager(&manager());
    m_isAddingTap = true;
    scheduleRender();
    const bool succeeded = co_await brewManager->addTap(name);
    if (page) {
        page->m_isAddingTap = false;
        page->scheduleRender();
        if (succeeded && page->m_addSheet)
            page->m_addSheet->dismiss();
    }
    if (succeeded && brewManager)
        co_await brewManager->loadTaps();
}

void TapsView::askToRemove(const QString& name) {
    if (m_showConfirmRemove)
        return;
    m_showConfirmRemove = name;
    Alert::confirm(
        this,
        {.title = L10n::removeTap(),
         .message = L10n::confirmRemoveTap(name),
         .destructive = L10n::remove(),
         .cancel = L10n::cancel()},
        [this, name] { removeTap(name); }, [this] { m_showConfirmRemove.reset(); });
}

QCoro::Task<> TapsView::removeTap(QString name) {
    static_assert(takesParametersByValue<&TapsView::removeTap>);
    const QPointer brewManager(&manager());
    if (co_await brewManager->removeTap(name) && brewManager)
        co_await brewManager->loadTaps();
}
