// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>

/// A label that shows its text as it is, whatever markup it looks like. Where it can be selected it
/// has a menu for that, which the toolkit gives to formatted texts alone.
class PlainLabel : public QLabel {
    Q_OBJECT

public:
    explicit PlainLabel(const QString& text, const QFont& font = {}, QWidget* parent = nullptr);

protected:
    /// What a copy of the selection is; "" without one.
    [[nodiscard]] virtual QString selectedForCopy() const { return selectedText(); }

    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    void copySelection() const;
};

/// A plain label in the secondary colour of whatever theme is in force.
class SecondaryLabel final : public PlainLabel {
    Q_OBJECT

public:
    SecondaryLabel(const QString& text, double size, QWidget* parent = nullptr);
};

/// One line of plain text that is cut where the room ends; the whole is shown on hover, and copied
/// by whoever copies it to its end.
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
    [[nodiscard]] QString selectedForCopy() const override;

private:
    void elide();

    QString m_fullText;
};
