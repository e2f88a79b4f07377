// SPDX-License-Identifier: MIT
#include "shell/OperationStrip.h"

#include "L10n.h"
#include "style/Metrics.h"
#include "style/Painting.h"
#include "style/Typography.h"
#include "widgets/Accessible.h"
#include "widgets/Labels.h"
#include "widgets/PushButton.h"
#include "widgets/Sheet.h"

#include <QApplication>
#include <QPainter>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

/// A button that fits into the strip.
class SmallButton final : public PushButton {
public:
    using PushButton::PushButton;

    [[nodiscard]] QSize sizeHint() const override { return PushButton::sizeHint() - QSize(10, 6); }

    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }
};

} // namespace

OperationStrip::OperationStrip(OperationNotice& notice, Place place, QWidget* parent)
    : MessageStrip(u"operation"_s, height, parent),
      m_notice(&notice),
      m_place(place),
      m_reason(new ElidedLabel(Typography::font(textSize))),
      m_timer(new QTimer(this)) {
    m_reason->setObjectName(u"operationReason"_s);
    m_reason->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_reason->setForegroundRole(QPalette::PlaceholderText);
    // It takes what room there is, so that all else keeps its place.
    QSizePolicy policy = m_reason->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    m_reason->setSizePolicy(policy);
    addWidget(m_reason, 1);
    auto* const output = new SmallButton(L10n::output());
    output->setObjectName(u"operationOutput"_s);
    output->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    addWidget(output);
    addCloseButton(u"closeOperation"_s);
    connect(output, &PushButton::clicked, this, &OperationStrip::outputRequested);

    m_timer->setSingleShot(true);
    m_timer->setInterval(successDuration);
    connect(m_timer, &QTimer::timeout, &notice, &OperationNotice::close);
    connect(qApp, &QApplication::focusChanged, this, &OperationStrip::countDown);
    connect(this, &MessageStrip::closeRequested, &notice, &OperationNotice::close);
    connect(&notice, &OperationNotice::changed, this, &OperationStrip::tell);
    tell();
}

QString OperationStrip::reason() const {
    return m_reason->fullText();
}

void OperationStrip::tell() {
    const bool isOpen = m_notice->isOpen();
    if (isOpen) {
        const OperationSummary& summary = *m_notice->last();
        setLook(summary.symbol(), summary.color(),
                summary.succeeded ? &Theme::content : &Theme::operationFailure);
        setMessage(summary.title);
        m_reason->setFullText(summary.reason);
        m_reason->setVisible(!summary.reason.isEmpty());
        // What a sheet covers needn't be said twice.
        if (m_place == Place::Sheet || Sheet::openOver(window()) == nullptr)
            Accessible::announce(this, summary.line());
        else
            setAccessibleName(summary.line());
    }
    setVisible(isOpen);
    countDown();
}

/// A success goes when nobody has looked at it for its time; whoever looks at it, or at a sheet
/// that covers it, has all the time.
void OperationStrip::countDown() {
    if (!m_notice)
        return;
    const QWidget* const focused = QApplication::focusWidget();
    const bool isLookedAt = underMouse() || (focused != nullptr && isAncestorOf(focused)) ||
                            Sheet::openOver(window()) != nullptr;
    const bool goes = m_notice->isOpen() && m_notice->last()->succeeded && !isLookedAt;
    if (!goes)
        m_timer->stop();
    else if (!m_timer->isActive())
        m_timer->start();
}

void OperationStrip::enterEvent(QEnterEvent* event) {
    MessageStrip::enterEvent(event);
    countDown();
}

void OperationStrip::leaveEvent(QEvent* event) {
    MessageStrip::leaveEvent(event);
    countDown();
}

void OperationStrip::paintEvent(QPaintEvent* event) {
    if (m_place == Place::Column) {
        MessageStrip::paintEvent(event);
        return;
    }
    QPainter painter(this);
    Painting::fillRounded(&painter, rect(), Metrics::rowRadius, fill());
}
