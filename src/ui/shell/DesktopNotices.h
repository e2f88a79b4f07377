// SPDX-License-Identifier: MIT
#pragma once

#include "shell/DesktopBus.h"

#include <QList>

class OperationNotice;
class QWidget;

/// Tells of an operation's end where the user is while the window isn't the active one: the
/// window asks for attention, and the desktop shows a notification until the user is back.
class DesktopNotices final : public QObject {
    Q_OBJECT

public:
    /// Both outlive this.
    DesktopNotices(const OperationNotice& notice, QWidget& window);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void tell(const QString& line);
    void show(const QString& body);
    void takeBack(uint id);

    QWidget& m_window;
    DesktopBus m_bus;
    /// Notifications that may still be seen.
    QList<uint> m_shown;
};
