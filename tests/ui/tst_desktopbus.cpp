// SPDX-License-Identifier: MIT
#include "DesktopServiceDouble.h"
#include "FreshHome.h"
#include "SecondProcess.h"
#include "SilentBus.h"
#include "shell/DesktopBus.h"

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

const QString serviceName = u"org.example.Service"_s;
const QString servicePath = u"/org/example/Service"_s;

DesktopCall question(const QString& method) {
    return {serviceName, servicePath, serviceName, method};
}

} // namespace

/// The bus on which a process calls is chosen once, so that each has a process of its own.
class DesktopBusTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void tellsTheAnswers();
    void keepsSilentWithoutABus_data();
    void keepsSilentWithoutABus();
    void waitsForNoBus();
    void tellsNothingAfterItsEnd();

private:
    static void useBus(const QString& address) {
        qputenv("DBUS_SESSION_BUS_ADDRESS", address.toUtf8());
    }

    const FreshHome m_home;
};

namespace {

/// A part of a second process that has an event loop.
SecondProcess::Part inApplication(int (*play)()) {
    return [play](const QStringList& /*arguments*/) {
        int argc = 1;
        char name[] = "part";
        char* argv[]{name, nullptr};
        const QCoreApplication application(argc, argv);
        return play();
    };
}

/// Calls before the bus is there and after, of a service that refuses at last.
int ask() {
    const SessionBus bus;
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus.address().toUtf8());
    DesktopServiceDouble service(bus, serviceName, servicePath);
    DesktopBus desktop;
    QStringList answers;
    const auto note = [&answers](const std::optional<QVariantList>& answer) {
        answers.append(answer ? answer->value(0).toString() : u"refused"_s);
    };
    desktop.call(question(u"First"_s), note);
    desktop.call(question(u"Second"_s));
    desktop.call(question(u"Third"_s), note);
    bool isThere = QTest::qWaitFor([&] { return answers.size() == 2; });
    service.setManner(DesktopServiceDouble::Manner::Refuses);
    desktop.call(question(u"Fourth"_s), note);
    isThere = isThere && QTest::qWaitFor([&] { return answers.size() == 3; });
    std::puts(qUtf8Printable(service.calls().join(u',')));
    std::puts(qUtf8Printable(answers.join(u',')));
    return isThere ? EXIT_SUCCESS : EXIT_FAILURE;
}

int askNobody() {
    DesktopBus desktop;
    bool isAnswered = false;
    const auto note = [&](const auto&) { isAnswered = true; };
    desktop.call(question(u"Ask"_s), note);
    // Waits for the thread that finds out.
    const bool isConnected = QDBusConnection::sessionBus().isConnected();
    QCoreApplication::processEvents();
    desktop.call(question(u"Ask again"_s), note);
    QCoreApplication::processEvents();
    // Nor is anything kept for an answer that can't come.
    const bool isWaiting = !desktop.children().isEmpty();
    return isConnected || isAnswered || isWaiting ? EXIT_FAILURE : EXIT_SUCCESS;
}

/// Goes on while the bus, which takes the connection, says nothing at all.
int goOn() {
    const SilentBus bus;
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus.address());
    bool isAnswered = false;
    DesktopBus desktop;
    desktop.call(question(u"Ask"_s), [&](const auto&) { isAnswered = true; });
    // The connection is there and the thread that made it waits.
    if (!QTest::qWaitFor([&] { return bus.hasCaller(); }))
        return EXIT_FAILURE;
    desktop.call(question(u"Ask again"_s));
    return isAnswered ? EXIT_FAILURE : EXIT_SUCCESS;
}

/// Ends a bus with a call that waits for the connection and one that waits for an answer.
int end() {
    const SessionBus bus;
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus.address().toUtf8());
    DesktopServiceDouble service(bus, serviceName, servicePath,
                                 DesktopServiceDouble::Manner::KeepsSilent);
    bool isAnswered = false;
    const auto note = [&](const auto&) { isAnswered = true; };
    std::optional<DesktopBus> desktop(std::in_place);
    desktop->call(question(u"First"_s), note);
    desktop.emplace();
    desktop->call(question(u"Second"_s), note);
    if (!QTest::qWaitFor([&] { return !service.calls().isEmpty(); }))
        return EXIT_FAILURE;
    desktop.reset();
    service.breakSilence();
    service.settle();
    std::puts(qUtf8Printable(service.calls().join(u',')));
    return isAnswered ? EXIT_FAILURE : EXIT_SUCCESS;
}

} // namespace

void DesktopBusTest::tellsTheAnswers() {
    const SecondProcess process(u"ask"_s);
    QCOMPARE(process.output(), "First (),Second (),Third (),Fourth ()\n"
                               "1,3,refused\n");
    QCOMPARE(process.status(), EXIT_SUCCESS);
}

void DesktopBusTest::keepsSilentWithoutABus_data() {
    QTest::addColumn<QString>("address");
    QTest::newRow("nobody listens") << u"unix:path=/nonexistent/bus"_s;
    QTest::newRow("no address") << u"nonsense"_s;
}

void DesktopBusTest::keepsSilentWithoutABus() {
    QFETCH(const QString, address);
    useBus(address);
    const SecondProcess process(u"ask nobody"_s);
    QCOMPARE(process.status(), EXIT_SUCCESS);
}

void DesktopBusTest::waitsForNoBus() {
    const SecondProcess process(u"go on"_s);
    QCOMPARE(process.status(), EXIT_SUCCESS);
}

void DesktopBusTest::tellsNothingAfterItsEnd() {
    const SecondProcess process(u"end"_s);
    QCOMPARE(process.output(), "Second ()\n");
    QCOMPARE(process.status(), EXIT_SUCCESS);
}

int main(int argc, char* argv[]) {
    return SecondProcess::main<DesktopBusTest>(argc, argv,
                                               {{u"ask"_s, inApplication(ask)},
                                                {u"ask nobody"_s, inApplication(askNobody)},
                                                {u"go on"_s, inApplication(goOn)},
                                                {u"end"_s, inApplication(end)}});
}

#include "tst_desktopbus.moc"
