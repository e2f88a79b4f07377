// SPDX-License-Identifier: MIT
#pragma once

#include <QProxyStyle>

class QPushButton;

/// Fusion with quieter buttons, fields, scroll bars, menus and focus marks.
class LumoraStyle final : public QProxyStyle {
    Q_OBJECT

public:
    LumoraStyle();

    /// How much a button wants to be seen.
    enum class Prominence {
        Usual,
        /// In a page's header, beside fields and icons.
        Compact,
        /// The one that a page invites to: filled with the accent, and larger.
        Prominent,
        /// The one that can't be undone: filled with red.
        Destructive,
    };
    static void setProminence(QPushButton* button, Prominence prominence);

    enum class Motion { Usual, Reduced };

    /// How much may move that needn't.
    void setMotion(Motion motion) { m_motion = motion; }

    void polish(QWidget* widget) override;
    using QProxyStyle::polish;

    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                            QPainter* painter, const QWidget* widget) const override;
    QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option,
                         SubControl subControl, const QWidget* widget) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                           const QWidget* widget) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption* option,
                    const QWidget* widget) const override;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returned) const override;

private:
    void drawPushButton(const QStyleOption* option, QPainter* painter, const QWidget* widget) const;
    static void drawScrollBar(const QRect& slider, const QStyleOption* option, QPainter* painter);

    Motion m_motion{Motion::Usual};
};
