// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>

/// A label that shows its text as it is, whatever markup it looks like.
class PlainLabel : public QLabel {
    Q_OBJECT

public:
    explicit PlainLabel(const QString& text, const QFont& font = {}, QWidget* parent = nullptr);
};

/// A plain label in the secondary colour of whatever theme is in force.
class SecondaryLabel final : public PlainLabel {
    Q_OBJECT

public:
    SecondaryLabel(const QString& text, double size, QWidget* parent = nullptr);
};

/// One line of plain text that is cut where the room ends; the whole is shown on hover.
class ElidedLabel final : public PlainLabel {
    Q_OBJECT

public:
    explicit ElidedLabel(const QFont& font, QWidget* parent = nullptr);

    void setFullText(const QString& text);

    [[nodiscard]] const QString& fullText() const { return m_fullText; }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void elide();

    QString m_fullText;
};
