// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>
#include <QWidget>

class LinkButton;

/// A label in a column of fixed width, and its value.
class DetailRow final : public QWidget {
    Q_OBJECT

public:
    /// With a text that can be selected and copied.
    DetailRow(const QString& label, const QString& value, QFont::Weight labelWeight = QFont::Normal,
              QWidget* parent = nullptr);
    /// With a link as its value, which the row takes over.
    DetailRow(const QString& label, LinkButton* value, QWidget* parent = nullptr);
};
