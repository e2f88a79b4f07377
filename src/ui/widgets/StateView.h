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

    explicit StateView(QWidget* parent = nullptr);

    void showBusy(const QString& text);
    void showSymbol(const QString& symbol, ThemeColor color, const QString& text,
                    TextSize size = TextSize::Body);

    [[nodiscard]] QString text() const;
    [[nodiscard]] bool isBusy() const;

private:
    void setText(const QString& text, TextSize size);

    Spinner* m_spinner;
    SymbolLabel* m_symbol;
    QLabel* m_text;
};
