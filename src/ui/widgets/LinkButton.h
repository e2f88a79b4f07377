// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractButton>

/// A line of text in the accent colour that opens an address when it is pressed.
class LinkButton final : public QAbstractButton {
    Q_OBJECT

public:
    /// Room for the mark of the focus on both sides of the text.
    static constexpr int focusMargin = 3;

    LinkButton(const QString& text, QString address, QWidget* parent = nullptr);

    [[nodiscard]] const QString& address() const { return m_address; }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    QString m_address;
};
