// SPDX-License-Identifier: MIT
#include "DesktopServiceDouble.h"
#include "FakeBrew.h"
#include "FreshHome.h"
#include "LangManager.h"
#include "LumoraApp.h"
#include "SecondProcess.h"
#include "SilentBus.h"
#include "shell/ContentView.h"
#include "style/LumoraStyle.h"
#include "style/Theme.h"
#include "style/Typography.h"

#include <QCoroTask>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDir>
#include <QElapsedTimer>
#include <QIcon>
#include <QProcess>
#include <QPushButton>
#include <QToolTip>

#include <cstdio>

using namespace Qt::StringLiterals;

/// What only shows in a whole application, each time in a process of its own.
class LumoraAppTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void answersWithoutADisplay_data();
    void answersWithoutADisplay();
    void looksAsItIsTold_data();
    void looksAsItIsTold();
    void followsTheDesktop();
    void speaksOneLanguage();
    void showsTheBundlesPicture();
    void asksForReleasesOnlyInABundle_data();
    void asksForReleasesOnlyInABundle();
    void usesNoBrewButTheOneItIsGiven_data();
    void usesNoBrewButTheOneItIsGiven();
    void leavesAtOnce_data();
    void leavesAtOnce();
    void keepsTheDesktopInformed();
    void leavesNobodyAwakeWhenKilled();
    void worksBesideASilentBus();
    void givesBackTheMemoryThatReportsTook();

private:
    /// Puts this program into a bundle, and gives its path there.
    [[nodiscard]] QString makeBundle() const;
    /// What a copy of this program prints in a part.
    [[nodiscard]] static QByteArray outputOf(const QString& program, const QString& part);

    FreshHome m_home;
};

namespace {

/// Stands in for lumora-fetch: notes what it is asked for, and goes with whoever asked.
constexpr const char* fetch = R"(#!/bin/sh
echo "$2" >> "$HOME/asked"
cat > /dev/null
echo gone >> "$HOME/asked"
)";

QString fetchPath() {
    return QDir::homePath() + u"/fetch"_s;
}

