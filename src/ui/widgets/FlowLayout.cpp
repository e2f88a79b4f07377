// SPDX-License-Identifier: MIT
#include "widgets/FlowLayout.h"

FlowLayout::FlowLayout(int spacing, QWidget* parent) : QLayout(parent) {
    setContentsMargins(0, 0, 0, 0);
    setSpacing(spacing);
}

FlowLayout::~FlowLayout() = default;

FlowLayout::Arrangement FlowLayout::arrange(int width) const {
    Arrangement arrangement;
    int x = 0;
    int y = 0;
    int lineHeight = 0;
    int widest = 0;
    for (const auto& item : m_items) {
        const QSize size = item->sizeHint();
        if (x > 0 && width >= 0 && x + size.width() > width) {
            y += lineHeight + spacing();
            x = 0;
            lineHeight = 0;
        }
        arrangement.positions.emplace_back(x, y);
        lineHeight = qMax(lineHeight, size.height());
        x += size.width() + spacing();
        widest = qMax(widest, x);
    }
    arrangement.size = {widest, y + lineHeight};
    return arrangement;
}

void FlowLayout::addItem(QLayoutItem* item) {
    m_items.emplace_back(item);
}

int FlowLayout::count() const {
    return static_cast<int>(m_items.size());
}

QLayoutItem* FlowLayout::itemAt(int index) const {
    return index >= 0 && index < count() ? m_items[static_cast<std::size_t>(index)].get() : nullptr;
}

QLayoutItem* FlowLayout::takeAt(int index) {
    if (index < 0 || index >= count())
        return nullptr;
    const auto at = m_items.begin() + index;
    QLayoutItem* const item = at->release();
    m_items.erase(at);
    return item;
}

Qt::Orientations FlowLayout::expandingDirections() const {
    return {};
}

bool FlowLayout::hasHeightForWidth() const {
    return true;
}

int FlowLayout::heightForWidth(int width) const {
    return arrange(width).size.height();
}

QSize FlowLayout::sizeHint() const {
    return arrange(-1).size;
}

QSize FlowLayout::minimumSize() const {
    QSize size;
    for (const auto& item : m_items)
        size = size.expandedTo(item->minimumSize());
    return size;
}

void FlowLayout::setGeometry(const QRect& rect) {
    QLayout::setGeometry(rect);
    const Arrangement arrangement = arrange(rect.width());
    for (std::size_t i = 0; i < m_items.size(); ++i)
        m_items[i]->setGeometry(
            QRect(rect.topLeft() + arrangement.positions[i], m_items[i]->sizeHint()));
}
