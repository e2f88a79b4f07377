// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>

class QLineEdit;

/// A window that shows a prompt as plain text above a password field.
class PasswordDialog final : public QDialog {
    Q_OBJECT

public:
    explicit PasswordDialog(const QString& prompt);

    /// What was typed, in UTF-8. The field is empty afterwards, and its text overwritten.
    ///
    /// Beyond reach are what the field put aside when its text grew, its list of what can be
    /// undone, and the key presses on their way here: they end with the process.
    [[nodiscard]] QByteArray takePassword();

    /// Overwrites the bytes of a text that is held here alone, and empties it.
    static void wipe(QByteArray& text);

private:
    QLineEdit* m_field;
};
