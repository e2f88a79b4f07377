// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class ElidedLabel;
class QHBoxLayout;

/// The strip above a page: its title, and its controls at the trailing end.
class PageHeader final : public QWidget {
    Q_OBJECT

public:
    explicit PageHeader(QWidget* parent = nullptr);

    void setTitle(const QString& title);
    [[nodiscard]] QString title() const;
    /// Shows these controls instead of the ones before.
    void setControls(QWidget* controls);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    ElidedLabel* m_title;
    QHBoxLayout* m_layout;
    QWidget* m_controls{nullptr};
};
