// SPDX-License-Identifier: MIT
#include "BrewAt.h"
#include "BrewManager.h"
#include "FreshHome.h"
#include "Lines.h"
#include "ProcessorTimes.h"
#include "PublicationRecorder.h"

#include <QtTest>

#include <memory>

using namespace Qt::StringLiterals;

/// The transcript of an operation, told by one of them.
class TranscriptTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init() { m_home = std::make_unique<FreshHome>(); }

    void isWrittenAroundTheFlag();
    void holdsTheStartTextAloneWhileBrewRuns();
    void joinsWhatBrewPrinted_data();
    void joinsWhatBrewPrinted();
    void endsInOneTurnOfTheEventLoop();
    void staysUntilTheNextOperation();
    void hasWhatTheProfilePrints();
    void tellsThatBrewHasGone();
    void tellsThatANameCannotBeHandedOver();
    void holdsAHundredMegabytes();
    void growsInPlace();
    void isMadeBesideTheInterface();

private:
    std::unique_ptr<FreshHome> m_home;
};

void TranscriptTest::isWrittenAroundTheFlag() {
    const FakeBrew brew;
    brew.setBody(brew.print("==> Pouring \"wget\"\n") + brew.printError("Warning: old"));
    BrewManager manager(brewAt(brew));
    const PublicationRecorder recorder(manager);
    QVERIFY(QCoro::waitFor(manager.install(u"wget"_s, PackageType::formula)));
    const QStringList expected = lines(uR"(
        announced: isRunningOperation = true
        announced: operationOutput = "Installing wget...\n"
        announced: operationOutput = "Installing wget...\n==> Pouring \"wget\"\n"
        announced: operationOutput = "Installing wget...\n==> Pouring \"wget\"\n\nWarning: old"
        announced: isRunningOperation = false
        announced: operationOutput = "Installing wget...\n==> Pouring \"wget\"\n\nWarning: old\nSuccessfully installed wget"
    )"_s);
    QCOMPARE(recorder.lines(), expected);
}

