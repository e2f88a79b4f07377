// SPDX-License-Identifier: MIT
#include "style/LumoraStyle.h"

#include "style/MenuLook.h"
#include "style/Metrics.h"
#include "style/Painting.h"
#include "style/Theme.h"
#include "style/Typography.h"

#include <QGuiApplication>
#include <QMenu>
#include <QPainter>
#include <QPushButton>
#include <QStyleFactory>
#include <QStyleOption>

using namespace Qt::StringLiterals;

namespace {

using Prominence = LumoraStyle::Prominence;

constexpr const char* prominenceProperty = "lumoraProminence";

constexpr int scrollBarExtent = 12;
constexpr int scrollBarThumb = 6;
constexpr int prominentHeight = 37;
constexpr int iconSpacing = 4;

Prominence prominenceOf(const QWidget* widget) {
    const QVariant value = widget != nullptr ? widget->property(prominenceProperty) : QVariant();
    return value.isValid() ? static_cast<Prominence>(value.toInt()) : Prominence::Usual;
}

int paddingOf(Prominence prominence) {
    switch (prominence) {
    case Prominence::Compact:
        return 9;
    case Prominence::Prominent:
        return 22;
    case Prominence::Usual:
    case Prominence::Destructive:
        break;
    }
    return 14;
}

/// Whether a window's corners may be transparent: an X11 display need not be able to, and shows
/// them black then.
bool showsTransparency() {
    return QGuiApplication::platformName() == "wayland"_L1;
}

} // namespace

LumoraStyle::LumoraStyle() : QProxyStyle(QStyleFactory::create(u"Fusion"_s)) {}

void LumoraStyle::setProminence(QPushButton* button, Prominence prominence) {
    constexpr double prominentSize = 14;
    button->setProperty(prominenceProperty, static_cast<int>(prominence));
    if (prominence == Prominence::Prominent)
        button->setFont(Typography::font(prominentSize, QFont::Medium));
}

void LumoraStyle::polish(QWidget* widget) {
    if (showsTransparency() && qobject_cast<QMenu*>(widget) != nullptr)
        widget->setAttribute(Qt::WA_TranslucentBackground);
    QProxyStyle::polish(widget);
}

void LumoraStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                              const QWidget* widget) const {
    if (element == CE_PushButton) {
        drawPushButton(option, painter, widget);
    } else if (element == CE_MenuItem) {
        if (const auto* const entry = qstyleoption_cast<const QStyleOptionMenuItem*>(option)) {
            painter->save();
            const bool underlines = proxy()->styleHint(SH_UnderlineShortcut, option, widget) != 0;
            MenuLook::paintEntry(painter, *entry,
                                 underlines ? Qt::TextShowMnemonic : Qt::TextHideMnemonic);
            painter->restore();
        }
    } else if (element == CE_MenuEmptyArea) {
        // The panel is there already.
    } else if (element == CE_Splitter) {
        const Theme& theme = Theme::of(option->palette);
        painter->fillRect(option->rect, theme.sidebar);
        painter->fillRect(option->rect, theme.hairline);
    } else {
        QProxyStyle::drawControl(element, option, painter, widget);
    }
}

void LumoraStyle::drawPushButton(const QStyleOption* option, QPainter* painter,
                                 const QWidget* widget) const {
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
    if (button == nullptr)
        return;
    const Theme& theme = Theme::of(option->palette);
    const bool isEnabled = option->state.testFlag(State_Enabled);
    const bool destructive = prominenceOf(widget) == Prominence::Destructive;
    const bool prominent = prominenceOf(widget) == Prominence::Prominent ||
                           button->features.testFlag(QStyleOptionButton::DefaultButton);
    const bool isFilled = prominent || destructive;
    const QColor& onFill = destructive ? theme.onDestructive : theme.onAccent;
    painter->save();
    Painting::drawButton(painter, option->rect, theme,
                         {.isEnabled = isEnabled,
                          .isHovered = option->state.testFlag(State_MouseOver),
                          .isPressed = option->state.testFlag(State_Sunken),
                          .isProminent = prominent,
                          .isDestructive = destructive});
    if (option->state.testFlag(State_HasFocus) &&
        option->state.testFlag(State_KeyboardFocusChange)) {
        if (isFilled)
            Painting::drawFocusRingWithin(painter, option->rect, Metrics::rowRadius, onFill);
        else
            Painting::drawFocusRing(painter, option->rect, Metrics::buttonRadius, theme);
    }

    const int textWidth = option->fontMetrics.size(Qt::TextShowMnemonic, button->text).width();
    const int iconWidth = button->icon.isNull() ? 0 : button->iconSize.width() + iconSpacing;
    QRect content(0, 0, iconWidth + textWidth, option->rect.height());
    content.moveCenter(option->rect.center());
    if (iconWidth > 0) {
        QRect icon(QPoint(), button->iconSize);
        icon.moveCenter(content.center());
        icon.moveLeft(content.left());
        button->icon.paint(painter, icon, Qt::AlignCenter,
                           isEnabled ? QIcon::Normal : QIcon::Disabled);
    }
    QPalette palette = option->palette;
    if (isFilled)
        palette.setColor(QPalette::ButtonText, onFill);
    drawItemText(painter, content.adjusted(iconWidth, 0, 1, 0),
                 Qt::AlignLeft | Qt::AlignVCenter | Qt::TextHideMnemonic, palette, isEnabled,
                 button->text, QPalette::ButtonText);
    painter->restore();
}

void LumoraStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                                QPainter* painter, const QWidget* widget) const {
    const Theme& theme = Theme::of(option->palette);
    painter->save();
    switch (element) {
    case PE_PanelLineEdit:
    case PE_FrameLineEdit:
        Painting::drawBordered(painter, option->rect, Metrics::controlRadius, theme.field,
                               theme.fieldBorder);
        if (option->state.testFlag(State_HasFocus))
            Painting::drawFocusRing(painter, option->rect, Metrics::controlRadius, theme);
        break;
    case PE_PanelMenu:
        MenuLook::paintPanel(painter, *option);
        break;
    case PE_FrameMenu:
        // Part of the panel.
        break;
    case PE_FrameFocusRect:
        Painting::drawFocusRing(painter, option->rect, Metrics::buttonRadius, theme);
        break;
    default:
        painter->restore();
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        return;
    }
    painter->restore();
}

void LumoraStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                     QPainter* painter, const QWidget* widget) const {
    if (control == CC_ScrollBar) {
        drawScrollBar(subControlRect(CC_ScrollBar, option, SC_ScrollBarSlider, widget), option,
                      painter);
        return;
    }
    QProxyStyle::drawComplexControl(control, option, painter, widget);
}

void LumoraStyle::drawScrollBar(const QRect& slider, const QStyleOption* option,
                                QPainter* painter) {
    const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
    if (bar == nullptr || bar->maximum <= bar->minimum)
        return;
    constexpr int margin = (scrollBarExtent - scrollBarThumb) / 2;
    const bool isActive = (option->state & (State_MouseOver | State_Sunken)) != State_None;
    const QRectF thumb = bar->orientation == Qt::Vertical ? slider.adjusted(margin, 2, -margin, -2)
                                                          : slider.adjusted(2, margin, -2, -margin);
    painter->save();
    Painting::fillRounded(
        painter, thumb, scrollBarThumb / 2.0,
        withOpacity(Theme::of(option->palette).secondaryText, isActive ? 0.65 : 0.35));
    painter->restore();
}

QRect LumoraStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option,
                                  SubControl subControl, const QWidget* widget) const {
    const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
    if (control != CC_ScrollBar || bar == nullptr)
        return QProxyStyle::subControlRect(control, option, subControl, widget);

    // No arrow buttons: the groove is all there is, and the slider moves in all of it.
    const bool isVertical = bar->orientation == Qt::Vertical;
    const int length = isVertical ? bar->rect.height() : bar->rect.width();
    const int range = bar->maximum - bar->minimum;
    constexpr int shortest = 28;
    const int thumb =
        range > 0
            ? qBound(qMin(shortest, length),
                     static_cast<int>(qint64(length) * bar->pageStep / (range + bar->pageStep)),
                     length)
            : length;
    const int start = sliderPositionFromValue(bar->minimum, bar->maximum, bar->sliderPosition,
                                              length - thumb, bar->upsideDown);
    const auto part = [&](int from, int size) {
        return isVertical
                   ? QRect(bar->rect.left(), bar->rect.top() + from, bar->rect.width(), size)
                   : QRect(bar->rect.left() + from, bar->rect.top(), size, bar->rect.height());
    };
    switch (subControl) {
    case SC_ScrollBarSlider:
        return part(start, thumb);
    case SC_ScrollBarSubPage:
        return part(0, start);
    case SC_ScrollBarAddPage:
        return part(start + thumb, length - start - thumb);
    case SC_ScrollBarGroove:
        return bar->rect;
    default:
        return {};
    }
}

QSize LumoraStyle::sizeFromContents(ContentsType type, const QStyleOption* option,
                                    const QSize& size, const QWidget* widget) const {
    if (type == CT_PushButton) {
        const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
        const Prominence prominence = prominenceOf(widget);
        int width = option->fontMetrics.size(Qt::TextShowMnemonic, button->text).width() +
                    2 * paddingOf(prominence);
        if (!button->icon.isNull())
            width += button->iconSize.width() + iconSpacing;
        return {width,
                prominence == Prominence::Prominent ? prominentHeight : Metrics::controlHeight};
    }
    if (type == CT_MenuItem) {
        if (const auto* const entry = qstyleoption_cast<const QStyleOptionMenuItem*>(option))
            return MenuLook::entrySize(*entry, size);
    }
    return QProxyStyle::sizeFromContents(type, option, size, widget);
}

int LumoraStyle::pixelMetric(PixelMetric metric, const QStyleOption* option,
                             const QWidget* widget) const {
    switch (metric) {
    case PM_ScrollBarExtent:
    case PM_ScrollView_ScrollBarOverlap:
        // The thumb floats over the content's margin instead of taking room from it.
        return scrollBarExtent;
    case PM_MenuHMargin:
    case PM_MenuVMargin:
        return MenuLook::margin;
    case PM_MenuPanelWidth:
        return 0;
    case PM_ButtonShiftHorizontal:
    case PM_ButtonShiftVertical:
        return 0;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int LumoraStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                           QStyleHintReturn* returned) const {
    constexpr char16_t bullet = u'•';
    switch (hint) {
    case SH_LineEdit_PasswordCharacter:
        // The usual one is as large as the field.
        return bullet;
    case SH_Widget_Animation_Duration:
        if (m_motion == Motion::Reduced)
            return 0;
        break;
    case SH_Menu_Mask:
        if (option == nullptr || showsTransparency())
            break;
        if (auto* const mask = qstyleoption_cast<QStyleHintReturnMask*>(returned))
            mask->region = MenuLook::rounded(option->rect);
        return 1;
    default:
        break;
    }
    return QProxyStyle::styleHint(hint, option, widget, returned);
}
