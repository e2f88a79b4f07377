// SPDX-License-Identifier: MIT
#pragma once

#include <QBasicTimer>
#include <QWidget>

/// An indeterminate progress indicator; it costs nothing while it can't be seen, and only ticks
/// where the style is one without motion.
class Spinner final : public QWidget {
    Q_OBJECT

public:
    enum class Size { Small, Large };

    explicit Spinner(Size size, QWidget* parent = nullptr);

    /// Draws the indicator at this moment's position, for rows that aren't widgets.
    static void paint(QPainter* painter, const QRectF& rect, const QWidget* widget);
    /// Between two positions, in milliseconds.
    [[nodiscard]] static int interval(const QWidget* widget);

protected:
    void paintEvent(QPaintEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    QBasicTimer m_timer;
};
