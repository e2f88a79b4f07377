// SPDX-License-Identifier: MIT
#pragma once

#include "widgets/SymbolLabel.h"

class QLabel;
class Spinner;

/// What a page shows instead of a list: a spinner or a large icon above one line of text.
class StateView final : public QWidget {
    Q_OBJECT

public:
    enum class TextSize { Body, Title };
    /// Whether a screen reader is to say a text when it comes, or only when it is asked.
    enum class Voice { Aloud, Quiet };

    explicit StateView(QWidget* parent = nullptr);

    void showBusy(const QString& text);
    void showSymbol(const QString& symbol, ThemeColor color, const QString& text,
                    TextSize size = TextSize::Body, Voice voice = Voice::Aloud);

    [[nodiscard]] QString text() const;
    [[nodiscard]] bool isBusy() const;

private:
    void setText(const QString& text, TextSize size, Voice voice);

    Spinner* m_spinner;
    SymbolLabel* m_symbol;
    QLabel* m_text;
};
