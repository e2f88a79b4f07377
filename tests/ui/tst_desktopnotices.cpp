// SPDX-License-Identifier: MIT
#include "../core/DescriptorLimit.h"
#include "AppWindow.h"
#include "DesktopServiceDouble.h"
#include "UiTest.h"
#include "shell/DesktopNotices.h"

#include <QApplication>
#include <QMessageBox>

#include <optional>

using namespace Qt::StringLiterals;
using enum DesktopServiceDouble::Manner;

namespace {

const QString capabilities = u"GetCapabilities"_s;
const QString asksForCapabilities = u"GetCapabilities ()"_s;

QList<const QWidget*> alerted;

QString notify(const QString& body) {
    return u"Notify (susssasa{sv}i) 'Lumora' '0' 'lumora' 'Lumora' '"_s + body +
           u"' [] {desktop-entry='lumora' urgency=byte 1} '-1'"_s;
}

/// The desktop's notifications.
struct Notifications final {
    explicit Notifications(const SessionBus& bus, DesktopServiceDouble::Manner manner = Answers)
        : service(bus, u"org.freedesktop.Notifications"_s, u"/org/freedesktop/Notifications"_s,
                  manner) {
        service.setAnswer(capabilities, QStringList{u"body"_s});
    }

    /// All calls but the questions that come before a notification.
    [[nodiscard]] QStringList calls() const {
        QStringList calls = service.calls();
        calls.removeAll(asksForCapabilities);
        return calls;
    }

    DesktopServiceDouble service;
};

} // namespace

/// Stands in for the toolkit's, which the offscreen platform doesn't heed.
void QApplication::alert(QWidget* widget, int /*duration*/) {
    alerted.append(widget);
}

class DesktopNoticesTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void tellsOfTheEnd_data();
    void tellsOfTheEnd();
    void tellsOfABrewThatCannotBeStarted();
    void keepsSilentInFrontOfTheUser();
    void keepsSilentBehindABoxOfTheWindow();
    void keepsSilentOnceTheUserIsBack();
    void tellsOfEachOfTwoThatOverlap();
    void escapesWhatTheServerTakesForMarkup_data();
    void escapesWhatTheServerTakesForMarkup();
    void showsHarmlessText_data();
    void showsHarmlessText();
    void alertsWhereNobodyShowsNotifications_data();
    void alertsWhereNobodyShowsNotifications();
    void takesBackWhatWasShown();
    void takesBackWhatIsShownTooLate();
    void survivesTheWindow();

private:
    /// Lets another window be the active one.
    void leave() {
        m_elsewhere->show();
        m_elsewhere->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&*m_elsewhere));
    }

    void comeBack() {
        m_app->window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&m_app->window));
    }

    void install(const QString& name) {
        const auto operation = m_app->manager.install(name, PackageType::formula);
        QTRY_VERIFY(operation.isReady());
    }

    const SessionBus m_bus;
    std::optional<AppWindow> m_app;
    std::optional<QWidget> m_elsewhere;
    std::optional<DesktopNotices> m_notices;
};

void DesktopNoticesTest::initTestCase() {
    qputenv("DBUS_SESSION_BUS_ADDRESS", m_bus.address().toUtf8());
}

void DesktopNoticesTest::init() {
    m_app.emplace();
    m_elsewhere.emplace();
    m_notices.emplace(m_app->window.content()->notice(), m_app->window);
    m_app->showLoaded();
    alerted.clear();
}

void DesktopNoticesTest::cleanup() {
    m_notices.reset();
    m_elsewhere.reset();
    m_app.reset();
}

void DesktopNoticesTest::tellsOfTheEnd_data() {
    QTest::addColumn<QString>("commandLine");
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("body");
    QTest::newRow("success") << u"install wget"_s << 0 << u"Successfully installed wget"_s;
    QTest::newRow("failure") << u"install wget"_s << 1 << u"Failed to install wget — Error: no"_s;
    QTest::newRow("tap") << u"tap wget"_s << 1 << u"Error: no"_s;
}

