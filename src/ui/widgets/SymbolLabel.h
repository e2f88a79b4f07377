// SPDX-License-Identifier: MIT
#pragma once

#include "style/Theme.h"

#include <QWidget>

/// A symbol of fixed size in one of the theme's colours. Decoration: screen readers skip it.
class SymbolLabel final : public QWidget {
    Q_OBJECT

public:
    /// `size` is the side of the symbol's square, its margin included, also where the symbol
    /// stands for a letter of a font of that size.
    SymbolLabel(QString symbol, int size, ThemeColor color, QWidget* parent = nullptr);

    void setSymbol(const QString& symbol, ThemeColor color);

    [[nodiscard]] QString symbol() const { return m_symbol; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_symbol;
    ThemeColor m_color;
};
