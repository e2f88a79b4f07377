// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

/// A symbol of fixed size in one of the theme's colours. Decoration: screen readers skip it.
class SymbolLabel final : public QWidget {
    Q_OBJECT

public:
    enum class Tone { Secondary, Accent, Good, Outdated };

    /// `size` is the side of the symbol's square, its margin included, also where the symbol
    /// stands for a letter of a font of that size.
    SymbolLabel(QString symbol, int size, Tone tone, QWidget* parent = nullptr);

    void setSymbol(const QString& symbol, Tone tone);

    [[nodiscard]] QString symbol() const { return m_symbol; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_symbol;
    Tone m_tone;
};
