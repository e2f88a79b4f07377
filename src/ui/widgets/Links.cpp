// SPDX-License-Identifier: MIT
#include "widgets/Links.h"

#include "Addresses.h"
#include "style/Metrics.h"
#include "style/Painting.h"
#include "style/Symbol.h"
#include "style/Theme.h"
#include "style/Typography.h"
#include "widgets/Accessible.h"
#include "widgets/DisplayText.h"

#include <QDesktopServices>
#include <QPainter>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

constexpr int rowWidth = 260;
constexpr int paddingX = 12;
constexpr int paddingY = 8;
constexpr int iconFrame = 20;
constexpr int symbolSize = 18;
constexpr int arrowSize = 12;

} // namespace

bool canOpenAddress(const QString& address) {
    const QUrl url(address, QUrl::StrictMode);
    const bool isOfTheWeb = url.scheme() == "https"_L1 || url.scheme() == "http"_L1;
    return (url.isValid() && isOfTheWeb && !url.host().isEmpty()) || address == Addresses::contact;
}

void openAddress(const QString& address) {
    if (canOpenAddress(address))
        QDesktopServices::openUrl(QUrl(address, QUrl::StrictMode));
}

LinkButton::LinkButton(const QString& text, QString address, QWidget* parent)
    : KeyboardButton(parent), m_address(std::move(address)) {
    Accessible::setRole(this, QAccessible::Link);
    setText(DisplayText::line(text));
    // The toolkit takes an ampersand for the mark of one.
    setShortcut({});
    setAccessibleName(this->text());
    setFont(Typography::font(Typography::body));
    setCursor(Qt::PointingHandCursor);
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    connect(this, &LinkButton::clicked, this, [this] { openAddress(m_address); });
}

QSize LinkButton::sizeHint() const {
    return {Typography::width(font(), text()) + 2 * focusMargin, fontMetrics().height() + 2};
}

QSize LinkButton::minimumSizeHint() const {
    return {0, sizeHint().height()};
}

void LinkButton::resizeEvent(QResizeEvent*) {
    // The whole of what is cut.
    DisplayText::setToolTip(this, width() < sizeHint().width() ? text() : QString());
}

void LinkButton::paintEvent(QPaintEvent*) {
    constexpr double focusRadius = 4;
    const Theme& theme = Theme::of(this);
    QPainter painter(this);
    if (isDown())
        Painting::fillRounded(&painter, rect(), focusRadius, theme.pressed);
    if (Painting::showsFocus(this))
        Painting::drawFocusRing(&painter, rect(), focusRadius, theme);
    QFont shown = font();
    shown.setUnderline(underMouse());
    painter.setFont(shown);
    painter.setPen(theme.accent);
    const QRect area = rect().adjusted(focusMargin, 0, -focusMargin, 0);
    painter.drawText(area, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                     fontMetrics().elidedText(text(), Qt::ElideRight, area.width()));
}

LinkRow::LinkRow(QString symbol, const QString& title, const QString& address, QWidget* parent)
    : KeyboardButton(parent), m_symbol(std::move(symbol)) {
    Accessible::setRole(this, QAccessible::Link);
    setText(title);
    setAccessibleName(title);
    setFont(Typography::font(Typography::body));
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::StrongFocus);
    setFixedSize(sizeHint());
    connect(this, &LinkRow::clicked, this, [address] { openAddress(address); });
}

QSize LinkRow::sizeHint() const {
    return {rowWidth, qMax(fontMetrics().height(), symbolSize) + 2 * paddingY};
}

void LinkRow::paintEvent(QPaintEvent*) {
    constexpr double fillOpacity = 0.04;
    const Theme& theme = Theme::of(this);
    QPainter painter(this);
    Painting::fillRounded(&painter, rect(), Metrics::buttonRadius,
                          withOpacity(theme.text, fillOpacity));
    if (isDown() || underMouse())
        Painting::fillRounded(&painter, rect(), Metrics::buttonRadius,
                              isDown() ? theme.pressed : theme.hover);
    if (Painting::showsFocus(this))
        Painting::drawFocusRing(&painter, rect(), Metrics::buttonRadius, theme);

    const QRect content = rect().adjusted(paddingX, 0, -paddingX, 0);
    QRect icon(0, 0, symbolSize, symbolSize);
    icon.moveCenter(content.center());
    icon.moveLeft(content.left() + (iconFrame - symbolSize) / 2);
    Symbol::paint(&painter, m_symbol, icon, theme.text);
    painter.setFont(font());
    painter.setPen(theme.text);
    painter.drawText(content.adjusted(iconFrame + paddingY, 0, 0, 0),
                     Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, text());
    QRect arrow(0, 0, arrowSize, arrowSize);
    arrow.moveCenter(content.center());
    arrow.moveRight(content.right());
    Symbol::paint(&painter, u"arrow.up.right"_s, arrow, theme.secondaryText);
}