void DesktopNoticesTest::tellsOfTheEnd() {
    QFETCH(const QString, commandLine);
    QFETCH(const int, status);
    QFETCH(const QString, body);
    const Notifications notifications(m_bus);
    m_app->brew.answer(commandLine, {}, status, status == 0 ? "" : "Error: no\n");
    leave();
    BrewManager& manager = m_app->manager;
    const auto operation = commandLine.startsWith(u"tap"_s)
                               ? manager.addTap(u"wget"_s)
                               : manager.install(u"wget"_s, PackageType::formula);
    QTRY_COMPARE(notifications.service.calls(), (QStringList{asksForCapabilities, notify(body)}));
    QCOMPARE(alerted, QList<const QWidget*>{&m_app->window});
    QTRY_VERIFY(operation.isReady());
}

void DesktopNoticesTest::tellsOfABrewThatCannotBeStarted() {
    const Notifications notifications(m_bus);
    leave();
    {
        const DescriptorLimit none(0);
        install(u"wget"_s);
    }
    QTRY_COMPARE(
        notifications.calls(),
        QStringList{notify(u"Error: /bin/zsh could not be started: Too many open files."_s)});
    QCOMPARE(alerted.size(), 1);
}

void DesktopNoticesTest::keepsSilentInFrontOfTheUser() {
    const Notifications notifications(m_bus);
    install(u"wget"_s);
    leave();
    install(u"jq"_s);
    QTRY_COMPARE(notifications.service.calls(),
                 (QStringList{asksForCapabilities, notify(u"Successfully installed jq"_s)}));
    QCOMPARE(alerted.size(), 1);
}

void DesktopNoticesTest::keepsSilentBehindABoxOfTheWindow() {
    const Notifications notifications(m_bus);
    QMessageBox box(&m_app->window);
    box.show();
    box.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&box));
    install(u"wget"_s);
    box.close();
    leave();
    install(u"jq"_s);
    QTRY_COMPARE(notifications.calls(), QStringList{notify(u"Successfully installed jq"_s)});
    QCOMPARE(alerted.size(), 1);
}

void DesktopNoticesTest::keepsSilentOnceTheUserIsBack() {
    Notifications notifications(m_bus, KeepsSilent);
    leave();
    install(u"wget"_s);
    QTRY_COMPARE(notifications.service.calls(), QStringList{asksForCapabilities});
    comeBack();
    notifications.service.breakSilence();
    notifications.service.settle();
    leave();
    install(u"jq"_s);
    QTRY_VERIFY(!notifications.calls().isEmpty());
    QCOMPARE(notifications.calls(), QStringList{notify(u"Successfully installed jq"_s)});
}

void DesktopNoticesTest::tellsOfEachOfTwoThatOverlap() {
    const Notifications notifications(m_bus);
    m_app->brew.hold(u"install wget"_s);
    leave();
    const auto wget = m_app->manager.install(u"wget"_s, PackageType::formula);
    install(u"jq"_s);
    QTRY_COMPARE(notifications.calls(), QStringList{notify(u"Successfully installed jq"_s)});
    m_app->brew.release(u"install wget"_s);
    QTRY_COMPARE(notifications.calls().value(1), notify(u"Successfully installed wget"_s));
    QCOMPARE(alerted.size(), 2);
    QTRY_VERIFY(wget.isReady());
}

void DesktopNoticesTest::escapesWhatTheServerTakesForMarkup_data() {
    QTest::addColumn<QStringList>("can");
    QTest::addColumn<QString>("name");
    QTest::newRow("takes markup") << QStringList{u"body"_s, u"body-markup"_s}
                                  << u"&lt;b&gt;a&lt;/b&gt; &amp;amp;"_s;
    QTest::newRow("takes none") << QStringList{u"body"_s, u"persistence"_s} << u"<b>a</b> &amp;"_s;
}

void DesktopNoticesTest::escapesWhatTheServerTakesForMarkup() {
    QFETCH(const QStringList, can);
    QFETCH(const QString, name);
    Notifications notifications(m_bus);
    notifications.service.setAnswer(capabilities, can);
    leave();
    install(u"<b>a</b> &amp;"_s);
    QTRY_COMPARE(notifications.calls(), QStringList{notify(u"Successfully installed "_s + name)});
}

