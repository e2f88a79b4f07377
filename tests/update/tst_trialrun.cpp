// SPDX-License-Identifier: MIT
#include "ChangedVariable.h"
#include "TrialRun.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class TrialRunTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void acceptsItsOwnVersion_data();
    void acceptsItsOwnVersion();
    void refusesWhatDoesNotAnswer_data();
    void refusesWhatDoesNotAnswer();
    void refusesWhatIsNotExecutable();
    void endsWhatHangs();
    void asksWithoutADisplay();

private:
    [[nodiscard]] QString path(const QString& name) const { return m_folder.filePath(name); }

    [[nodiscard]] QString program(const QByteArray& content) const {
        QFile file(path(u"Lumora"_s));
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() ||
            !file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner))
            qFatal("The program could not be written");
        return file.fileName();
    }

    QTemporaryDir m_folder;
};

namespace {

constexpr std::chrono::milliseconds patience = 60s;

/// Notes how the trial ended.
QCoro::Task<> note(QString executable, std::chrono::milliseconds limit,
                   std::optional<bool>* result) {
    *result = co_await answersWithVersion(executable, u"0.2.0"_s, limit);
}

} // namespace

void TrialRunTest::acceptsItsOwnVersion_data() {
    QTest::addColumn<QByteArray>("script");
    QTest::newRow("the same") << QByteArray("echo Lumora 0.2.0");
    QTest::newRow("written shorter") << QByteArray("echo Lumora 0.2");
    QTest::newRow("asked for it") << QByteArray("[ \"$*\" = --version ] && echo Lumora 0.2.0");
    QTest::newRow("with complaints") << QByteArray("echo beware >&2; echo Lumora 0.2.0");
    QTest::newRow("with nothing to read") << QByteArray("read line && exit 1; echo Lumora 0.2.0");
}

void TrialRunTest::acceptsItsOwnVersion() {
    QFETCH(const QByteArray, script);
    std::optional<bool> result;
    note(program("#!/bin/sh\n" + script + '\n'), patience, &result);
    QTRY_VERIFY_WITH_TIMEOUT(result, 60'000);
    QVERIFY(*result);
}

void TrialRunTest::refusesWhatDoesNotAnswer_data() {
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("one byte") << QByteArray("L");
    QTest::newRow("empty") << QByteArray();
    QByteArray foreign = QByteArray("\x7f"
                                    "ELF\2\1\1",
                                    7)
                             .leftJustified(64, '\0');
    // A kind of processor that there is none of.
    foreign.replace(16, 4, QByteArray("\2\0\xfe\xfe", 4));
    QTest::newRow("another processor's") << foreign;
    QTest::newRow("no interpreter") << QByteArray("#!/nowhere/sh\necho Lumora 0.2.0\n");
    QTest::newRow("another version") << QByteArray("#!/bin/sh\necho Lumora 0.1.9\n");
    QTest::newRow("no version") << QByteArray("#!/bin/sh\necho Lumora\n");
    QTest::newRow("another program") << QByteArray("#!/bin/sh\necho Marble 0.2.0\n");
    QTest::newRow("nothing") << QByteArray("#!/bin/sh\n");
    QTest::newRow("on standard error") << QByteArray("#!/bin/sh\necho Lumora 0.2.0 >&2\n");
    QTest::newRow("a failure") << QByteArray("#!/bin/sh\necho Lumora 0.2.0; exit 1\n");
    QTest::newRow("a crash") << QByteArray("#!/bin/sh\necho Lumora 0.2.0; kill -SEGV $$\n");
    QTest::newRow("no end of it") << QByteArray("#!/bin/sh\nexec yes Lumora 0.2.0\n");
}

void TrialRunTest::refusesWhatDoesNotAnswer() {
    QFETCH(const QByteArray, content);
    std::optional<bool> result;
    note(program(content), patience, &result);
    QTRY_VERIFY_WITH_TIMEOUT(result, 50'000);
    QVERIFY(!*result);
}

void TrialRunTest::refusesWhatIsNotExecutable() {
    const QString path = program("#!/bin/sh\necho Lumora 0.2.0\n");
    QVERIFY(QFile::setPermissions(path, QFile::ReadOwner));
    std::optional<bool> result;
    note(path, patience, &result);
    QTRY_VERIFY(result);
    QVERIFY(!*result);
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
}

void TrialRunTest::endsWhatHangs() {
    std::optional<bool> result;
    note(program("#!/bin/sh\necho Lumora 0.2.0; exec sleep 1000\n"), 100ms, &result);
    QVERIFY(!result);
    QTRY_VERIFY_WITH_TIMEOUT(result, 60'000);
    QVERIFY(!*result);
}

void TrialRunTest::asksWithoutADisplay() {
    const ChangedVariable display("DISPLAY", ":0");
    const ChangedVariable waylandDisplay("WAYLAND_DISPLAY", "wayland-0");
    std::optional<bool> result;
    note(program("#!/bin/sh\n[ -z \"$DISPLAY$WAYLAND_DISPLAY\" ] && echo Lumora 0.2.0\n"), patience,
         &result);
    QTRY_VERIFY_WITH_TIMEOUT(result, 60'000);
    QVERIFY(*result);
}

QTEST_GUILESS_MAIN(TrialRunTest)
#include "tst_trialrun.moc"
