// SPDX-License-Identifier: MIT
#include "widgets/Sheet.h"

#include "style/Metrics.h"
#include "style/Painting.h"
#include "style/Theme.h"

#include <QApplication>
#include <QGraphicsOpacityEffect>
#include <QKeyEvent>
#include <QPainter>
#include <QPropertyAnimation>
#include <QStyle>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// The panel clips its children to its rounded corners by painting nothing outside of them.
class Panel final : public QWidget {
public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        Painting::fillRounded(&painter, rect(), Metrics::sheetRadius, Theme::of(this).content);
    }
};

} // namespace

Sheet::Sheet(QWidget* window, QSize preferred, QSize smallest)
    : QWidget(window), m_preferred(preferred), m_smallest(smallest), m_panel(new Panel(this)) {
    setObjectName(u"sheet"_s);
    setFocusPolicy(Qt::NoFocus);
    window->installEventFilter(this);
    hide();
}

bool Sheet::isOpenOver(const QWidget* window) {
    return std::ranges::any_of(window->findChildren<Sheet*>(Qt::FindDirectChildrenOnly),
                               [](const Sheet* sheet) { return sheet->isVisible(); });
}

void Sheet::present(QWidget* focus) {
    m_focusBefore = window()->focusWidget();
    setGeometry(parentWidget()->rect());
    show();
    raise();
    place();
    QWidget* const first = focus != nullptr ? focus : nextFocus(m_panel, true);
    if (first != nullptr)
        first->setFocus(Qt::OtherFocusReason);
    fade();
}

void Sheet::dismiss() {
    hide();
    if (m_focusBefore)
        m_focusBefore->setFocus(Qt::OtherFocusReason);
    deleteLater();
}

void Sheet::fade() {
    // Zero in a style without motion. Fusion moves whatever the desktop asks for.
    const int duration = style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, this);
    if (duration <= 0)
        return;
    auto* const effect = new QGraphicsOpacityEffect(this);
    effect->setOpacity(0);
    setGraphicsEffect(effect);
    auto* const animation = new QPropertyAnimation(effect, "opacity", effect);
    animation->setDuration(duration);
    animation->setStartValue(0.0);
    animation->setEndValue(1.0);
    connect(animation, &QPropertyAnimation::finished, this, [this] { setGraphicsEffect(nullptr); });
    animation->start();
}

void Sheet::place() {
    constexpr int margin = 24;
    const QSize room = size() - QSize(2 * margin, 2 * margin);
    const QSize wanted = m_preferred.isValid() ? m_preferred : m_panel->sizeHint();
    QRect panel(QPoint(), wanted.boundedTo(room).expandedTo(m_smallest));
    panel.moveCenter(rect().center());
    m_panel->setGeometry(panel);
    update();
}

void Sheet::paintEvent(QPaintEvent*) {
    constexpr double shadowRadius = 18;
    const Theme& theme = Theme::of(this);
    QPainter painter(this);
    painter.fillRect(rect(), theme.scrim);
    Painting::drawShadow(&painter, m_panel->geometry(), Metrics::sheetRadius, shadowRadius,
                         theme.sheetShadow);
}

void Sheet::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        Q_EMIT cancelRequested();
    else
        QWidget::keyPressEvent(event);
}

void Sheet::mousePressEvent(QMouseEvent* event) {
    // What is behind the sheet is out of reach.
    event->accept();
}

bool Sheet::focusNextPrevChild(bool next) {
    QWidget* const focused = window()->focusWidget();
    if (QWidget* const target = nextFocus(focused != nullptr ? focused : m_panel, next)) {
        target->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
        return true;
    }
    return false;
}

QWidget* Sheet::nextFocus(QWidget* from, bool forward) const {
    QWidget* widget = from;
    do {
        widget = forward ? widget->nextInFocusChain() : widget->previousInFocusChain();
        const bool takesTab = (widget->focusPolicy() & Qt::TabFocus) == Qt::TabFocus;
        if (takesTab && m_panel->isAncestorOf(widget) && widget->isEnabled() &&
            widget->isVisibleTo(m_panel))
            return widget;
    } while (widget != from);
    return nullptr;
}

bool Sheet::eventFilter(QObject* watched, QEvent* event) {
    if (watched == parentWidget() && event->type() == QEvent::Resize) {
        setGeometry(parentWidget()->rect());
        place();
    }
    return QWidget::eventFilter(watched, event);
}
