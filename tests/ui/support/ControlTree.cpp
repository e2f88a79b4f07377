// SPDX-License-Identifier: MIT
#include "ControlTree.h"

#include "shell/OperationOverlay.h"
#include "widgets/DetailBadge.h"
#include "widgets/Labels.h"
#include "widgets/Links.h"
#include "widgets/Sheet.h"
#include "widgets/Spinner.h"
#include "widgets/SymbolLabel.h"

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QAccessible>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QScrollArea>
#include <QStyle>
#include <QStyleOptionFrame>
#include <QTextLayout>

using namespace Qt::StringLiterals;

namespace {

QList<QWidget*> visibleBelow(const QWidget& root) {
    QList<QWidget*> widgets;
    for (QWidget* const widget : root.findChildren<QWidget*>()) {
        if (widget->isVisible() && widget->window() == root.window())
            widgets.append(widget);
    }
    return widgets;
}

/// What a user sees as one thing.
bool isControl(const QWidget* widget) {
    return qobject_cast<const QLabel*>(widget) || qobject_cast<const QAbstractButton*>(widget) ||
           qobject_cast<const QLineEdit*>(widget) || qobject_cast<const SymbolLabel*>(widget) ||
           qobject_cast<const Spinner*>(widget) || qobject_cast<const DetailBadge*>(widget) ||
           (qobject_cast<const QAbstractScrollArea*>(widget) &&
            !qobject_cast<const QScrollArea*>(widget));
}

/// Lies over other things on purpose: a sheet, the overlay, and what is in them.
bool floats(const QWidget* widget) {
    for (const QWidget* up = widget; up != nullptr; up = up->parentWidget()) {
        if (qobject_cast<const Sheet*>(up) || qobject_cast<const OperationOverlay*>(up))
            return true;
    }
    return false;
}

QString nameOf(const QWidget* widget) {
    QString text;
    if (const auto* label = qobject_cast<const QLabel*>(widget))
        text = label->text();
    else if (const auto* button = qobject_cast<const QAbstractButton*>(widget))
        text = button->text();
    const QRect place(widget->mapTo(widget->window(), QPoint(0, 0)), widget->size());
    return u"%1 \"%2\" %3 at %4,%5 %6x%7"_s.arg(
        QString::fromLatin1(widget->metaObject()->className()), widget->objectName(), text.left(60),
        QString::number(place.x()), QString::number(place.y()), QString::number(place.width()),
        QString::number(place.height()));
}

/// The part of a list that has rows.
QRect rowsOf(const QListView& list) {
    QRect rows;
    for (int row = 0; row < list.model()->rowCount(); ++row)
        rows |= list.visualRect(list.model()->index(row, 0));
    return rows.translated(list.viewport()->pos());
}

/// Where the widget can be seen: its place in the window without what its parents cut off.
QRect shownPlace(const QWidget* widget) {
    const QWidget* const window = widget->window();
    const auto* const list = qobject_cast<const QListView*>(widget);
    const QRect content = list != nullptr ? widget->rect() & rowsOf(*list) : widget->rect();
    QRect place(widget->mapTo(window, content.topLeft()), content.size());
    for (const QWidget* up = widget->parentWidget(); up != nullptr && up != window;
         up = up->parentWidget())
        place &= QRect(up->mapTo(window, QPoint(0, 0)), up->size());
    return place;
}

/// Whether all that is drawn of one line of text is within the label. Its lines may be higher:
/// fonts for other scripts leave much room above and below their characters.
bool hasRoomForInk(const QLabel& label) {
    QTextLayout layout(label.text(), label.font());
    layout.beginLayout();
    const QTextLine line = layout.createLine();
    layout.endLayout();
    const QRect ink = label.fontMetrics().tightBoundingRect(label.text());
    const QRect room = label.contentsRect();
    const double top = (room.height() - line.height()) / 2 + line.ascent() + ink.top();
    // The ink's bounds are rounded outwards.
    constexpr double rounding = 1;
    return line.naturalTextWidth() <= room.width() + rounding && top >= -rounding &&
           top + ink.height() <= room.height() + rounding;
}

int widthForText(const QLineEdit& field) {
    // The toolkit keeps two pixels free on either side.
    constexpr int innerMargins = 2 * 2;
    QStyleOptionFrame option;
    option.initFrom(&field);
    option.lineWidth = field.style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &option, &field);
    return field.style()->subElementRect(QStyle::SE_LineEditContents, &option, &field).width() -
           field.textMargins().left() - field.textMargins().right() - innerMargins;
}