void DesktopNoticesTest::showsHarmlessText_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("shown");
    QTest::newRow("control characters") << u"a\n\x1b[31m"_s << u"a \u241b[31m"_s;
    QTest::newRow("right to left") << u"a\u202egpj.exe"_s << u"a\ufffdgpj.exe"_s;
    QTest::newRow("half a character") << u"a"_s + QChar(0xD83D) << u"a?"_s;
    QTest::newRow("percent") << u"%1 %n"_s << u"%1 %n"_s;
}

void DesktopNoticesTest::showsHarmlessText() {
    QFETCH(const QString, name);
    QFETCH(const QString, shown);
    const Notifications notifications(m_bus);
    leave();
    Q_EMIT m_app->manager.operationEnded({.closing = name});
    QTRY_COMPARE(notifications.calls(), QStringList{notify(shown)});
    constexpr qsizetype megabyte = 1 << 20;
    Q_EMIT m_app->manager.operationEnded({.closing = QString(megabyte, u'x')});
    QTRY_COMPARE(notifications.calls().size(), 2);
    constexpr qsizetype most = 5'000;
    QVERIFY(notifications.calls().at(1).size() < most);
}

void DesktopNoticesTest::alertsWhereNobodyShowsNotifications_data() {
    QTest::addColumn<std::optional<DesktopServiceDouble::Manner>>("manner");
    using Manner = std::optional<DesktopServiceDouble::Manner>;
    QTest::newRow("absent") << Manner();
    QTest::newRow("refuses") << Manner(Refuses);
    QTest::newRow("hangs") << Manner(KeepsSilent);
}

void DesktopNoticesTest::alertsWhereNobodyShowsNotifications() {
    QFETCH(const std::optional<DesktopServiceDouble::Manner>, manner);
    std::optional<Notifications> notifications;
    if (manner)
        notifications.emplace(m_bus, *manner);
    leave();
    install(u"wget"_s);
    install(u"jq"_s);
    QCOMPARE(alerted.size(), 2);
    if (notifications) {
        const QStringList twice{asksForCapabilities, asksForCapabilities};
        QTRY_COMPARE(notifications->service.calls(), twice);
        notifications->service.settle();
        QCOMPARE(notifications->service.calls(), twice);
    }
    comeBack();
    notifications.reset();
    // One that comes later is found.
    notifications.emplace(m_bus);
    leave();
    install(u"tree"_s);
    QTRY_COMPARE(notifications->calls(), QStringList{notify(u"Successfully installed tree"_s)});
}

void DesktopNoticesTest::takesBackWhatWasShown() {
    const Notifications notifications(m_bus);
    leave();
    for (const QString& name : {u"wget"_s, u"jq"_s})
        install(name);
    QTRY_COMPARE(notifications.calls().size(), 2);
    // Its numbers have to be here.
    notifications.service.settle();
    comeBack();
    QTRY_COMPARE(notifications.calls().size(), 4);
    QCOMPARE(notifications.calls().sliced(2),
             (QStringList{u"CloseNotification (u) '1'"_s, u"CloseNotification (u) '2'"_s}));
    leave();
    comeBack();
    notifications.service.settle();
    QCOMPARE(notifications.calls().size(), 4);
}

void DesktopNoticesTest::takesBackWhatIsShownTooLate() {
    Notifications notifications(m_bus, KeepsSilent);
    leave();
    install(u"wget"_s);
    QTRY_COMPARE(notifications.service.calls().size(), 1);
    notifications.service.breakSilence();
    notifications.service.setManner(KeepsSilent);
    QTRY_COMPARE(notifications.calls().size(), 1);
    comeBack();
    notifications.service.breakSilence();
    QTRY_COMPARE(notifications.calls().value(1), u"CloseNotification (u) '1'"_s);
}

void DesktopNoticesTest::survivesTheWindow() {
    Notifications notifications(m_bus, KeepsSilent);
    leave();
    install(u"wget"_s);
    QTRY_COMPARE(notifications.service.calls().size(), 1);
    m_app->brew.hold(u"install jq"_s);
    const auto operation = m_app->manager.install(u"jq"_s, PackageType::formula);
    m_app->window.close();
    m_app->brew.release(u"install jq"_s);
    QTRY_VERIFY(operation.isReady());
    notifications.service.breakSilence();
    notifications.service.settle();
}

LUMORA_UI_TEST_MAIN(DesktopNoticesTest)
#include "tst_desktopnotices.moc"
