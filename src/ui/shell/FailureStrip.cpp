// SPDX-License-Identifier: MIT
#include "shell/FailureStrip.h"

#include "BrewManager.h"
#include "L10n.h"
#include "style/Metrics.h"
#include "style/Painting.h"
#include "style/Theme.h"
#include "style/Typography.h"
#include "widgets/ElidedLabel.h"
#include "widgets/IconButton.h"
#include "widgets/SymbolLabel.h"

#include <QHBoxLayout>
#include <QPainter>

using namespace Qt::StringLiterals;

FailureStrip::FailureStrip(BrewManager& manager, QWidget* parent)
    : View(manager, parent),
      m_message(new ElidedLabel(this)),
      m_close(new IconButton(u"xmark"_s, L10n::close(), this)),
      m_lastMessage(*manager.errorMessage) {
    constexpr int height = 31;
    constexpr int iconSize = 16;
    constexpr int closeSize = 24;
    setObjectName(u"failureStrip"_s);
    setFixedHeight(height);
    m_message->setFont(Typography::font(12));
    m_message->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_message->setObjectName(u"failureMessage"_s);
    m_close->setFixedSize(closeSize, closeSize);
    m_close->setObjectName(u"closeFailure"_s);

    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(Metrics::contentMargin, 0, Metrics::rowInset, 1);
    layout->setSpacing(Metrics::rowInset);
    layout->addWidget(new SymbolLabel(u"exclamationmark.triangle"_s, iconSize,
                                      SymbolLabel::Tone::Outdated, this));
    layout->addWidget(m_message, 1);
    layout->addWidget(m_close);

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
