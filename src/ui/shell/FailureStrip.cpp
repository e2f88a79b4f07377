// SPDX-License-Identifier: MIT
#include "shell/FailureStrip.h"

#include "BrewManager.h"
#include "L10n.h"
#include "style/Metrics.h"
#include "style/Painting.h"
#include "style/Theme.h"
#include "style/Typography.h"
#include "widgets/Boxes.h"
#include "widgets/IconButton.h"
#include "widgets/Labels.h"
#include "widgets/SymbolLabel.h"

#include <QPainter>

using namespace Qt::StringLiterals;

FailureStrip::FailureStrip(BrewManager& manager, QWidget* parent)
    : View(manager, parent),
      m_message(new ElidedLabel(Typography::font(12), this)),
      m_close(new IconButton(u"xmark"_s, L10n::close(), this)),
      m_lastMessage(*manager.errorMessage) {
    constexpr int height = 31;
    constexpr int iconSize = 16;
    constexpr int closeSize = 24;
    setObjectName(u"failureStrip"_s);
    setFixedHeight(height);
    m_message->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_message->setObjectName(u"failureMessage"_s);
    m_close->setFixedSize(closeSize, closeSize);
    m_close->setObjectName(u"closeFailure"_s);

    auto* const icon = new SymbolLabel(u"exclamationmark.triangle"_s, iconSize, &Theme::outdated);
    setLayout(Boxes::row(Metrics::rowInset, {icon, {m_message, 1}, m_close},
                         {Metrics::contentMargin, 0, Metrics::rowInset, 1}));

    connect(m_close, &IconButton::clicked, this, [this] { setClosed(true); });
    manager.errorMessage.subscribe(this, [this](const std::optional<QString>& message) {
        if (message != std::exchange(m_lastMessage, message))
            m_isClosed = false;
    });
    setVisible(m_lastMessage.has_value());
}

void FailureStrip::setClosed(bool isClosed) {
    m_isClosed = isClosed;
    scheduleRender();
}

QString FailureStrip::message() const {
    return m_message->fullText();
}

void FailureStrip::render() {
    m_message->setFullText(manager().errorMessage->value_or(QString()));
    setVisible(manager().errorMessage->has_value() && !m_isClosed);
}

void FailureStrip::paintEvent(QPaintEvent*) {
    const Theme& theme = Theme::of(this);
    QPainter painter(this);
    painter.fillRect(rect(), theme.failure);
    Painting::drawHairline(&painter, rect(), theme);
}
