// SPDX-License-Identifier: MIT
#include "widgets/Sheet.h"

#include "style/Metrics.h"
#include "style/Painting.h"
#include "style/Theme.h"
#include "widgets/Accessible.h"

#include <QApplication>
#include <QGraphicsOpacityEffect>
#include <QKeyEvent>
#include <QPainter>
#include <QPropertyAnimation>
#include <QStyle>
#include <QTimer>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// The panel clips its children to its rounded corners by painting nothing outside of them.
class Panel final : public QWidget {
public:
    Panel(Sheet::Surface surface, QWidget* parent) : QWidget(parent), m_surface(surface) {}

protected:
    void paintEvent(QPaintEvent*) override {
        const Theme& theme = Theme::of(this);
        QPainter painter(this);
        if (m_surface == Sheet::Surface::Card)
            Painting::drawBordered(&painter, rect(), Metrics::sheetRadius, theme.card,
                                   theme.fieldBorder);
        else
            Painting::fillRounded(&painter, rect(), Metrics::sheetRadius, theme.content);
    }

private:
    Sheet::Surface m_surface;
};

bool takesKeyboard(const QWidget* widget) {
    return (widget->focusPolicy() & Qt::TabFocus) == Qt::TabFocus && widget->isEnabled() &&
           widget->isVisible();
}

} // namespace

Sheet::Sheet(QWidget* window, QSize preferred, QSize smallest, Surface surface)
    : QWidget(window),
      m_preferred(preferred),
      m_smallest(smallest),
      m_surface(surface),
      m_panel(new Panel(surface, this)) {
    Accessible::setRole(this,
                        surface == Surface::Card ? QAccessible::AlertMessage : QAccessible::Dialog);
    setObjectName(u"sheet"_s);
    setFocusPolicy(Qt::NoFocus);
    window->installEventFilter(this);
    hide();
}

QList<Sheet*> Sheet::allOver(const QWidget* window) {
    // Children that are raised come last.
    QList<Sheet*> sheets = window->findChildren<Sheet*>(Qt::FindDirectChildrenOnly);
    sheets.removeIf([](const Sheet* sheet) { return !sheet->isVisible(); });
    return sheets;
}

Sheet* Sheet::openOver(const QWidget* window) {
    const QList<Sheet*> sheets = allOver(window);
    return sheets.isEmpty() ? nullptr : sheets.last();
}

void Sheet::setNotice(QWidget* notice) {
    if (m_notice != nullptr) {
        // It may be the one that asked.
        m_notice->hide();
        m_notice->deleteLater();
    }
    m_notice = notice;
    if (m_notice == nullptr)
        return;
    m_notice->setParent(this);
    m_notice->show();
    place();
}

void Sheet::present(QWidget* focus) {
    m_focusBefore = window()->focusWidget();
    setGeometry(parentWidget()->rect());
    // While nothing of it can be seen, the window below would be painted for nothing.
    setUpdatesEnabled(false);
    show();
    raise();
    place();
    QWidget* const first = focus != nullptr ? focus : nextFocus(m_panel, true);
    if (first != nullptr)
        first->setFocus(Qt::OtherFocusReason);
    fade();
    refusePresses();
}

/// The second press of the double click that opened the sheet was meant for what it covers now.
void Sheet::refusePresses() {
    m_panel->setAttribute(Qt::WA_TransparentForMouseEvents);
    QTimer::singleShot(QApplication::doubleClickInterval(), m_panel, [panel = m_panel] {
        panel->setAttribute(Qt::WA_TransparentForMouseEvents, false);
    });
}

/// The next one over the same window, or null.
Sheet* Sheet::above() const {
    const QList<Sheet*> sheets = allOver(parentWidget());
    const qsizetype next = sheets.indexOf(this) + 1;
    return next > 0 && next < sheets.size() ? sheets.at(next) : nullptr;
}

void Sheet::giveFocus(QWidget* widget) {
    if (Sheet* const sheet = above())
        sheet->m_focusBefore = widget;
    else
        widget->setFocus(Qt::OtherFocusReason);
}

void Sheet::dismiss() {
    Sheet* const sheet = above();
    hide();
    deleteLater();
    if (sheet != nullptr) {
        sheet->m_focusBefore = m_focusBefore;
        return;
    }
    // What had the focus may be hidden by now, but something stands near by.
    QWidget* next = m_focusBefore;
    while (next != nullptr && !takesKeyboard(next)) {
        next = next->nextInFocusChain();
        if (next == m_focusBefore)
            next = nullptr;
    }
    if (next != nullptr)
        next->setFocus(Qt::OtherFocusReason);
}

void Sheet::fade() {
    // Zero in a style without motion. Fusion moves whatever the desktop asks for.
    const int duration = style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, this);
    if (duration <= 0) {
        setUpdatesEnabled(true);
        return;
    }
    auto* const effect = new QGraphicsOpacityEffect(this);
    effect->setOpacity(0);
    setGraphicsEffect(effect);
    auto* const animation = new QPropertyAnimation(effect, "opacity", effect);
    animation->setDuration(duration);
    animation->setStartValue(0.0);
    animation->setEndValue(1.0);
    connect(effect, &QGraphicsOpacityEffect::opacityChanged, this,
            [this] { setUpdatesEnabled(true); });
    connect(animation, &QPropertyAnimation::finished, this, [this] { setGraphicsEffect(nullptr); });
    animation->start();
}

QSize Sheet::wantedSize() const {
    if (!m_preferred.isValid())
        return m_panel->sizeHint();
    const QSize grown(m_preferred.width() * width() / Metrics::windowWidth,
                      m_preferred.height() * height() / Metrics::windowHeight);
    return grown.boundedTo({Metrics::widestSheet, QWIDGETSIZE_MAX}).expandedTo(m_preferred);
}

void Sheet::place() {
    constexpr int margin = 24;
    const QSize room = size() - QSize(2 * margin, 2 * margin);
    QRect panel(QPoint(), wantedSize().boundedTo(room).expandedTo(m_smallest));
    panel.moveCenter(rect().center());
    m_panel->setGeometry(panel);
    if (m_notice != nullptr) {
        constexpr int distance = 12;
        constexpr int widest = 560;
        QRect notice(0, 0, std::min(room.width(), widest), m_notice->height());
        notice.moveCenter({panel.center().x(), 0});
        notice.moveTop(std::max(0, panel.top() - distance - notice.height()));
        m_notice->setGeometry(notice);
        m_notice->raise();
    }
    update();
}

void Sheet::paintEvent(QPaintEvent*) {
    constexpr double shadowRadius = 18;
    const Theme& theme = Theme::of(this);
    QPainter painter(this);
    painter.fillRect(rect(), m_surface == Surface::Card ? theme.cardScrim : theme.scrim);
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

bool Sheet::isInReach(const QWidget* widget) const {
    return m_panel->isAncestorOf(widget) || (m_notice != nullptr && m_notice->isAncestorOf(widget));
}

QWidget* Sheet::nextFocus(QWidget* from, bool forward) const {
    QWidget* widget = from;
    do {
        widget = forward ? widget->nextInFocusChain() : widget->previousInFocusChain();
        if (isInReach(widget) && takesKeyboard(widget))
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
