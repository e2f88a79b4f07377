// SPDX-License-Identifier: MIT
#include "../core/DescriptorLimit.h"
#include "AwkwardNames.h"
#include "BrewAt.h"
#include "FreshHome.h"
#include "OperationCase.h"
#include "PackageNamed.h"
#include "PublicationRecorder.h"
#include "TextForm.h"

#include <QtTest>

#include <pthread.h>

using namespace Qt::StringLiterals;

/// What all operations on packages and taps have in common, for each of them.
class OperationsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void handBrewTheirArguments_data();
    void handBrewTheirArguments();
    void recordASuccess_data();
    void recordASuccess();
    void recordAFailure_data();
    void recordAFailure();
    void recordThatBrewCouldNotBeStarted_data();
    void recordThatBrewCouldNotBeStarted();
    void recordThatNoThreadCouldBeStarted();
    void putNamesIntoTheTranscriptAsTheyAre_data();
    void putNamesIntoTheTranscriptAsTheyAre();
    void putOutputIntoTheTranscriptAsItIs_data();
    void putOutputIntoTheTranscriptAsItIs();
    void leaveTheListsAndTheMessageAlone_data();
    void leaveTheListsAndTheMessageAlone();

private:
    const FreshHome m_home;
};

namespace {

/// How an operation is recorded: `beforeLowering` and `afterLowering` are what it appends to
/// the transcript before and after isRunningOperation is lowered.
QStringList recording(const QString& start, const QStringList& beforeLowering,
                      const QStringList& afterLowering) {
    QStringList lines{u"announced: isRunningOperation = true"_s};
    QString transcript = start;
    const auto publishTranscript = [&](const QString& addition) {
        transcript += addition;
        lines.append(u"announced: operationOutput = "_s + textForm(transcript));
    };
    publishTranscript({});
    for (const QString& addition : beforeLowering)
        publishTranscript(addition);
    lines.append(u"announced: isRunningOperation = false"_s);
    for (const QString& addition : afterLowering)
        publishTranscript(addition);
    return lines;
}

QStringList closing(const QString& text, const QString& package) {
    return text.isEmpty() ? QStringList() : QStringList{withName(text, package)};
}

} // namespace

void OperationsTest::handBrewTheirArguments_data() {
    QTest::addColumn<QString>("operation");
    QTest::addColumn<QString>("package");
    for (const OperationCase& row : OperationCase::all()) {
        for (const AwkwardName& awkward : awkwardNames())
            QTest::addRow("%s: %s", qUtf8Printable(row.name), awkward.what)
                << row.name << awkward.name;
    }
}

void OperationsTest::handBrewTheirArguments() {
    QFETCH(QString, operation);
    QFETCH(QString, package);
    const OperationCase& row = OperationCase::named(operation);
    const FakeBrew brew;
    brew.setBody(brew.recordArguments());
    BrewManager manager(brewAt(brew));
    QVERIFY(QCoro::waitFor(row.start(manager, package)));
    QCOMPARE(brew.recordedRuns(), QList<QStringList>{row.argumentsFor(package)});
}

void OperationsTest::recordASuccess_data() {
    OperationCase::addRows();
}

void OperationsTest::recordASuccess() {
    QFETCH(QString, operation);
    const OperationCase& row = OperationCase::named(operation);
    const FakeBrew brew;
    brew.setBody(brew.print("==> Pouring\n") + brew.printError("Warning: old\n"));
    BrewManager manager(brewAt(brew));
    manager.operationOutput.set(u"what was there before"_s);
    const PublicationRecorder recorder(manager);

    QVERIFY(QCoro::waitFor(row.start(manager, u"wget"_s)));
    QCOMPARE(recorder.lines(), recording(withName(row.startText, u"wget"_s),
                                         {u"==> Pouring\n"_s, u"\nWarning: old\n"_s},
                                         closing(row.successText, u"wget"_s)));
}

void OperationsTest::recordAFailure_data() {
    QTest::addColumn<QString>("operation");
    QTest::addColumn<QByteArray>("ending");
    for (const OperationCase& row : OperationCase::all()) {
        QTest::addRow("%s: status 1", qUtf8Printable(row.name)) << row.name << QByteArray("exit 1");
        QTest::addRow("%s: status 255", qUtf8Printable(row.name))
            << row.name << QByteArray("exit 255");
        QTest::addRow("%s: ended by a signal", qUtf8Printable(row.name))
            << row.name << QByteArray("kill -15 $$");
    }
}

void OperationsTest::recordAFailure() {
    QFETCH(QString, operation);
    QFETCH(QByteArray, ending);
    const OperationCase& row = OperationCase::named(operation);
    const FakeBrew brew;
    brew.setBody(brew.print("half\n") + brew.printError("Error: no\n") + ending);
    BrewManager manager(brewAt(brew));
    const PublicationRecorder recorder(manager);

    QVERIFY(!QCoro::waitFor(row.start(manager, u"wget"_s)));
    QCOMPARE(recorder.lines(),
             recording(withName(row.startText, u"wget"_s), {u"half\n"_s, u"\nError: no\n"_s},
                       closing(row.failureText, u"wget"_s)));
}

