// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class OutputText;

/// The floating panel that says that a command is running and shows the operation's transcript.
///
/// It has no buttons: it is there as long as the operation is.
class OperationOverlay final : public QWidget {
    Q_OBJECT

public:
    explicit OperationOverlay(QWidget* parent);

    void setOutput(const QString& output);
    [[nodiscard]] QString output() const;

protected:
    void showEvent(QShowEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// Puts the panel at the bottom of its parent.
    void place();

    OutputText* m_output;
};