/// What has been asked for so far, each in a line, and who is gone.
QByteArray asked() {
    QFile file(QDir::homePath() + u"/asked"_s);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The application as main() puts it together.
class Application final {
public:
    explicit Application(const QStringList& arguments) {
        m_words.append("Lumora");
        for (const QString& argument : arguments)
            m_words.append(argument.toUtf8());
        for (QByteArray& word : m_words)
            m_argv.push_back(word.data());
        m_argc = static_cast<int>(m_argv.size());
        m_app.emplace(m_argc, m_argv.data(),
                      ReleaseSource{.api = u"https://releases.example"_s,
                                    .owner = u"someone"_s,
                                    .program = fetchPath()});
    }

    [[noreturn]] void run() { m_app->run(); }

    [[nodiscard]] BrewManager& brewManager() { return m_app->brewManager(); }

    [[nodiscard]] static MainWindow& window() {
        for (QWidget* const widget : QApplication::topLevelWidgets()) {
            if (auto* const window = qobject_cast<MainWindow*>(widget))
                return *window;
        }
        qFatal("There is no window");
    }

private:
    QByteArrayList m_words;
    std::vector<char*> m_argv;
    int m_argc{};
    std::optional<LumoraApp> m_app;
};

/// The name of the theme that a colour is of.
QByteArray themeOf(const QPalette& palette, QPalette::ColorRole role) {
    const QColor color = palette.color(role);
    if (color == Theme::light().palette().color(role))
        return "light";
    return color == Theme::dark().palette().color(role) ? "dark" : color.name().toLatin1();
}

QByteArray colors() {
    return themeOf(QApplication::palette(), QPalette::Window) + ", tool tips " +
           themeOf(QToolTip::palette(), QPalette::ToolTipBase) + '\n';
}

/// Whether an icon is much the same as a picture, whoever has drawn them.
bool isLike(const QIcon& icon, const QImage& picture) {
    constexpr int side = 64;
    constexpr auto format = QImage::Format_RGBA8888;
    const QImage drawn = icon.pixmap(side).toImage().convertToFormat(format);
    const QImage wanted = picture.scaled(side, side, Qt::KeepAspectRatio, Qt::SmoothTransformation)
                              .convertToFormat(format);
    if (drawn.size() != wanted.size())
        return false;
    qint64 difference = 0;
    for (qsizetype i = 0; i < wanted.sizeInBytes(); ++i)
        difference += qAbs(drawn.constBits()[i] - wanted.constBits()[i]);
    constexpr qint64 mostOnAverage = 8;
    return difference <= mostOnAverage * wanted.sizeInBytes();
}

/// What the toolkit's menus say in each of the languages.
int speak(const QStringList& arguments) {
    const Application application(arguments);
    for (const Lang lang : {Lang::en, Lang::ko, Lang::ja}) {
        LangManager::shared().setCurrent(lang);
        std::printf("%s\n", qPrintable(QCoreApplication::translate("QLineEdit", "&Copy")));
    }
    return EXIT_SUCCESS;
}

int look(const QStringList& arguments) {
    const Application application(arguments);
    std::fputs(colors().constData(), stdout);
    const bool isStyled = qobject_cast<LumoraStyle*>(QApplication::style()) != nullptr;
    const bool hasIcon = isLike(Application::window().windowIcon(),
                                QImage(LUMORA_SOURCE_DIR "/assets/Lumora.png"_L1));
    const auto isAsLarge = [](const QFont& font, double size) {
        return qFuzzyCompare(font.pointSizeF(), Typography::font(size).pointSizeF());
    };
    const bool hasFonts = isAsLarge(QApplication::font(), Typography::body) &&
                          isAsLarge(QToolTip::font(), Typography::caption);
    std::printf("style %d, icon %d, fonts %d, entry %s\n", isStyled, hasIcon, hasFonts,
                qPrintable(QGuiApplication::desktopFileName()));
    return EXIT_SUCCESS;
}

int follow(const QStringList& arguments) {
    const Application application(arguments);
    std::fputs(colors().constData(), stdout);
    // Stands in for the desktop portal.
    QDBusConnection portal = QDBusConnection::connectToBus(
        qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"), u"portal"_s);
    if (!portal.registerService(u"org.freedesktop.portal.Desktop"_s))
        return EXIT_FAILURE;
    QDBusMessage change =
        QDBusMessage::createSignal(u"/org/freedesktop/portal/desktop"_s,
                                   u"org.freedesktop.portal.Settings"_s, u"SettingChanged"_s);
    constexpr uint preferDark = 1;
    change << u"org.freedesktop.appearance"_s << u"color-scheme"_s
           << QVariant::fromValue(QDBusVariant(preferDark));
    const QByteArray before = colors();
    const bool hasChanged = QTest::qWaitFor([&] {
        portal.send(change);
        return colors() != before;
    });
    std::fputs(colors().constData(), stdout);
    return hasChanged ? EXIT_SUCCESS : EXIT_FAILURE;
}

int showAbout(const QStringList& arguments) {
    const Application application(arguments);
    MainWindow& window = Application::window();
    window.show();
    window.content()->setSelectedCategory(SidebarCategory::about);
    QWidget* icon = nullptr;
    if (!QTest::qWaitFor([&] { return (icon = window.findChild<QWidget*>(u"aboutIcon"_s)); }))
        return EXIT_FAILURE;
    const QImage picture = icon->grab().toImage();
    std::puts(qPrintable(picture.pixelColor(picture.rect().center()).name()));
    return EXIT_SUCCESS;
}

/// Stays until a check has begun that follows the application's own.
int keepUpToDate(const QStringList& arguments) {
    const Application application(arguments);
    UpdateAlertBoxes alerts(nullptr);
    AutoUpdater later(
        {.api = u"https://later.example"_s, .owner = u"someone"_s, .program = fetchPath()},
        ApplicationBundle(u"/nonexistent"_s), alerts);
    later.checkAfterLaunch();
    constexpr int patience = 60'000;
    const auto hasBegun = [] { return asked().contains("later.example"); };
    return QTest::qWaitFor(hasBegun, patience) ? EXIT_SUCCESS : EXIT_FAILURE;
}

/// Only a window with a brew has a sidebar.
int findBrew(const QStringList& arguments) {
    const Application application(arguments);
    std::puts(Application::window().content()->sidebar() != nullptr ? "found" : "not found");
    return EXIT_SUCCESS;
}

#ifdef __GLIBC__

/// In KiB, without what is shared with files.
qint64 residentMemory() {
    QFile status(u"/proc/self/status"_s);
    if (!status.open(QFile::ReadOnly))
        qFatal("There is no telling");
    const QByteArray text = status.readAll();
    return text.mid(text.indexOf("RssAnon:") + 8).trimmed().split(' ').constFirst().toLongLong();
}

/// Has its brew print short reports first, then, from the same file, long ones.
[[noreturn]] int loadALot(const QStringList& arguments) {
    Application application(arguments.sliced(1));
    const auto load = [&](qsizetype padding) {
        QFile report(arguments.constFirst());
        if (!report.open(QFile::WriteOnly))
            qFatal("There is no report");
        report.write(R"({"formulae": [], "casks": [], "padding": ")" + QByteArray(padding, 'x') +
                     "\"}");
        report.close();
        QCoro::waitFor(application.brewManager().refreshAll());
        if (const auto& failure = *application.brewManager().errorMessage)
            qFatal("%s", qPrintable(*failure));
    };
    constexpr qsizetype mebibyte = 1024 * 1024;
    load(1);
    const qint64 before = residentMemory();
    load(12 * mebibyte);
    constexpr qint64 most = 4 * 1024;
    const auto isGivenBack = [&] { return residentMemory() - before < most; };
    const bool isOver = QTest::qWaitFor(isGivenBack);
    std::printf("%lld KiB more\n", residentMemory() - before);
    std::fflush(stdout);
    std::_Exit(isOver ? EXIT_SUCCESS : EXIT_FAILURE);
}

#endif

/// Closes the window as soon as a check for releases, or a brew that leaves this file, is at work.
int leave(const QStringList& arguments) {
    Application application(arguments.sliced(1));
    MainWindow& window = Application::window();
    const QString mark = arguments.constFirst();
    if (mark.isEmpty())
        Q_EMIT window.updateCheckRequested();
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &window, [&] {
        if (mark.isEmpty() ? !asked().isEmpty() : QFile::exists(mark))
            window.close();
    });
    constexpr int often = 10;
    timer.start(often);
    application.run();
}

