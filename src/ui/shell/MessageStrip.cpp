// SPDX-License-Identifier: MIT
#include "shell/MessageStrip.h"

#include "L10n.h"
#include "style/Metrics.h"
#include "style/Painting.h"
#include "style/Typography.h"
#include "widgets/Accessible.h"
#include "widgets/Boxes.h"
#include "widgets/IconButton.h"
#include "widgets/Labels.h"
#include "widgets/SymbolLabel.h"

#include <QPainter>

using namespace Qt::StringLiterals;

namespace {

constexpr int iconSize = 16;

} // namespace

MessageStrip::MessageStrip(const QString& subject, int height, QWidget* parent)
    : QWidget(parent),
      m_symbol(new SymbolLabel(QString(), iconSize, &Theme::text)),
      m_message(new ElidedLabel(Typography::font(textSize))) {
    Accessible::setRole(this, QAccessible::Notification);
    setObjectName(subject + u"Strip"_s);
    setFixedHeight(height);
    m_message->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_message->setObjectName(subject + u"Message"_s);
    m_layout = Boxes::row(Metrics::rowInset, {m_symbol, m_message},
                          {Metrics::contentMargin, 0, Metrics::rowInset, 1});
    setLayout(m_layout);
}

QString MessageStrip::message() const {
    return m_message->fullText();
}

void MessageStrip::setMessage(const QString& message) {
    m_message->setFullText(message);
}

void MessageStrip::setLook(const QString& symbol, ThemeColor symbolColor, ThemeColor fill) {
    m_symbol->setSymbol(symbol, symbolColor);
    m_fill = fill;
    update();
}

void MessageStrip::addWidget(QWidget* widget, int stretch) {
    m_layout->addWidget(widget, stretch);
}

void MessageStrip::addCloseButton(const QString& name) {
    constexpr int size = 24;
    auto* const close = new IconButton(u"xmark"_s, L10n::close());
    close->setFixedSize(size, size);
    close->setObjectName(name);
    connect(close, &IconButton::clicked, this, &MessageStrip::closeRequested);
    addWidget(close);
}

void MessageStrip::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), fill());
    Painting::drawHairline(&painter, rect(), Theme::of(this));
}
