// SPDX-License-Identifier: MIT
#include "SecondProcess.h"
#include "SessionBus.h"
#include "style/Look.h"
#include "style/SystemAppearance.h"
#include "style/Theme.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <QElapsedTimer>
#include <QSemaphore>
#include <QSignalSpy>
#include <QStyle>
#include <QThread>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

const QString portalPath = u"/org/freedesktop/portal/desktop"_s;
const QString settings = u"org.freedesktop.portal.Settings"_s;
const QString appearanceGroup = u"org.freedesktop.appearance"_s;

using Groups = QMap<QString, QVariantMap>;

} // namespace

/// The part of the desktop portal that knows what the user wishes.
class Portal final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    enum class Manner { Answers, WrapsTwice, KnowsNothing, KeepsSilent };

    Portal(QVariantMap wishes, Manner manner) : m_wishes(std::move(wishes)), m_manner(manner) {}

    void change(const QString& group, const QString& key, uint value) const {
        QDBusMessage signal = QDBusMessage::createSignal(portalPath, settings, u"SettingChanged"_s);
        signal << group << key << QVariant::fromValue(QDBusVariant(value));
        QDBusConnection(u"portal"_s).send(signal);
    }

public Q_SLOTS:

    void ReadAll(const QStringList& groups, const QDBusMessage& message) const {
        message.setDelayedReply(true);
        if (m_manner == Manner::KeepsSilent)
            return;
        Groups all{{u"org.gnome.desktop.interface"_s, {{u"contrast"_s, 1U}}}};
        if (m_manner != Manner::KnowsNothing && groups == QStringList{appearanceGroup})
            all.insert(appearanceGroup, m_wishes);
        QDBusConnection(u"portal"_s).send(message.createReply(QVariant::fromValue(all)));
    }

private:
    QVariantMap m_wishes;
    Manner m_manner;
};