void collectSpoken(const QAccessibleInterface* interface, QStringList* texts) {
    if (interface == nullptr)
        return;
    for (const QAccessible::Text kind :
         {QAccessible::Name, QAccessible::Description, QAccessible::Value, QAccessible::Help}) {
        if (const QString text = interface->text(kind); !text.isEmpty())
            texts->append(text);
    }
    for (int i = 0; i < interface->childCount(); ++i)
        collectSpoken(interface->child(i), texts);
}

bool hasRoomForText(const QLabel& label) {
    if (!label.wordWrap() && !label.text().contains(u'\n'))
        return hasRoomForInk(label);
    const int width = label.wordWrap() ? 0 : label.minimumSizeHint().width();
    const int height =
        label.wordWrap() ? label.heightForWidth(label.width()) : label.minimumSizeHint().height();
    return width <= label.width() && height <= label.height();
}

} // namespace

QString ControlTree::overlaps(const QWidget& root) {
    QList<QWidget*> controls;
    for (QWidget* const widget : visibleBelow(root)) {
        if (isControl(widget))
            controls.append(widget);
    }
    QStringList found;
    for (qsizetype i = 0; i < controls.size(); ++i) {
        for (qsizetype j = i + 1; j < controls.size(); ++j) {
            const QWidget* const a = controls.at(i);
            const QWidget* const b = controls.at(j);
            const bool areNested = a->isAncestorOf(b) || b->isAncestorOf(a);
            if (!areNested && floats(a) == floats(b) && shownPlace(a).intersects(shownPlace(b)))
                found.append(nameOf(a) + u" and "_s + nameOf(b));
        }
    }
    return found.join(u"; "_s);
}

QString ControlTree::sticksOut(const QWidget& root) {
    QStringList found;
    for (const QWidget* const widget : visibleBelow(root)) {
        const QWidget* const parent = widget->parentWidget();
        const auto* const area = qobject_cast<const QScrollArea*>(
            parent->parentWidget() != nullptr ? parent->parentWidget() : parent);
        // What scrolls is taller than the room it has, but never wider.
        const bool scrolls = area != nullptr && area->widget() == widget;
        const QRect room =
            scrolls ? parent->rect().adjusted(0, -1'000'000, 0, 1'000'000) : parent->rect();
        if (!room.contains(widget->geometry()) && !widget->geometry().isEmpty())
            found.append(nameOf(widget));
    }
    return found.join(u"; "_s);
}

QString ControlTree::clippedTexts(const QWidget& root) {
    QStringList found;
    for (const QWidget* const widget : visibleBelow(root)) {
        QSize needed;
        if (qobject_cast<const ElidedLabel*>(widget) || qobject_cast<const SymbolLabel*>(widget))
            continue;
        if (const auto* label = qobject_cast<const QLabel*>(widget)) {
            if (!hasRoomForText(*label))
                found.append(nameOf(widget));
        } else if (const auto* link = qobject_cast<const LinkRow*>(widget))
            needed = {link->fontMetrics().horizontalAdvance(link->text()) + 2 * 12 + 2 * 20 + 2 * 8,
                      link->fontMetrics().height()};
        else if (const auto* badge = qobject_cast<const DetailBadge*>(widget))
            needed = badge->sizeHint();
        else if (const auto* button = qobject_cast<const QAbstractButton*>(widget);
                 button != nullptr && !button->text().isEmpty())
            needed = button->sizeHint();
        else if (const auto* field = qobject_cast<const QLineEdit*>(widget))
            needed = {field->width() +
                          field->fontMetrics().horizontalAdvance(field->placeholderText()) -
                          widthForText(*field),
                      field->fontMetrics().height()};
        if (needed.width() > widget->width() || needed.height() > widget->height())
            found.append(nameOf(widget));
    }
    return found.join(u"; "_s);
}

QString ControlTree::withoutName(const QWidget& root) {
    QStringList found;
    for (QWidget* const widget : visibleBelow(root)) {
        if (widget->focusPolicy() == Qt::NoFocus)
            continue;
        const QAccessibleInterface* const interface = QAccessible::queryAccessibleInterface(widget);
        if (interface == nullptr || interface->text(QAccessible::Name).trimmed().isEmpty())
            found.append(nameOf(widget));
    }
    return found.join(u"; "_s);
}

QStringList ControlTree::spoken(QWidget& root) {
    QStringList texts;
    collectSpoken(QAccessible::queryAccessibleInterface(&root), &texts);
    return texts;
}
