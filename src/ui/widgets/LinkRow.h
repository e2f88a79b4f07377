// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractButton>

/// A wide, quiet button with a symbol, a title and an outward arrow.
class LinkRow final : public QAbstractButton {
    Q_OBJECT

public:
    LinkRow(QString symbol, const QString& title, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    QString m_symbol;
};
