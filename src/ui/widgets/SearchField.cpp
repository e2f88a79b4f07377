// SPDX-License-Identifier: MIT
#include "widgets/SearchField.h"

#include "style/Metrics.h"
#include "style/Symbol.h"
#include "style/Theme.h"
#include "style/Typography.h"

#include <QKeyEvent>
#include <QPainter>

using namespace Qt::StringLiterals;

namespace {

constexpr int iconSize = 14;
constexpr int iconLeft = 9;

} // namespace

SearchField::SearchField(const QString& placeholder, QWidget* parent)
    : TextField(placeholder, parent) {
    constexpr int textGap = 5;
    constexpr int leading = iconLeft + iconSize + textGap - 2;
    constexpr int trailing = 2;
    // What the line edit keeps free itself, on both sides together.
    constexpr int innerMargins = 6;
    setObjectName(u"searchField"_s);
    setPlaceholderText(placeholder);
    setFont(Typography::font(Typography::body));
    // Wide fonts and long words may need more than the usual width.
    const int needed = leading + Typography::width(font(), placeholder) + trailing + innerMargins;
    setFixedSize(qMax(Metrics::searchFieldWidth, needed), Metrics::controlHeight);
    setMargins(leading, trailing);
}

void SearchField::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && !text().isEmpty()) {
        clear();
        return;
    }
    if (event->key() == Qt::Key_Down) {
        Q_EMIT leftDownwards();
        return;
    }
    TextField::keyPressEvent(event);
}

void SearchField::paintEvent(QPaintEvent* event) {
    TextField::paintEvent(event);
    QPainter painter(this);
    const QRect icon(iconLeft, (height() - iconSize) / 2, iconSize, iconSize);
    Symbol::paint(&painter, u"magnifyingglass"_s, icon, Theme::of(this).secondaryText);
}