/// Upgrades everything while another window is the active one, and stays until it is killed.
int upgrade(const QStringList& arguments) {
    Application application(arguments);
    MainWindow& window = Application::window();
    window.show();
    window.content()->setSelectedCategory(SidebarCategory::updates);
    auto& button = *window.findChild<QPushButton*>(u"updateAllButton"_s);
    constexpr int patience = 60'000;
    const auto waitUntil = [&](bool isEnabled) {
        return QTest::qWaitFor(
            [&] { return button.isVisible() && button.isEnabled() == isEnabled; }, patience);
    };
    if (!waitUntil(true))
        return EXIT_FAILURE;
    QWidget elsewhere;
    elsewhere.show();
    elsewhere.activateWindow();
    button.click();
    // The page loads its list anew in between.
    if (!waitUntil(false) || !waitUntil(true))
        return EXIT_FAILURE;
    std::puts("upgraded");
    std::fflush(stdout);
    application.run();
}

/// The same as a process of its own, and the brew that it uses.
class Upgrade final {
public:
    Upgrade() {
        m_brew.setBody(
            m_brew.recordArguments() +
            "case $1 in outdated) echo '{\"formulae\": [{\"name\": \"wget\", "
            "\"installed_versions\": [\"1\"], \"current_version\": \"2\", \"pinned\": false, "
            "\"pinned_version\": null}], \"casks\": []}';; upgrade) " +
            m_brew.waitFor(u"gate"_s) + "esac\n");
        const QByteArray command = SecondProcess::scriptLine(
            u"upgrade"_s, {u"--brew"_s, m_brew.path(), u"--appearance"_s, u"light"_s});
        m_process.start(u"/bin/sh"_s, {u"-c"_s, QString::fromUtf8(command)});
    }

