// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

/// A short text on a tint of its own colour, or a chip in the neutral one.
class DetailBadge final : public QWidget {
    Q_OBJECT

public:
    enum class Tone { Formula, Cask, Good, Outdated, Neutral };

    DetailBadge(QString text, Tone tone, QWidget* parent = nullptr);

    [[nodiscard]] QString text() const { return m_text; }

    [[nodiscard]] Tone tone() const { return m_tone; }

    [[nodiscard]] QSize sizeHint() const override;

    /// The look of one, for what is more than a badge.
    static void paint(QPainter* painter, const QWidget& badge, const QString& text, Tone tone);
    [[nodiscard]] static QSize sizeOf(const QFont& font, const QString& text, Tone tone);
    [[nodiscard]] static QFont fontFor(Tone tone);
    /// Tells the text on hover where there is no room for all of it.
    static void explainIfCut(QWidget* badge, const QString& text);

    static constexpr double radius = 4;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_text;
    Tone m_tone;
};
