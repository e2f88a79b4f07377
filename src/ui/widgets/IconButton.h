// SPDX-License-Identifier: MIT
#pragma once

#include "widgets/KeyboardButton.h"

#include <QAbstractButton>

/// A square button of nothing but a symbol; its tool tip is its accessible name.
class IconButton final : public KeyboardButton<QAbstractButton> {
    Q_OBJECT

public:
    IconButton(QString symbol, const QString& toolTip, QWidget* parent = nullptr);

    /// How large the symbol is drawn in the button.
    void setSymbolSize(int size);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    QString m_symbol;
    int m_symbolSize{18};
};
