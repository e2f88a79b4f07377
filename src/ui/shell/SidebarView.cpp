// SPDX-License-Identifier: MIT
#include "shell/SidebarView.h"

#include "BrewManager.h"
#include "shell/SidebarDelegate.h"
#include "style/Theme.h"
#include "widgets/Accessible.h"

#include <QListView>
#include <QPainter>
#include <QShortcut>
#include <QStandardItemModel>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

SidebarView::SidebarView(BrewManager& manager, QWidget* parent)
    : View(manager, parent), m_model(new QStandardItemModel(this)), m_list(new QListView(this)) {
    QString section;
    for (const SidebarCategory category : allSidebarCategories) {
        if (sectionName(category) != section)
            addHeading(section = sectionName(category));
        addCategory(category);
    }

    Accessible::setRole(m_list, QAccessible::List);
    m_list->setObjectName(u"sidebar"_s);
    m_list->setModel(m_model);
    m_list->setAccessibleName(u"Lumora"_s);
    m_list->setItemDelegate(new SidebarDelegate(m_list));
    m_list->setFrameShape(QFrame::NoFrame);
    m_list->setEditTriggers(QListView::NoEditTriggers);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->setMouseTracking(true);
    m_list->viewport()->setAutoFillBackground(false);

    setFocusProxy(m_list);
    (new QVBoxLayout(this))->addWidget(m_list);
    setCoveredHeight(0);

    connect(m_list->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& current) {
                const QVariant category = current.data(SidebarDelegate::CategoryRole);
                if (category.isValid())
                    Q_EMIT categoryChosen(static_cast<SidebarCategory>(category.toInt()));
            });
    connect(m_list, &QListView::clicked, this, &SidebarView::open);
    // On macOS Return activates nothing in the toolkit's lists.
    auto* const enter = new QShortcut(m_list);
    enter->setKeys({QKeySequence(Qt::Key_Return), QKeySequence(Qt::Key_Enter)});
    enter->setContext(Qt::WidgetShortcut);
    connect(enter, &QShortcut::activated, this, [this] { open(m_list->currentIndex()); });
}

void SidebarView::setCoveredHeight(int height) {
    constexpr int topMargin = 2;
    layout()->setContentsMargins(0, topMargin, 0, height);
}

void SidebarView::open(const QModelIndex& index) {
    const QVariant category = index.data(SidebarDelegate::CategoryRole);
    if (category.isValid())
        Q_EMIT categoryOpened(static_cast<SidebarCategory>(category.toInt()));
}

void SidebarView::addHeading(const QString& title) {
    auto* const heading = new QStandardItem(title);
    heading->setFlags(Qt::ItemNeverHasChildren);
    m_model->appendRow(heading);
}

void SidebarView::addCategory(SidebarCategory category) {
    auto* const item = new QStandardItem(localizedName(category));
    item->setData(static_cast<int>(category), SidebarDelegate::CategoryRole);
    item->setData(icon(category), SidebarDelegate::SymbolRole);
    item->setData(category == SidebarCategory::updates, SidebarDelegate::IsPillRole);
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren);
    m_model->appendRow(item);
}

QStandardItem* SidebarView::itemOf(SidebarCategory category) const {
    const QModelIndexList found =
        m_model->match(m_model->index(0, 0), SidebarDelegate::CategoryRole,
                       static_cast<int>(category), 1, Qt::MatchExactly);
    return m_model->itemFromIndex(found.value(0));
}

void SidebarView::setSelection(std::optional<SidebarCategory> category) {
    if (category)
        m_list->setCurrentIndex(itemOf(*category)->index());
    else
        m_list->clearSelection();
}

void SidebarView::setCount(SidebarCategory category, qsizetype count) {
    QStandardItem* const item = itemOf(category);
    // Nothing is shown for nothing.
    const QString badge = count > 0 ? QString::number(count) : QString();
    item->setData(badge, SidebarDelegate::BadgeRole);
    item->setAccessibleText(badge.isEmpty() ? item->text() : item->text() + u", "_s + badge);
}

void SidebarView::render() {
    setCount(SidebarCategory::formulae, manager().formulae->size());
    setCount(SidebarCategory::casks, manager().casks->size());
    setCount(SidebarCategory::updates,
             manager().outdatedFormulae->size() + manager().outdatedCasks->size());
    setCount(SidebarCategory::taps, manager().taps->size());
}

void SidebarView::paintEvent(QPaintEvent*) {
    QPainter(this).fillRect(rect(), Theme::of(this).sidebar);
}
