// SPDX-License-Identifier: MIT
#include "widgets/Labels.h"

#include "style/Typography.h"
#include "widgets/DisplayText.h"

#include <QAction>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QMenu>

PlainLabel::PlainLabel(const QString& text, const QFont& font, QWidget* parent)
    : QLabel(text, parent) {
    setTextFormat(Qt::PlainText);
    setFont(font);
}

void PlainLabel::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy))
        copySelection();
    else
        QLabel::keyPressEvent(event);
}

void PlainLabel::contextMenuEvent(QContextMenuEvent* event) {
    if (!textInteractionFlags().testFlag(Qt::TextSelectableByMouse)) {
        QLabel::contextMenuEvent(event);
        return;
    }
    // The toolkit's own words for its text menus, in whatever language it speaks.
    const auto word = [](const char* text) {
        return QCoreApplication::translate("QWidgetTextControl", text);
    };
    auto* const menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(word("&Copy"), this, &PlainLabel::copySelection)->setEnabled(hasSelectedText());
    menu->addAction(word("Select All"), this,
                    [this] { setSelection(0, static_cast<int>(text().size())); });
    menu->popup(event->globalPos());
}

void PlainLabel::copySelection() const {
    if (hasSelectedText())
        QGuiApplication::clipboard()->setText(selectedForCopy());
}

SecondaryLabel::SecondaryLabel(const QString& text, double size, QWidget* parent)
    : PlainLabel(text, Typography::font(size), parent) {
    // The role that holds the secondary colour in the theme's palette.
    setForegroundRole(QPalette::PlaceholderText);
}

ElidedLabel::ElidedLabel(const QFont& font, QWidget* parent) : PlainLabel({}, font, parent) {}

void ElidedLabel::setFullText(const QString& text) {
    if (text == m_fullText)
        return;
    m_fullText = text;
    setAccessibleName(DisplayText::line(text));
    updateGeometry();
    elide();
}

QSize ElidedLabel::sizeHint() const {
    return {Typography::width(font(), DisplayText::line(m_fullText)), fontMetrics().height()};
}

QSize ElidedLabel::minimumSizeHint() const {
    return {0, fontMetrics().height()};
}

void ElidedLabel::resizeEvent(QResizeEvent* event) {
    QLabel::resizeEvent(event);
    elide();
}

void ElidedLabel::changeEvent(QEvent* event) {
    QLabel::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        elide();
}

void ElidedLabel::elide() {
    const QString line = DisplayText::line(m_fullText);
    const QString shown = fontMetrics().elidedText(line, Qt::ElideRight, width());
    setText(shown);
    DisplayText::setToolTip(this, shown == line ? QString() : m_fullText);
}

QString ElidedLabel::selectedForCopy() const {
    const bool reachesEnd = selectionStart() + selectedText().size() == text().size();
    return hasSelectedText() && reachesEnd ? DisplayText::line(m_fullText).mid(selectionStart())
                                           : selectedText();
}
