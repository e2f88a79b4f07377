// SPDX-License-Identifier: MIT
#include "SearchField.h"

#include "Metrics.h"
#include "Symbol.h"
#include "Theme.h"
#include "Typography.h"

#include <QKeyEvent>
#include <QPainter>

using namespace Qt::StringLiterals;

namespace {

constexpr int iconSize = 14;
constexpr int iconLeft = 9;

} // namespace

SearchField::SearchField(const QString& placeholder, QWidget* parent) : QLineEdit(parent) {
    constexpr int textGap = 5;
    setObjectName(u"searchField"_s);
    setPlaceholderText(placeholder);
    setAccessibleName(placeholder);
    setFont(Typography::font(Typography::body));
    setFixedSize(Metrics::searchFieldWidth, Metrics::controlHeight);
    setTextMargins(iconLeft + iconSize + textGap - 2, 0, 2, 0);
    setClearButtonEnabled(false);
}

void SearchField::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && !text().isEmpty()) {
        clear();
        return;
    }
    QLineEdit::keyPressEvent(event);
}

void SearchField::paintEvent(QPaintEvent* event) {
    QLineEdit::paintEvent(event);
    QPainter painter(this);
    const QRect icon(iconLeft, (height() - iconSize) / 2, iconSize, iconSize);
    Symbol::paint(&painter, u"magnifyingglass"_s, icon, Theme::of(this).secondaryText);
}
