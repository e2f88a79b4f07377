// SPDX-License-Identifier: MIT
#include "FetchRequest.h"
#include "FreshHome.h"
#include "ReleaseServer.h"
#include "UpdateFailure.h"

#include <QCoroTask>
#include <QtTest>

using namespace Qt::StringLiterals;

class FetchRequestTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init() { m_server.reset(); }

    void givesWhatIsThere();
    void givesNothingOfAnAnswerWithAnotherStatus();
    void writesOverAFile();
    void takesNoMoreThanItIsToldTo_data();
    void takesNoMoreThanItIsToldTo();
    void saysWhyThereIsNoAnswer_data();
    void saysWhyThereIsNoAnswer();

private:
    [[nodiscard]] FetchRequest request(const QString& path) const {
        return {.program = m_server.source().program,
                .address = QUrl(m_server.address() + path),
                .patience = std::chrono::minutes(1),
                .headers = {u"X-Asked: yes"_s}};
    }

    /// A program that does this instead.
    [[nodiscard]] QString program(const QByteArray& script) const {
        QFile file(m_folder.filePath(u"program"_s));
        if (!file.open(QIODevice::WriteOnly) || file.write("#!/bin/sh\n" + script) < 0 ||
            !file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner))
            qFatal("The program could not be written");
        return file.fileName();
    }

    FreshHome m_home;
    QTemporaryDir m_folder;
    ReleaseServer m_server;
};

namespace {

constexpr qsizetype plenty = 1000;

/// Why there is no answer; empty if there is one. Nobody can wait for a task that throws.
template <class Answer>
QCoro::Task<QString> failureOf(QCoro::Task<Answer> task) {
    QString failure;
    try {
        (void)co_await task;
    } catch (const UpdateFailure& thrown) {
        failure = thrown.description();
    }
    co_return failure;
}

} // namespace

void FetchRequestTest::givesWhatIsThere() {
    m_server.answer(u"/a%20b"_s, {{u"text"_s, u"what is there"_s}});
    const auto answer = QCoro::waitFor(fetch(request(u"/a%20b"_s), plenty));
    QCOMPARE(answer.value_or("nothing"), QByteArray("what is there"));
    QCOMPARE(m_server.requests().first()[u"headers"_s][u"x-asked"_s].toString(), u"yes"_s);
}

void FetchRequestTest::givesNothingOfAnAnswerWithAnotherStatus() {
    m_server.answer(u"/file"_s, {{u"status"_s, 404}, {u"text"_s, u"not found"_s}});
    QVERIFY(!QCoro::waitFor(fetch(request(u"/file"_s), plenty)));
    QVERIFY(!QCoro::waitFor(fetchInto(m_folder.filePath(u"file"_s), request(u"/file"_s))));
}

void FetchRequestTest::writesOverAFile() {
    QFile file(m_folder.filePath(u"file"_s));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write("longer than what is there") > 0);
    file.close();
    m_server.answer(u"/file"_s, {{u"text"_s, u"what is there"_s}});
    QVERIFY(QCoro::waitFor(fetchInto(file.fileName(), request(u"/file"_s))));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("what is there"));
}

void FetchRequestTest::takesNoMoreThanItIsToldTo_data() {
    QTest::addColumn<qsizetype>("longest");
    QTest::addColumn<bool>("isTaken");
    QTest::newRow("exactly") << qsizetype{13} << true;
    QTest::newRow("one too many") << qsizetype{12} << false;
}

void FetchRequestTest::takesNoMoreThanItIsToldTo() {
    QFETCH(const qsizetype, longest);
    QFETCH(const bool, isTaken);
    m_server.answer(u"/file"_s, {{u"text"_s, u"what is there"_s}});
    const QString failure = QCoro::waitFor(failureOf(fetch(request(u"/file"_s), longest)));
    QCOMPARE(failure.isEmpty(), isTaken);
}

void FetchRequestTest::saysWhyThereIsNoAnswer_data() {
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<QString>("reason");
    QTest::newRow("what the program says") << QByteArray("echo ' why ' >&2; exit 1") << u"why"_s;
    QTest::newRow("nothing said") << QByteArray("exit 1") << u"Download failed"_s;
    QTest::newRow("another status") << QByteArray("exit 127") << u"Download failed"_s;
    QTest::newRow("killed") << QByteArray("kill -9 $$") << u"Download failed"_s;
    QTest::newRow("no program") << QByteArray() << u"No such file or directory"_s;
}

void FetchRequestTest::saysWhyThereIsNoAnswer() {
    QFETCH(const QByteArray, script);
    FetchRequest asked = request(u"/file"_s);
    asked.program = script.isEmpty() ? m_folder.filePath(u"nowhere"_s) : program(script);
    const QString file = m_folder.filePath(u"file"_s);
    QFETCH(const QString, reason);
    const auto isReason = [&reason](const QString& text) { return text.endsWith(reason); };
    const QString none = QCoro::waitFor(failureOf(fetch(asked, plenty)));
    QVERIFY2(isReason(none), qPrintable(none));
    const QString inFile =
        QCoro::waitFor(failureOf(fetchInto(m_folder.filePath(u"file"_s), asked)));
    QVERIFY2(isReason(inFile), qPrintable(inFile));
}

QTEST_GUILESS_MAIN(FetchRequestTest)
#include "tst_fetchrequest.moc"
