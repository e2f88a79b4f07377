// SPDX-License-Identifier: MIT
#include "shell/SleepInhibitor.h"

#include "BrewManager.h"
#include "widgets/DisplayText.h"

#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

struct Service final {
    QString name;
    QString path;
    QString interface;
    QVariantList (*arguments)(const QString& reason);
    QString release;

    [[nodiscard]] DesktopCall call(const QString& method, const QVariantList& with) const {
        return {name, path, interface, method, with};
    }
};

/// The first is GNOME's, Cinnamon's and MATE's, the second KDE's and Xfce's. The portal, made for
/// sandboxes, only passes the wish on to them, and grants it at once even if nobody hears it.
const std::array services{
    Service{u"org.gnome.SessionManager"_s, u"/org/gnome/SessionManager"_s,
            u"org.gnome.SessionManager"_s,
            [](const QString& reason) {
                constexpr uint noWindow = 0;
                constexpr uint suspending = 4;
                return QVariantList{u"lumora"_s, noWindow, reason, suspending};
            },
            u"Uninhibit"_s},
    Service{u"org.freedesktop.PowerManagement"_s, u"/org/freedesktop/PowerManagement/Inhibit"_s,
            u"org.freedesktop.PowerManagement.Inhibit"_s,
            [](const QString& reason) {
                return QVariantList{u"Lumora"_s, reason};
            },
            u"UnInhibit"_s},
};

} // namespace

SleepInhibitor::SleepInhibitor(const BrewManager& manager) {
    connect(&manager, &BrewManager::operationStarted, this, &SleepInhibitor::begin);
    connect(&manager, &BrewManager::operationEnded, this, &SleepInhibitor::end);
}

void SleepInhibitor::begin(const QString& reason) {
    if (++m_running > 1)
        return;
    ++m_time;
    ask(0, DisplayText::line(reason));
}

void SleepInhibitor::end() {
    if (--m_running > 0 || !m_release)
        return;
    m_bus.call(*std::exchange(m_release, std::nullopt));
}

void SleepInhibitor::ask(std::size_t number, const QString& reason) {
    if (number == services.size())
        return;
    const Service& service = services.at(number);
    const DesktopCall inhibit = service.call(u"Inhibit"_s, service.arguments(reason));
    m_bus.call(inhibit, [=, this, &service, time = m_time](const auto& answer) {
        const bool isOver = m_running == 0 || time != m_time;
        if (!answer) {
            if (!isOver)
                ask(number + 1, reason);
            return;
        }
        const uint cookie = answer->value(0).toUInt();
        const DesktopCall release = service.call(service.release, {cookie});
        if (isOver)
            m_bus.call(release);
        else
            m_release = release;
    });
}
