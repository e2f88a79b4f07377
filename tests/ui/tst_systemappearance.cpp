// SPDX-License-Identifier: MIT
#include "SecondProcess.h"
#include "SessionBus.h"
#include "style/SystemAppearance.h"
#include "style/Theme.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QSemaphore>
#include <QSignalSpy>
#include <QThread>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

const QString portalPath = u"/org/freedesktop/portal/desktop"_s;
const QString settings = u"org.freedesktop.portal.Settings"_s;
const QString appearanceGroup = u"org.freedesktop.appearance"_s;

} // namespace

/// The part of the desktop portal that knows what the user wishes.
class Portal final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    enum class Manner { Answers, WrapsTwice, KnowsNothing, KeepsSilent };

    Portal(uint scheme, Manner manner) : m_scheme(scheme), m_manner(manner) {}

    void change(const QString& group, const QString& key, uint scheme) const {
        QDBusMessage signal = QDBusMessage::createSignal(portalPath, settings, u"SettingChanged"_s);
        signal << group << key << QVariant::fromValue(QDBusVariant(scheme));
        QDBusConnection(u"portal"_s).send(signal);
    }

public Q_SLOTS:

    QDBusVariant Read(const QString& group, const QString& key, const QDBusMessage& message) {
        if (m_manner == Manner::KeepsSilent)
            message.setDelayedReply(true);
        if (m_manner == Manner::KnowsNothing || group != appearanceGroup ||
            key != u"color-scheme"_s) {
            message.setDelayedReply(true);
            QDBusConnection(u"portal"_s)
                .send(message.createErrorReply(QDBusError::InvalidArgs, u"not found"_s));
        }
        const QDBusVariant value(m_scheme);
        return m_manner == Manner::WrapsTwice ? QDBusVariant(QVariant::fromValue(value)) : value;
    }

private:
    uint m_scheme;
    Manner m_manner;
};

namespace {

/// The portal on a thread of its own, since whoever asks it waits for the answer.
class PortalThread final {
public:
    PortalThread(uint scheme, Portal::Manner manner) {
        m_portal = new Portal(scheme, manner);
        m_portal->moveToThread(&m_thread);
        QObject::connect(&m_thread, &QThread::finished, m_portal, &QObject::deleteLater);
        m_thread.start();
        run([this] {
            QDBusConnection bus = QDBusConnection::connectToBus(
                qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"), u"portal"_s);
            if (!bus.registerObject(portalPath, m_portal, QDBusConnection::ExportAllSlots) ||
                !bus.registerService(u"org.freedesktop.portal.Desktop"_s))
                qFatal("The portal can't be reached on the bus");
        });
    }

    ~PortalThread() {
        m_thread.quit();
        m_thread.wait();
    }

    Q_DISABLE_COPY_MOVE(PortalThread)

    void change(const QString& group, const QString& key, uint scheme) {
        run([&, this] { m_portal->change(group, key, scheme); });
    }

private:
    void run(const std::function<void()>& work) {
        QMetaObject::invokeMethod(m_portal, work, Qt::BlockingQueuedConnection);
    }

    QThread m_thread;
    Portal* m_portal{};
};

/// An application whose own palette is the dark or the light one.
struct Application final {
    explicit Application(const QString& palette) {
        QGuiApplication::setPalette(
            (palette == u"dark"_s ? Theme::dark() : Theme::light()).palette());
    }

    int argc{1};
    char name[5]{"part"};
    char* argv[2]{name, nullptr};
    QGuiApplication application{argc, argv};
};

const char* wish(const SystemAppearance& appearance) {
    return appearance.isDark() ? "dark\n" : "light\n";
}

/// What a portal that answers makes of the toolkit's palette: palette, scheme, manner.
int startWithPortal(const QStringList& arguments) {
    const Application application(arguments.at(0));
    const PortalThread portal(arguments.at(1).toUInt(),
                              static_cast<Portal::Manner>(arguments.at(2).toInt()));
    QElapsedTimer timer;
    timer.start();
    const SystemAppearance appearance;
    const qint64 needed = timer.elapsed();
    std::fputs(wish(appearance), stdout);
    constexpr qint64 patience = 2'000;
    return needed < patience ? 0 : 1;
}

int startWithoutPortal(const QStringList& arguments) {
    const Application application(arguments.at(0));
    const SystemAppearance appearance;
    std::fputs(wish(appearance), stdout);
    return 0;
}

int follow(const QStringList& /*arguments*/) {
    const Application application(u"light"_s);
    PortalThread portal(2, Portal::Manner::Answers);
    const SystemAppearance wishes;
    QSignalSpy changed(&wishes, &SystemAppearance::changed);
    std::fputs(wish(wishes), stdout);
    portal.change(u"org.gnome.desktop.interface"_s, u"color-scheme"_s, 1);
    portal.change(appearanceGroup, u"accent-color"_s, 1);
    for (const uint scheme : {1U, 2U, 1U}) {
        portal.change(appearanceGroup, u"color-scheme"_s, scheme);
        if (!changed.wait())
            return 1;
        std::fputs(wish(wishes), stdout);
    }
    return changed.count() == 3 ? 0 : 2;
}

QProcessEnvironment environmentWith(const QString& busAddress) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, busAddress);
    return environment;
}

} // namespace

class SystemAppearanceTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void asksThePortalAtTheStart_data();
    void asksThePortalAtTheStart();
    void keepsToThePaletteWithoutAPortal_data();
    void keepsToThePaletteWithoutAPortal();
    void keepsToThePaletteWithoutABus();
    void followsThePortal();
};

void SystemAppearanceTest::asksThePortalAtTheStart_data() {
    QTest::addColumn<QString>("palette");
    QTest::addColumn<int>("scheme");
    QTest::addColumn<Portal::Manner>("manner");
    QTest::addColumn<QByteArray>("wish");
    using enum Portal::Manner;
    QTest::newRow("dark") << u"light"_s << 1 << Answers << QByteArray("dark\n");
    QTest::newRow("light") << u"dark"_s << 2 << Answers << QByteArray("light\n");
    QTest::newRow("dark, wrapped twice") << u"light"_s << 1 << WrapsTwice << QByteArray("dark\n");
    QTest::newRow("no preference, light palette")
        << u"light"_s << 0 << Answers << QByteArray("light\n");
    QTest::newRow("no preference, dark palette")
        << u"dark"_s << 0 << Answers << QByteArray("dark\n");
    QTest::newRow("a value from the future") << u"dark"_s << 17 << Answers << QByteArray("dark\n");
    QTest::newRow("doesn't know") << u"dark"_s << 2 << KnowsNothing << QByteArray("dark\n");
    QTest::newRow("never answers") << u"dark"_s << 2 << KeepsSilent << QByteArray("dark\n");
}

void SystemAppearanceTest::asksThePortalAtTheStart() {
    QFETCH(QString, palette);
    QFETCH(int, scheme);
    QFETCH(Portal::Manner, manner);
    QFETCH(QByteArray, wish);
    const SessionBus bus;
    const SecondProcess process(
        u"start with portal"_s,
        {palette, QString::number(scheme), QString::number(static_cast<int>(manner))},
        environmentWith(bus.address()));
    QCOMPARE(process.output(), wish);
    QCOMPARE(process.status(), 0);
}

void SystemAppearanceTest::keepsToThePaletteWithoutAPortal_data() {
    QTest::addColumn<QString>("palette");
    QTest::newRow("light") << u"light"_s;
    QTest::newRow("dark") << u"dark"_s;
}

void SystemAppearanceTest::keepsToThePaletteWithoutAPortal() {
    QFETCH(QString, palette);
    const SessionBus bus;
    const SecondProcess process(u"start without portal"_s, {palette},
                                environmentWith(bus.address()));
    QCOMPARE(process.output(), palette.toUtf8() + '\n');
    QCOMPARE(process.status(), 0);
}

void SystemAppearanceTest::keepsToThePaletteWithoutABus() {
    const SecondProcess process(u"start without portal"_s, {u"dark"_s},
                                environmentWith(u"unix:path=/nonexistent/bus"_s));
    QCOMPARE(process.output(), QByteArray("dark\n"));
    QCOMPARE(process.status(), 0);
}

void SystemAppearanceTest::followsThePortal() {
    const SessionBus bus;
    const SecondProcess process(u"follow"_s, {}, environmentWith(bus.address()));
    QCOMPARE(process.output(), QByteArray("light\ndark\nlight\ndark\n"));
    QCOMPARE(process.status(), 0);
}

int main(int argc, char* argv[]) {
    return SecondProcess::main<SystemAppearanceTest>(
        argc, argv,
        {{u"start with portal"_s, startWithPortal},
         {u"start without portal"_s, startWithoutPortal},
         {u"follow"_s, follow}});
}

#include "tst_systemappearance.moc"
