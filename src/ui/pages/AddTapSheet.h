// SPDX-License-Identifier: MIT
#pragma once

#include <QPointer>
#include <QWidget>

class QLineEdit;
class QPushButton;
class Sheet;

/// Asks for the name of a tap to add. It stays open until the tap is added or the user gives up.
class AddTapSheet final : public QObject {
    Q_OBJECT

public:
    /// Lies over `window`, which owns it.
    explicit AddTapSheet(QWidget* window);

    void present();
    void dismiss();
    /// Whether an add is running: then there is a spinner, and nothing more can be added.
    void setAdding(bool isAdding);

    [[nodiscard]] QLineEdit* field() const { return m_field; }

    [[nodiscard]] QPushButton* addButton() const { return m_add; }

Q_SIGNALS:
    /// The user wants this to be added; blanks around it are still there.
    void addRequested(const QString& typed);

private:
    void updateButtons();
    void requestAdd();

    QPointer<Sheet> m_sheet;
    QLineEdit* m_field;
    QWidget* m_progress;
    QPushButton* m_add;
    bool m_isAdding{false};
};