void TranscriptTest::holdsTheStartTextAloneWhileBrewRuns() {
    const FakeBrew brew;
    brew.setBody(brew.print("early\n") + brew.reach(u"printed"_s) + brew.waitFor(u"go"_s));
    BrewManager manager(brewAt(brew));
    const PublicationRecorder recorder(manager);

    const auto task = manager.upgradeAll();
    QTRY_VERIFY(brew.hasReached(u"printed"_s));
    QCOMPARE(recorder.lines(), lines(uR"(
        announced: isRunningOperation = true
        announced: operationOutput = "Upgrading all packages...\n"
    )"_s));
    QVERIFY(!task.isReady());

    brew.open(u"go"_s);
    QTRY_VERIFY(task.isReady());
    QCOMPARE(*manager.operationOutput,
             u"Upgrading all packages...\nearly\n\nAll packages upgraded"_s);
}

void TranscriptTest::joinsWhatBrewPrinted_data() {
    QTest::addColumn<QByteArray>("output");
    QTest::addColumn<QByteArray>("error");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("publications");
    QTest::newRow("nothing") << QByteArray() << QByteArray() << u""_s << 3;
    QTest::newRow("output") << QByteArray("out") << QByteArray() << u"out"_s << 3;
    QTest::newRow("output with a line end")
        << QByteArray("out\n") << QByteArray() << u"out\n"_s << 3;
    QTest::newRow("error") << QByteArray() << QByteArray("err\n") << u"\nerr\n"_s << 4;
    QTest::newRow("both") << QByteArray("out\n") << QByteArray("err") << u"out\n\nerr"_s << 4;
    QTest::newRow("nothing trimmed") << QByteArray(" \t\r\nout \n\n") << QByteArray("\n err\n\n")
                                     << u" \t\r\nout \n\n\n\n err\n\n"_s << 4;
    QTest::newRow("colours and letters")
        << QByteArray("\033[32m한국어\033[0m %1 &<b>") << QByteArray()
        << u"\u001b[32m한국어\u001b[0m %1 &<b>"_s << 3;
    QTest::newRow("output not UTF-8")
        << QByteArray("out \xff") << QByteArray("err") << u"\nerr"_s << 4;
    QTest::newRow("error not UTF-8")
        << QByteArray("out") << QByteArray("err \xff") << u"out"_s << 3;
}

void TranscriptTest::joinsWhatBrewPrinted() {
    QFETCH(QByteArray, output);
    QFETCH(QByteArray, error);
    QFETCH(QString, text);
    QFETCH(int, publications);
    const FakeBrew brew;
    brew.setBody(brew.print(output) + brew.printError(error));
    BrewManager manager(brewAt(brew));
    int count = 0;
    manager.operationOutput.subscribe(this, [&](const QString& /*transcript*/) { ++count; });

    QVERIFY(QCoro::waitFor(manager.uninstall(u"wget"_s, PackageType::cask)));
    QCOMPARE(*manager.operationOutput,
             u"Uninstalling wget...\n"_s + text + u"\nSuccessfully uninstalled wget"_s);
    QCOMPARE(count, publications);
}

void TranscriptTest::endsInOneTurnOfTheEventLoop() {
    const FakeBrew brew("echo out; echo err >&2; exit 1");
    BrewManager manager(brewAt(brew));
    auto task = manager.upgrade(u"wget"_s, PackageType::formula);
    QStringList seenInLaterTurns;
    manager.operationOutput.subscribe(this, [&](const QString& /*transcript*/) {
        const auto look = [&] { seenInLaterTurns.append(*manager.operationOutput); };
        QMetaObject::invokeMethod(this, look, Qt::QueuedConnection);
    });
    QCoro::waitFor(std::move(task));
    const QString whole = u"Upgrading wget...\nout\n\nerr\n\nFailed to upgrade wget"_s;
    QTRY_COMPARE(seenInLaterTurns, (QStringList{whole, whole, whole}));
}

void TranscriptTest::staysUntilTheNextOperation() {
    const FakeBrew brew;
    brew.setBody(brew.waitFor(u"go"_s));
    brew.open(u"go"_s);
    BrewManager manager(brewAt(brew));
    QCoro::waitFor(manager.addTap(u"user/tools"_s));
    QCoro::waitFor(manager.loadTaps());
    QCoro::waitFor(manager.search(u"x"_s));
    QCoro::waitFor(manager.doctor());
    QCOMPARE(*manager.operationOutput, u"Adding tap user/tools...\n"_s);

    QCoro::waitFor(manager.removeTap(u"user/tools"_s));
    QCOMPARE(*manager.operationOutput, u"Removing tap user/tools...\n"_s);
}

void TranscriptTest::hasWhatTheProfilePrints() {
    m_home->write(u".zprofile"_s, "echo 'Welcome back!'\n");
    const FakeBrew brew("echo Pouring");
    BrewManager manager(brewAt(brew));
    QVERIFY(QCoro::waitFor(manager.install(u"wget"_s, PackageType::formula)));
    QCOMPARE(*manager.operationOutput, u"Installing wget...\nWelcome back!\nPouring\n"
                                       "\nSuccessfully installed wget"_s);
}

void TranscriptTest::tellsThatBrewHasGone() {
    const FakeBrew brew;
    BrewManager manager(brewAt(brew));
    brew.remove();
    QVERIFY(!QCoro::waitFor(manager.install(u"wget"_s, PackageType::formula)));
    const QString transcript = *manager.operationOutput;
    QVERIFY2(transcript.startsWith(u"Installing wget...\n\nzsh:"_s), qUtf8Printable(transcript));
    QVERIFY2(transcript.contains(brew.path()), qUtf8Printable(transcript));
    QVERIFY2(transcript.endsWith(u"\n\nFailed to install wget"_s), qUtf8Printable(transcript));
}

void TranscriptTest::tellsThatANameCannotBeHandedOver() {
    const FakeBrew brew;
    BrewManager manager(brewAt(brew));
    const QString name = u"a"_s + QChar(u'\0') + u"b"_s;
    QVERIFY(!QCoro::waitFor(manager.addTap(name)));
    QCOMPARE(*manager.operationOutput, u"Adding tap "_s + name +
                                           u"...\n\nError: The command contains a NUL character, "
                                           "which no command line can carry."_s);
    QVERIFY(!*manager.isRunningOperation);
}

void TranscriptTest::holdsAHundredMegabytes() {
    constexpr int size = 100'000'000;
    const FakeBrew brew("head -c " + QByteArray::number(size) + " /dev/zero | tr '\\0' x");
    BrewManager manager(brewAt(brew));
    QElapsedTimer timer;
    timer.start();
    QVERIFY(QCoro::waitFor(manager.upgradeAll()));
    qInfo("a transcript of 100 MB: %lld ms", timer.elapsed());
    const QString start = u"Upgrading all packages...\n"_s;
    const QString end = u"\nAll packages upgraded"_s;
    QCOMPARE(manager.operationOutput->size(), start.size() + size + end.size());
    QVERIFY(manager.operationOutput->startsWith(start + u'x'));
    QVERIFY(manager.operationOutput->endsWith(u'x' + end));
    QVERIFY(timer.elapsed() < 30'000);
}

void TranscriptTest::growsInPlace() {
    const FakeBrew brew("echo out; echo err >&2");
    BrewManager manager(brewAt(brew));
    QList<const QChar*> places;
    manager.operationOutput.subscribe(
        this, [&](const QString& transcript) { places.append(transcript.constData()); });
    QString reported;
    connect(&manager, &BrewManager::operationEnded, this,
            [&](const OperationReport& report) { reported = report.transcript; });

    QVERIFY(QCoro::waitFor(manager.upgradeAll()));
    QCOMPARE(reported, u"Upgrading all packages...\nout\n\nerr\n\nAll packages upgraded"_s);
    // What was there already lies where it lay when the error and the closing line have joined it,
    // and whoever is told of the end gets it without a copy.
    QCOMPARE(places.size(), 4);
    QCOMPARE(places, (QList{places[0], places[1], places[1], places[1]}));
    QCOMPARE(reported.constData(), places[1]);
}

void TranscriptTest::isMadeBesideTheInterface() {
    const FakeBrew brew("head -c 50000000 /dev/zero | tr '\\0' x");
    BrewManager manager(brewAt(brew));
    const ProcessorTimes times;
    QVERIFY(QCoro::waitFor(manager.upgradeAll()));
    const double share = times.shareOfThisThread();
    QVERIFY2(share < 0.1, qPrintable(QString::number(share)));
}

QTEST_GUILESS_MAIN(TranscriptTest)
#include "tst_transcript.moc"