namespace {

/// What is written as "color-scheme=1 contrast=1", as the portal has it.
QVariantMap wishesIn(const QString& text, Portal::Manner manner) {
    QVariantMap wishes;
    for (const QString& part : text.split(u' ', Qt::SkipEmptyParts)) {
        const QVariant value(part.section(u'=', 1).toUInt());
        wishes.insert(part.section(u'=', 0, 0), manner == Portal::Manner::WrapsTwice
                                                    ? QVariant::fromValue(QDBusVariant(value))
                                                    : value);
    }
    return wishes;
}

/// The portal on a thread of its own, since whoever asks it waits for the answer.
class PortalThread final {
public:
    PortalThread(const QString& wishes, Portal::Manner manner) {
        qDBusRegisterMetaType<Groups>();
        m_portal = new Portal(wishesIn(wishes, manner), manner);
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

    void change(const QString& group, const QString& key, uint value) {
        run([&, this] { m_portal->change(group, key, value); });
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

void print(const SystemAppearance& appearance) {
    std::fputs(appearance.isDark() ? "dark" : "light", stdout);
    if (appearance.contrast() == Theme::Contrast::Higher)
        std::fputs(", higher contrast", stdout);
    if (appearance.reducesMotion())
        std::fputs(", reduced motion", stdout);
    std::fputs("\n", stdout);
}

/// What a portal that answers makes of the toolkit's palette: palette, wishes, manner.
int startWithPortal(const QStringList& arguments) {
    const Application application(arguments.at(0));
    const PortalThread portal(arguments.at(1),
                              static_cast<Portal::Manner>(arguments.at(2).toInt()));
    QElapsedTimer timer;
    timer.start();
    const SystemAppearance appearance;
    const qint64 needed = timer.elapsed();
    print(appearance);
    constexpr qint64 patience = 2'000;
    return needed < patience ? 0 : 1;
}

int startWithoutPortal(const QStringList& arguments) {
    const Application application(arguments.at(0));
    const SystemAppearance appearance;
    print(appearance);
    return 0;
}

int follow(const QStringList& /*arguments*/) {
    const Application application(u"light"_s);
    PortalThread portal(u"color-scheme=2"_s, Portal::Manner::Answers);
    const SystemAppearance wishes;
    QSignalSpy changed(&wishes, &SystemAppearance::changed);
    print(wishes);
    portal.change(u"org.gnome.desktop.interface"_s, u"color-scheme"_s, 1);
    portal.change(appearanceGroup, u"accent-color"_s, 1);
    for (const auto& [key, value] : QList<std::pair<QString, uint>>{{u"color-scheme"_s, 1},
                                                                    {u"contrast"_s, 1},
                                                                    {u"reduced-motion"_s, 1},
                                                                    {u"color-scheme"_s, 2},
                                                                    {u"contrast"_s, 0},
                                                                    {u"reduced-motion"_s, 0},
                                                                    {u"color-scheme"_s, 1}}) {
        portal.change(appearanceGroup, key, value);
        if (!changed.wait())
            return 1;
        print(wishes);
    }
    return changed.count() == 7 ? 0 : 2;
}

/// How the application looks that follows the wishes.
int lookAsWished(const QStringList& /*arguments*/) {
    int argc = 1;
    char name[] = "look";
    char* argv[] = {name, nullptr};
    const QApplication application(argc, argv);
    Look::setUp();
    PortalThread portal(u"color-scheme=1 contrast=1 reduced-motion=1"_s, Portal::Manner::Answers);
    const SystemAppearance wishes;
    Look::follow(wishes);
    const auto isStill = [] {
        return QApplication::style()->styleHint(QStyle::SH_Widget_Animation_Duration) == 0;
    };
    const auto theme = [] { return &Theme::of(QApplication::palette()); };
    if (theme() != &Theme::dark(Theme::Contrast::Higher) || !isStill())
        return 1;
    QSignalSpy changed(&wishes, &SystemAppearance::changed);
    for (const QString& key : {u"contrast"_s, u"reduced-motion"_s}) {
        portal.change(appearanceGroup, key, 0);
        if (!changed.wait())
            return 2;
    }
    return theme() == &Theme::dark() && !isStill() ? 0 : 3;
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
    void looksAsWished();
};

void SystemAppearanceTest::asksThePortalAtTheStart_data() {
    QTest::addColumn<QString>("palette");
    QTest::addColumn<QString>("wishes");
    QTest::addColumn<Portal::Manner>("manner");
    QTest::addColumn<QByteArray>("found");
    using enum Portal::Manner;
    const auto add = [](const char* name, const QString& palette, const QString& wishes,
                        Portal::Manner manner, const char* found) {
        QTest::newRow(name) << palette << wishes << manner << QByteArray(found);
    };
    add("dark", u"light"_s, u"color-scheme=1"_s, Answers, "dark\n");
    add("light", u"dark"_s, u"color-scheme=2"_s, Answers, "light\n");
    add("dark, wrapped twice", u"light"_s, u"color-scheme=1"_s, WrapsTwice, "dark\n");
    add("no preference, light palette", u"light"_s, u"color-scheme=0"_s, Answers, "light\n");
    add("no preference, dark palette", u"dark"_s, u"color-scheme=0"_s, Answers, "dark\n");
    add("a value from the future", u"dark"_s, u"color-scheme=17"_s, Answers, "dark\n");
    add("doesn't know", u"dark"_s, u"color-scheme=2"_s, KnowsNothing, "dark\n");
    add("never answers", u"dark"_s, u"color-scheme=2"_s, KeepsSilent, "dark\n");
    add("contrast", u"light"_s, u"color-scheme=1 contrast=1"_s, Answers, "dark, higher contrast\n");
    add("motion", u"light"_s, u"reduced-motion=1"_s, Answers, "light, reduced motion\n");
    add("all of it, wrapped twice", u"light"_s, u"color-scheme=1 contrast=1 reduced-motion=1"_s,
        WrapsTwice, "dark, higher contrast, reduced motion\n");
    add("neither", u"light"_s, u"contrast=0 reduced-motion=0"_s, Answers, "light\n");
    add("contrasts from the future", u"light"_s, u"contrast=2 reduced-motion=2"_s, Answers,
        "light\n");
}

void SystemAppearanceTest::asksThePortalAtTheStart() {
    QFETCH(QString, palette);
    QFETCH(QString, wishes);
    QFETCH(Portal::Manner, manner);
    QFETCH(QByteArray, found);
    const SessionBus bus;
    const SecondProcess process(u"start with portal"_s,
                                {palette, wishes, QString::number(static_cast<int>(manner))},
                                environmentWith(bus.address()));
    QCOMPARE(process.output(), found);
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
    QCOMPARE(process.output(),
             QByteArray("light\ndark\ndark, higher contrast\n"
                        "dark, higher contrast, reduced motion\n"
                        "light, higher contrast, reduced motion\nlight, reduced motion\n"
                        "light\ndark\n"));
    QCOMPARE(process.status(), 0);
}

void SystemAppearanceTest::looksAsWished() {
    const SessionBus bus;
    const SecondProcess process(u"look"_s, {}, environmentWith(bus.address()));
    QCOMPARE(process.status(), 0);
}

int main(int argc, char* argv[]) {
    return SecondProcess::main<SystemAppearanceTest>(
        argc, argv,
        {{u"start with portal"_s, startWithPortal},
         {u"start without portal"_s, startWithoutPortal},
         {u"follow"_s, follow},
         {u"look"_s, lookAsWished}});
}

#include "tst_systemappearance.moc"