    ~Upgrade() { kill(); }

    /// Waits until brew is at work.
    [[nodiscard]] bool hasStarted() const {
        return QTest::qWaitFor(
            [this] { return m_brew.recordedRuns().contains(QStringList{u"upgrade"_s}); }, patience);
    }

    Q_DISABLE_COPY_MOVE(Upgrade)

    /// Lets brew end, and waits until the window has seen it.
    [[nodiscard]] bool finish() {
        m_brew.open(u"gate"_s);
        return QTest::qWaitFor([this] { return m_process.readAllStandardOutput() == "upgraded\n"; },
                               patience);
    }

    void kill() {
        m_process.kill();
        m_process.waitForFinished();
    }

private:
    static constexpr int patience = 60'000;

    FakeBrew m_brew;
    QProcess m_process;
};

/// An application whose brew has nothing to say.
QStringList with(const QStringList& arguments) {
    return QStringList{u"--brew"_s, u"/bin/true"_s} + arguments;
}

} // namespace

void LumoraAppTest::initTestCase() {
    m_home.write(u"fetch"_s, fetch);
    QVERIFY(QFile(fetchPath()).setPermissions(QFile::ReadOwner | QFile::ExeOwner));
}

void LumoraAppTest::init() {
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/bus");
    QFile::remove(m_home.path() + u"/asked"_s);
}

void LumoraAppTest::answersWithoutADisplay_data() {
    QTest::addColumn<QString>("argument");
    QTest::addColumn<int>("status");
    constexpr int wrongUsage = 2;
    QTest::newRow("help") << u"--help"_s << EXIT_SUCCESS;
    QTest::newRow("all help") << u"--help-all"_s << EXIT_SUCCESS;
    QTest::newRow("version") << u"--version"_s << EXIT_SUCCESS;
    QTest::newRow("stray argument") << u"wget"_s << wrongUsage;
    QTest::newRow("unknown option") << u"--colour"_s << wrongUsage;
}

void LumoraAppTest::answersWithoutADisplay() {
    QFETCH(const QString, argument);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const QString& name : {u"DISPLAY"_s, u"QT_QPA_PLATFORM"_s, u"WAYLAND_DISPLAY"_s})
        environment.remove(name);
    const SecondProcess process(u"look"_s, {argument}, environment);
    QTEST(process.status(), "status");
}

void LumoraAppTest::looksAsItIsTold_data() {
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("colors");
    const QByteArray light = "light, tool tips light\n";
    const QByteArray dark = "dark, tool tips dark\n";
    QTest::newRow("light") << QStringList{u"--appearance"_s, u"light"_s} << light;
    QTest::newRow("dark") << QStringList{u"--appearance"_s, u"dark"_s} << dark;
    QTest::newRow("beside the toolkit's own options")
        << QStringList{u"-platform"_s, u"offscreen"_s, u"-reverse"_s, u"--appearance"_s, u"dark"_s}
        << dark;
    // A desktop without wishes.
    QTest::newRow("as the desktop does") << QStringList() << light;
}

void LumoraAppTest::looksAsItIsTold() {
    QFETCH(const QStringList, arguments);
    QFETCH(const QByteArray, colors);
    const SecondProcess process(u"look"_s, with(arguments));
    QCOMPARE(process.output(), colors + "style 1, icon 1, fonts 1, entry lumora\n");
    QCOMPARE(process.status(), EXIT_SUCCESS);
}

void LumoraAppTest::followsTheDesktop() {
    const SessionBus bus;
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus.address().toUtf8());
    const SecondProcess process(u"follow"_s, with({}));
    QCOMPARE(process.output(), "light, tool tips light\ndark, tool tips dark\n");
    QCOMPARE(process.status(), EXIT_SUCCESS);
}

