// SPDX-License-Identifier: MIT
#include "shell/DesktopNotices.h"

#include "shell/OperationNotice.h"

#include <QApplication>
#include <QEvent>
#include <QWidget>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

DesktopCall notificationCall(const QString& method, const QVariantList& arguments = {}) {
    const QString service = u"org.freedesktop.Notifications"_s;
    return {service, u"/org/freedesktop/Notifications"_s, service, method, arguments};
}

/// Whether the user looks at the window, or at a box that belongs to it.
bool isInFront(const QWidget& window) {
    const QWidget* active = QApplication::activeWindow();
    while (active != nullptr && active != &window)
        active = active->parentWidget();
    return active != nullptr;
}

} // namespace

DesktopNotices::DesktopNotices(const OperationNotice& notice, QWidget& window) : m_window(window) {
    m_window.installEventFilter(this);
    connect(&notice, &OperationNotice::changed, this, [this, &notice] {
        if (notice.isOpen())
            tell(notice.last()->line());
    });
}

void DesktopNotices::tell(const QString& line) {
    if (isInFront(m_window))
        return;
    QApplication::alert(&m_window);
    // Asked each time: another server may have taken the place of the last one.
    m_bus.call(notificationCall(u"GetCapabilities"_s), [this, line](const auto& answer) {
        if (!answer || isInFront(m_window))
            return;
        const QStringList capabilities = answer->value(0).toStringList();
        show(capabilities.contains(u"body-markup"_s) ? line.toHtmlEscaped() : line);
    });
}

void DesktopNotices::show(const QString& body) {
    constexpr uint replacesNone = 0;
    constexpr uchar normalUrgency = 1;
    constexpr int asLongAsUsual = -1;
    const QVariantMap hints{{u"desktop-entry"_s, u"lumora"_s},
                            {u"urgency"_s, QVariant::fromValue(normalUrgency)}};
    // No action: a desktop that gets none raises the window itself, as only it may.
    m_bus.call(notificationCall(u"Notify"_s, {u"Lumora"_s, replacesNone, u"lumora"_s, u"Lumora"_s,
                                              body, QStringList(), hints, asLongAsUsual}),
               [this](const auto& answer) {
                   if (!answer)
                       return;
                   const uint id = answer->value(0).toUInt();
                   if (isInFront(m_window))
                       takeBack(id);
                   else
                       m_shown.append(id);
               });
}

void DesktopNotices::takeBack(uint id) {
    m_bus.call(notificationCall(u"CloseNotification"_s, {id}));
}

bool DesktopNotices::eventFilter(QObject* /*watched*/, QEvent* event) {
    if (event->type() == QEvent::WindowActivate) {
        for (const uint id : std::exchange(m_shown, {}))
            takeBack(id);
    }
    return false;
}
