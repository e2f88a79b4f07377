// SPDX-License-Identifier: MIT
#pragma once

#include <QPlainTextEdit>

/// Command output: monospaced, plain, selectable, as tall as its text.
///
/// Only output of very many lines scrolls inside, unless it is to fill a room; all else leaves
/// scrolling to what it is in.
class OutputText final : public QPlainTextEdit {
    Q_OBJECT

public:
    /// Whether it stands on a surface of its own or directly on its panel.
    enum class Frame { None, Box };

    /// `accessibleName` tells a screen reader what the output is of.
    OutputText(const QString& accessibleName, Frame frame, double textSize,
               QWidget* parent = nullptr);

    /// Shows the text, unless it is the one shown already.
    void setOutput(const QString& output);

    [[nodiscard]] const QString& output() const { return m_output; }

    /// How tall it may grow before it scrolls.
    void setTallest(int height);
    /// From now on it is as tall as there is room, whatever its text, and scrolls inside.
    void fillRoom();
    void scrollToEnd();

protected:
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool event(QEvent* event) override;

private:
    void applyColors();
    [[nodiscard]] int fewestRows() const;
    void fitHeight();

    Frame m_frame;
    QString m_output;
    int m_linePitch;
    double m_letterCount{};
    int m_tallest{6000};
    bool m_fillsRoom{false};
};

/// A heading above what a command printed; hidden while that is nothing.
class OutputSection final : public QWidget {
    Q_OBJECT

public:
    OutputSection(const QString& heading, int spacing, QWidget* parent = nullptr);

    void setOutput(const QString& output);

    [[nodiscard]] OutputText* text() const { return m_text; }

private:
    OutputText* m_text;
};