void LumoraAppTest::speaksOneLanguage() {
    const SecondProcess process(u"speak"_s, with({}));
    QCOMPARE(process.output(), "&Copy\n복사(&C)\nコピー(&C)\n");
    QCOMPARE(process.status(), EXIT_SUCCESS);
}

void LumoraAppTest::showsTheBundlesPicture() {
    const QString program = makeBundle();
    QVERIFY(QDir(m_home.path()).mkpath(u"Lumora.app/Contents/Resources"_s));
    QImage picture(256, 256, QImage::Format_RGB32);
    picture.fill(Qt::magenta);
    QVERIFY(picture.save(m_home.path() + u"/Lumora.app/Contents/Resources/Lumora.png"_s));
    QCOMPARE(outputOf(program, u"show about"_s), "#ff00ff\n");
}

void LumoraAppTest::asksForReleasesOnlyInABundle_data() {
    QTest::addColumn<bool>("isBundle");
    QTest::addColumn<bool>("isAsking");
#ifdef LUMORA_SELF_UPDATE
    QTest::newRow("a bundle") << true << true;
#else
    QTest::newRow("a bundle") << true << false;
#endif
    QTest::newRow("no bundle") << false << false;
}

void LumoraAppTest::asksForReleasesOnlyInABundle() {
    QFETCH(const bool, isBundle);
    QFETCH(const bool, isAsking);
    const QString program = isBundle ? makeBundle() : QCoreApplication::applicationFilePath();
    QCOMPARE(outputOf(program, u"keep up to date"_s), QByteArray());
    const QByteArray address = "https://releases.example/";
    if (isAsking)
        QTRY_VERIFY2(asked().contains(address), asked().constData());
    else
        QVERIFY2(!asked().contains(address), asked().constData());
}

QString LumoraAppTest::makeBundle() const {
    const QString program = ApplicationBundle::executableIn(m_home.path() + u"/Lumora.app"_s);
    QDir().mkpath(QFileInfo(program).path());
    if (!QFile::exists(program) && !QFile::copy(QCoreApplication::applicationFilePath(), program))
        qFatal("No bundle could be made");
    return program;
}

QByteArray LumoraAppTest::outputOf(const QString& program, const QString& part) {
    QByteArray command = SecondProcess::scriptLine(part, with({}));
    const QFileInfo own(QCoreApplication::arguments().constFirst());
    command.replace(own.absoluteFilePath().toUtf8(), program.toUtf8());
    QProcess process;
    process.start(u"/bin/sh"_s, {u"-c"_s, QString::fromUtf8(command)});
    constexpr int patience = 120'000;
    if (!process.waitForFinished(patience) || process.exitCode() != EXIT_SUCCESS)
        return "failed: " + process.readAllStandardError();
    return process.readAllStandardOutput();
}

void LumoraAppTest::usesNoBrewButTheOneItIsGiven_data() {
    QTest::addColumn<QString>("path");
    QTest::addColumn<QByteArray>("answer");
    QTest::newRow("there") << u"/bin/true"_s << QByteArray("found\n");
    QTest::newRow("not there") << u"/nonexistent/brew"_s << QByteArray("not found\n");
}

void LumoraAppTest::usesNoBrewButTheOneItIsGiven() {
    QFETCH(const QString, path);
    // What the login shell would find.
    const FakeBrew brew;
    m_home.write(u".zprofile"_s, "path=('" + brew.folder().toUtf8() + "' $path)\n");
    const SecondProcess process(u"find brew"_s, {u"--brew"_s, path});
    QTEST(process.output(), "answer");
}

void LumoraAppTest::leavesAtOnce_data() {
    QTest::addColumn<bool>("isBrewAtWork");
    QTest::newRow("while releases are asked for") << false;
    QTest::newRow("while brew works") << true;
}

