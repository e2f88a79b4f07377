// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QEvent>
#include <QPaintEvent>
#include <QWidget>

/// How often a widget is painted, and how much of its window is with it.
class PaintWatch final : public QObject {
public:
    explicit PaintWatch(const QWidget& widget) : m_widget(widget) {
        QCoreApplication::instance()->installEventFilter(this);
    }

    [[nodiscard]] int count() const { return m_count; }

    /// Within which all lies that was painted of the window, this widget's part or another's.
    [[nodiscard]] QRect area() const { return m_area; }

    /// The same of the widget alone.
    [[nodiscard]] QRect ownArea() const { return m_ownArea; }

    void forget() {
        m_count = 0;
        m_area = {};
        m_ownArea = {};
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::Paint || !watched->isWidgetType())
            return false;
        const auto& widget = static_cast<const QWidget&>(*watched);
        const QRect painted = static_cast<QPaintEvent*>(event)->region().boundingRect();
        if (&widget == &m_widget) {
            ++m_count;
            m_ownArea |= painted;
        }
        if (widget.window() == m_widget.window())
            m_area |= painted.translated(widget.mapTo(widget.window(), QPoint()));
        return false;
    }

private:
    const QWidget& m_widget;
    int m_count{0};
    QRect m_area;
    QRect m_ownArea;
};
