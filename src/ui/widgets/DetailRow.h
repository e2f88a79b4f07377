// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class LinkButton;
class QHBoxLayout;
class SecondaryLabel;

/// A label in a column of fixed width, and its value.
class DetailRow final : public QWidget {
    Q_OBJECT

public:
    /// With a text that can be selected and copied.
    DetailRow(const QString& label, const QString& value, QWidget* parent = nullptr);
    /// With a link as its value, which the row takes over.
    DetailRow(const QString& label, LinkButton* value, QWidget* parent = nullptr);

private:
    SecondaryLabel* addLabel(const QString& label, QFont::Weight weight = QFont::Normal);

    QHBoxLayout* m_layout;
};
