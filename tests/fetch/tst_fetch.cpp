// SPDX-License-Identifier: MIT
#include "FetchRequest.h"
#include "FreshHome.h"
#include "Preferences.h"
#include "ReleaseServer.h"

#include <QProcess>
#include <QtTest>

using namespace Qt::StringLiterals;

/// The program as the application meets it: a process with arguments, pipes and a status.
class FetchTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void printsWhatItFetches();
    void printsNothingOfAnAnswerWithAnotherStatus();
    void saysWhyThereIsNoAnswer_data();
    void saysWhyThereIsNoAnswer();
    void saysItInTheUsersLanguage();
    void saysThatNothingMoreCanBeWritten();
    void endsWithWhoeverAsked();
    void goesOnWhileInputIsOpen();
    void wantsAnAddressAndPatience_data();
    void wantsAnAddressAndPatience();

private:
    FreshHome m_home;
    ReleaseServer m_server;
};

namespace {

constexpr int patience = 120'000;

/// The running program. Its standard input stays open until somebody closes it.
class Program final {
public:
    explicit Program(const QStringList& arguments) {
        m_process.start(qEnvironmentVariable("LUMORA_FETCH"), arguments);
    }

    ~Program() {
        m_process.closeWriteChannel();
        m_process.waitForFinished(patience);
    }

    [[nodiscard]] QProcess& process() { return m_process; }

    /// How it ends.
    [[nodiscard]] FetchStatus status() {
        if (!m_process.waitForFinished(patience) || m_process.exitStatus() != QProcess::NormalExit)
            qFatal("The program has not ended as it should");
        return static_cast<FetchStatus>(m_process.exitCode());
    }

private:
    QProcess m_process;
};

} // namespace

void FetchTest::init() {
    m_server.reset();
    Preferences::store(u"appLanguage"_s, u"en"_s);
}

void FetchTest::printsWhatItFetches() {
    m_server.answer(u"/latest"_s, {{u"text"_s, u"갱신 \n% "_s}});
    Program program(
        {u"15000"_s, m_server.address() + u"/latest"_s, u"Accept: a/b; c=d: e"_s, u"X-Two: 2"_s});
    QCOMPARE(program.status(), FetchStatus::Fetched);
    QCOMPARE(program.process().readAllStandardOutput(), u"갱신 \n% "_s.toUtf8());
    QCOMPARE(program.process().readAllStandardError(), QByteArray());
    QCOMPARE(m_server.requests().size(), 1);
    const QJsonObject headers = m_server.requests().first()[u"headers"_s].toObject();
    QCOMPARE(headers[u"accept"_s].toString(), u"a/b; c=d: e"_s);
    QCOMPARE(headers[u"x-two"_s].toString(), u"2"_s);
}

void FetchTest::printsNothingOfAnAnswerWithAnotherStatus() {
    m_server.answer(u"/latest"_s, {{u"status"_s, 403}, {u"text"_s, u"no"_s}});
    Program program({u"15000"_s, m_server.address() + u"/latest"_s});
    QCOMPARE(program.status(), FetchStatus::AnsweredOtherwise);
    QCOMPARE(program.process().readAllStandardOutput(), QByteArray());
    QCOMPARE(program.process().readAllStandardError(), QByteArray());
}

void FetchTest::saysWhyThereIsNoAnswer_data() {
    QTest::addColumn<QString>("address");
    QTest::addColumn<QByteArray>("reason");

    ReleaseServer gone;
    gone.stop();
    QTest::newRow("nobody listens") << gone.address() << QByteArray("Connection refused\n");
    QTest::newRow("not secure")
        << u"http://192.0.2.1/a"_s
        << QByteArray("The address http://192.0.2.1/a is not used, because the connection to it "
                      "would not be secure.\n");
}

void FetchTest::saysWhyThereIsNoAnswer() {
    QFETCH(const QString, address);
    Program program({u"15000"_s, address});
    QCOMPARE(program.status(), FetchStatus::NoAnswer);
    QCOMPARE(program.process().readAllStandardOutput(), QByteArray());
    QTEST(program.process().readAllStandardError(), "reason");
}

void FetchTest::saysItInTheUsersLanguage() {
    Preferences::store(u"appLanguage"_s, u"ko"_s);
    ReleaseServer gone;
    gone.stop();
    Program program({u"15000"_s, gone.address()});
    QCOMPARE(program.status(), FetchStatus::NoAnswer);
    QCOMPARE(program.process().readAllStandardError(), u"연결이 거부됨\n"_s.toUtf8());
}

void FetchTest::saysThatNothingMoreCanBeWritten() {
#ifdef Q_OS_LINUX
    m_server.answer(u"/latest"_s, {{u"text"_s, u"too much"_s}});
    QProcess process;
    process.setStandardOutputFile(u"/dev/full"_s);
    process.start(qEnvironmentVariable("LUMORA_FETCH"),
                  {u"15000"_s, m_server.address() + u"/latest"_s});
    QVERIFY(process.waitForFinished(patience));
    QCOMPARE(process.exitCode(), static_cast<int>(FetchStatus::NoAnswer));
    QCOMPARE(process.readAllStandardError(), QByteArray("No space left on device\n"));
#else
    QSKIP("Only Linux has a device that is always full");
#endif
}

void FetchTest::endsWithWhoeverAsked() {
    m_server.answer(u"/latest"_s, {{u"silence"_s, true}});
    Program program({u"1000000"_s, m_server.address() + u"/latest"_s});
    QTRY_COMPARE(m_server.requests().size(), 1);
    program.process().closeWriteChannel();
    QCOMPARE(program.status(), FetchStatus::NoAnswer);
}

void FetchTest::goesOnWhileInputIsOpen() {
    m_server.answer(u"/latest"_s, {{u"gate"_s, m_server.gate(u"input"_s)}, {u"text"_s, u"late"_s}});
    Program program({u"1000000"_s, m_server.address() + u"/latest"_s});
    program.process().write("something\n");
    QTRY_VERIFY(m_server.hasReached(u"input"_s));
    m_server.open(u"input"_s);
    QCOMPARE(program.status(), FetchStatus::Fetched);
    QCOMPARE(program.process().readAllStandardOutput(), QByteArray("late"));
}

void FetchTest::wantsAnAddressAndPatience_data() {
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("nothing") << QStringList();
    QTest::newRow("no address") << QStringList{u"15000"_s};
    QTest::newRow("no number") << QStringList{u"15s"_s, m_server.address()};
    QTest::newRow("no patience") << QStringList{u"0"_s, m_server.address()};
}

void FetchTest::wantsAnAddressAndPatience() {
    QFETCH(const QStringList, arguments);
    Program program(arguments);
    QCOMPARE(program.status(), FetchStatus::NoAnswer);
    QCOMPARE(program.process().readAllStandardError(),
             QByteArray("lumora-fetch: usage: lumora-fetch PATIENCE ADDRESS [HEADER]...\n"));
}

QTEST_GUILESS_MAIN(FetchTest)
#include "tst_fetch.moc"
