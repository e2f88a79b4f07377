// SPDX-License-Identifier: MIT
#pragma once

#include "widgets/KeyboardButton.h"

#include <QAbstractButton>

/// Whether an address is one that may be handed on to the desktop, which would take far more: it is
/// absolute, of the web and has a host, or it is Lumora's own contact.
[[nodiscard]] bool canOpenAddress(const QString& address);
/// Opens such an address in the desktop's browser or mail client, and does nothing with any other;
/// a desktop that can't open it isn't reported either.
void openAddress(const QString& address);

/// A line of text in the accent colour that opens an address when it is pressed.
class LinkButton final : public KeyboardButton<QAbstractButton> {
    Q_OBJECT

public:
    /// Room for the mark of the focus on both sides of the text.
    static constexpr int focusMargin = 3;

    LinkButton(const QString& text, QString address, QWidget* parent = nullptr);

    [[nodiscard]] const QString& address() const { return m_address; }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_address;
};

/// A wide, quiet button with a symbol, a title and an outward arrow, that opens an address.
class LinkRow final : public KeyboardButton<QAbstractButton> {
    Q_OBJECT

public:
    LinkRow(QString symbol, const QString& title, const QString& address,
            QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_symbol;
};