void OperationsTest::recordThatBrewCouldNotBeStarted_data() {
    OperationCase::addRows();
}

void OperationsTest::recordThatBrewCouldNotBeStarted() {
    QFETCH(QString, operation);
    const OperationCase& row = OperationCase::named(operation);
    const FakeBrew brew;
    BrewManager manager(brewAt(brew));
    const PublicationRecorder recorder(manager);
    {
        const DescriptorLimit none(0);
        QVERIFY(!QCoro::waitFor(row.start(manager, u"wget"_s)));
    }
    QCOMPARE(recorder.lines(),
             recording(withName(row.startText, u"wget"_s),
                       {u"\nError: /bin/zsh could not be started: Too many open files."_s}, {}));

    QVERIFY(QCoro::waitFor(row.start(manager, u"wget"_s)));
}

void OperationsTest::recordThatNoThreadCouldBeStarted() {
#ifdef __GLIBC__
    // No machine has memory enough for a stack of this size.
    constexpr std::size_t stack = std::size_t{1} << 50;
    pthread_attr_t usual;
    pthread_attr_t huge;
    pthread_getattr_default_np(&usual);
    pthread_getattr_default_np(&huge);
    pthread_attr_setstacksize(&huge, stack);
    const FakeBrew brew;
    BrewManager manager(brewAt(brew));
    const PublicationRecorder recorder(manager);

    pthread_setattr_default_np(&huge);
    const bool succeeded = QCoro::waitFor(manager.install(u"wget"_s, PackageType::formula));
    pthread_setattr_default_np(&usual);
    QVERIFY(!succeeded);
    QCOMPARE(recorder.lines(), recording(u"Installing wget...\n"_s,
                                         {u"\nError: No thread could be started for brew: "
                                          "Resource temporarily unavailable"_s},
                                         {}));

    QVERIFY(QCoro::waitFor(manager.install(u"wget"_s, PackageType::formula)));
#else
    QSKIP("only the GNU library lets the size of every stack be changed");
#endif
}

void OperationsTest::putNamesIntoTheTranscriptAsTheyAre_data() {
    handBrewTheirArguments_data();
}

void OperationsTest::putNamesIntoTheTranscriptAsTheyAre() {
    QFETCH(QString, operation);
    QFETCH(QString, package);
    const OperationCase& row = OperationCase::named(operation);
    const FakeBrew brew("[ -e \"$0.fails\" ] && exit 1; exit 0");
    BrewManager manager(brewAt(brew));
    const QString start = withName(row.startText, package);

    QVERIFY(QCoro::waitFor(row.start(manager, package)));
    QCOMPARE(*manager.operationOutput, start + withName(row.successText, package));

    brew.open(u"brew.fails"_s);
    QVERIFY(!QCoro::waitFor(row.start(manager, package)));
    QCOMPARE(*manager.operationOutput, start + withName(row.failureText, package));
}

void OperationsTest::putOutputIntoTheTranscriptAsItIs_data() {
    QTest::addColumn<QString>("text");
    QTest::newRow("NUL") << u"a\0b"_s;
    QTest::newRow("could be composed") << u"cafe\u0301 \u1112\u1161\u11ab"_s;
    QTest::newRow("blanks around") << u" \n\ta\r\n\n "_s;
    QTest::newRow("colours") << u"\u001b[1mready\u001b[0m"_s;
}

void OperationsTest::putOutputIntoTheTranscriptAsItIs() {
    QFETCH(QString, text);
    const FakeBrew brew;
    brew.setBody(brew.print(text.toUtf8()) + brew.printError(text.toUtf8()));
    BrewManager manager(brewAt(brew));
    QVERIFY(QCoro::waitFor(manager.addTap(u"user/tools"_s)));
    QCOMPARE(*manager.operationOutput, u"Adding tap user/tools...\n"_s + text + u'\n' + text);
}

void OperationsTest::leaveTheListsAndTheMessageAlone_data() {
    OperationCase::addRows();
}

void OperationsTest::leaveTheListsAndTheMessageAlone() {
    QFETCH(QString, operation);
    const FakeBrew brew;
    brew.setBody(brew.recordArguments() + "exit 1");
    BrewManager manager(brewAt(brew));
    manager.errorMessage.set(u"brew tap failed"_s);
    manager.taps.set({{u"user/tools"_s}});
    manager.formulae.set({packageNamed(u"wget"_s)});

    QCoro::waitFor(OperationCase::named(operation).start(manager, u"wget"_s));
    QCOMPARE(*manager.errorMessage, std::optional(u"brew tap failed"_s));
    QCOMPARE(manager.taps->size(), 1);
    QCOMPARE(manager.formulae->size(), 1);
    QCOMPARE(brew.recordedRuns().size(), 1);
}

QTEST_GUILESS_MAIN(OperationsTest)
#include "tst_operations.moc"
