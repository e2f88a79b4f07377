// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class OutputText;

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
