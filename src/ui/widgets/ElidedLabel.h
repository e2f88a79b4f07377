// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>

/// One line of plain text that is cut where the room ends; the whole is shown on hover.
class ElidedLabel final : public QLabel {
    Q_OBJECT

public:
    explicit ElidedLabel(QWidget* parent = nullptr);

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
