// SPDX-License-Identifier: MIT
#pragma once

#include <QLineEdit>

class IconButton;

/// A line to type into, with a button that empties it while there is something in it.
class TextField : public QLineEdit {
    Q_OBJECT

public:
    explicit TextField(const QString& accessibleName, QWidget* parent = nullptr);

    /// How much room there is before the text and, without the button, behind it.
    void setMargins(int leading, int trailing);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void showButton();

    IconButton* m_clearButton;
    int m_leading{};
    int m_trailing{};
};
