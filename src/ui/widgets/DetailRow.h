// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class QHBoxLayout;
class SecondaryLabel;

/// A label in a column of fixed width, and its value.
class DetailRow final : public QWidget {
    Q_OBJECT

public:
    /// With a text that can be selected and copied.
    DetailRow(const QString& label, const QString& value, QWidget* parent = nullptr);
    /// With another widget as its value, which the row takes over.
    DetailRow(const QString& label, QWidget* value, QWidget* parent = nullptr);

private:
    SecondaryLabel* addLabel(const QString& label);

    QHBoxLayout* m_layout;
};