void LumoraAppTest::leavesAtOnce() {
    QFETCH(const bool, isBrewAtWork);
    const FakeBrew brew;
    const QString mark = m_home.path() + u"/at-work"_s;
    const QString end = m_home.path() + u"/end"_s;
    brew.setBody(": > '" + mark.toUtf8() + "'\n" + brew.waitFor(u"gate"_s) + "echo done\n: > '" +
                 end.toUtf8() + "'\n");
    const QStringList arguments = isBrewAtWork ? QStringList{mark, u"--brew"_s, brew.path()}
                                               : QStringList{QString()} + with({});
    QElapsedTimer timer;
    timer.start();
    const SecondProcess process(u"leave"_s, arguments);
    brew.open(u"gate"_s);
    QCOMPARE(process.status(), EXIT_SUCCESS);
    constexpr qint64 patience = 20'000;
    QVERIFY2(timer.elapsed() < patience, qPrintable(QString::number(timer.elapsed())));
    // A brew that nobody listens to would die of its first word.
    if (isBrewAtWork)
        QTRY_VERIFY(QFile::exists(end));
    else
        QTRY_VERIFY2(asked().endsWith("\ngone\n"), asked().constData());
}

void LumoraAppTest::keepsTheDesktopInformed() {
    const SessionBus bus;
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus.address().toUtf8());
    const DesktopServiceDouble session(bus, u"org.gnome.SessionManager"_s,
                                       u"/org/gnome/SessionManager"_s);
    DesktopServiceDouble notifications(bus, u"org.freedesktop.Notifications"_s,
                                       u"/org/freedesktop/Notifications"_s);
    notifications.setAnswer(u"GetCapabilities"_s, QStringList{u"body"_s});
    Upgrade upgrade;
    QVERIFY(upgrade.hasStarted());
    QTRY_COMPARE(session.calls(),
                 QStringList{u"Inhibit (susu) 'lumora' '0' 'Upgrading all packages...' '4'"_s});
    QVERIFY(upgrade.finish());
    QTRY_COMPARE(session.calls().value(1), u"Uninhibit (u) '1'"_s);
    QTRY_COMPARE(notifications.calls().size(), 2);
    QCOMPARE(notifications.arguments().value(4).toString(), u"All packages upgraded"_s);
}

void LumoraAppTest::leavesNobodyAwakeWhenKilled() {
    const SessionBus bus;
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus.address().toUtf8());
    const DesktopServiceDouble session(bus, u"org.gnome.SessionManager"_s,
                                       u"/org/gnome/SessionManager"_s);
    Upgrade upgrade;
    QVERIFY(upgrade.hasStarted());
    QTRY_COMPARE(session.calls().size(), 1);
    QVERIFY(session.isCallerThere());
    upgrade.kill();
    // Brew goes on, yet the service sees that whoever asked for it is gone.
    QTRY_VERIFY(!session.isCallerThere());
}

void LumoraAppTest::worksBesideASilentBus() {
    const SilentBus bus;
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus.address());
    Upgrade upgrade;
    QVERIFY(upgrade.hasStarted());
    QTRY_VERIFY(bus.hasCaller());
    QVERIFY(upgrade.finish());
}

void LumoraAppTest::givesBackTheMemoryThatReportsTook() {
#if defined(__GLIBC__) && !defined(__SANITIZE_ADDRESS__)
    FakeBrew brew;
    const QString report = brew.folder() + u"/report"_s;
    // Of taps the text is the list.
    brew.setBody("[ $1 = tap ] || exec cat " + report.toUtf8() + '\n');
    const SecondProcess process(u"load a lot"_s, {report, u"--brew"_s, brew.path()});
    qInfo("%s", process.output().trimmed().constData());
    QCOMPARE(process.status(), EXIT_SUCCESS);
#else
    QSKIP("Only glibc's own allocator is told to.");
#endif
}

int main(int argc, char* argv[]) {
    return SecondProcess::main<LumoraAppTest>(argc, argv,
                                              {{u"look"_s, look},
                                               {u"follow"_s, follow},
                                               {u"speak"_s, speak},
                                               {u"show about"_s, showAbout},
                                               {u"keep up to date"_s, keepUpToDate},
                                               {u"find brew"_s, findBrew},
                                               {u"upgrade"_s, upgrade},
#ifdef __GLIBC__
                                               {u"load a lot"_s, loadALot},
#endif
                                               {u"leave"_s, leave}});
}

#include "tst_lumoraapp.moc"
