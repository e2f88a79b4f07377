// SPDX-License-Identifier: MIT
#include "../core/DescriptorLimit.h"
#include "AwkwardNames.h"
#include "BrewAt.h"
#include "BrewManager.h"
#include "FreshHome.h"
#include "ProcessorTimes.h"
#include "PublicationRecorder.h"

#include <QtTest>

#include <map>

using namespace Qt::StringLiterals;

/// The operations that return the text to show: on a package, and for maintenance.
class ReportsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void handBrewTheirArguments_data();
    void handBrewTheirArguments();
    void askForAPackageWhateverItsType_data();
    void askForAPackageWhateverItsType();
    void chooseWhatToReturn_data();
    void chooseWhatToReturn();
    void returnThatBrewCouldNotBeStarted_data();
    void returnThatBrewCouldNotBeStarted();
    void returnWhatThereIsWithoutBrew();
    void mayOverlap();
    void areMadeBesideTheInterface();

private:
    const FreshHome m_home;
};

namespace {

using Report = std::function<QCoro::Task<QString>(BrewManager&)>;

const std::map<QString, Report>& reports() {
    static const std::map<QString, Report> reports{
        {u"info"_s,
         [](BrewManager& manager) {
             return manager.getPackageInfo(u"wget"_s, PackageType::formula);
         }},
        {u"dry run"_s, [](BrewManager& manager) { return manager.cleanupDryRun(); }},
        {u"cleanup"_s, [](BrewManager& manager) { return manager.cleanup(); }},
        {u"doctor"_s, [](BrewManager& manager) { return manager.doctor(); }},
    };
    return reports;
}

} // namespace

void ReportsTest::handBrewTheirArguments_data() {
    QTest::addColumn<QString>("report");
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("info") << u"info"_s << QStringList{u"info"_s, u"wget"_s};
    QTest::newRow("dry run") << u"dry run"_s << QStringList{u"cleanup"_s, u"-n"_s};
    QTest::newRow("cleanup") << u"cleanup"_s << QStringList{u"cleanup"_s};
    QTest::newRow("doctor") << u"doctor"_s << QStringList{u"doctor"_s};
}

void ReportsTest::handBrewTheirArguments() {
    QFETCH(QString, report);
    QFETCH(QStringList, arguments);
    const FakeBrew brew;
    brew.setBody(brew.recordArguments());
    BrewManager manager(brewAt(brew));
    QCoro::waitFor(reports().at(report)(manager));
    QCOMPARE(brew.recordedRuns(), QList<QStringList>{arguments});
}

void ReportsTest::askForAPackageWhateverItsType_data() {
    QTest::addColumn<QString>("name");
    for (const AwkwardName& row : awkwardNames())
        QTest::newRow(row.what) << row.name;
}

void ReportsTest::askForAPackageWhateverItsType() {
    QFETCH(QString, name);
    const FakeBrew brew;
    brew.setBody(brew.recordArguments() + brew.print("==> about it\n"));
    BrewManager manager(brewAt(brew));
    const QString formula = QCoro::waitFor(manager.getPackageInfo(name, PackageType::formula));
    const QString cask = QCoro::waitFor(manager.getPackageInfo(name, PackageType::cask));
    const QStringList arguments{u"info"_s, name};
    QCOMPARE(brew.recordedRuns(), (QList<QStringList>{arguments, arguments}));
    QCOMPARE(formula, u"==> about it\n"_s);
    QCOMPARE(cask, formula);
}

void ReportsTest::chooseWhatToReturn_data() {
    QTest::addColumn<QString>("report");
    QTest::addColumn<QByteArray>("output");
    QTest::addColumn<QByteArray>("error");
    QTest::addColumn<QString>("text");

    const auto rows = [](const QString& report, const QString& both, const QString& outputOnly,
                         const QString& errorOnly, const QString& neither) {
        const auto row = [&](const char* what, const QByteArray& output, const QByteArray& error,
                             const QString& text) {
            QTest::addRow("%s: %s", qUtf8Printable(report), what)
                << report << output << error << text;
        };
        row("both", " out\n", "err\n", both);
        row("output", " out\n", "", outputOnly);
        row("error", "", "err\n", errorOnly);
        row("neither", "", "", neither);
        row("output not UTF-8", "\xff", "err\n", errorOnly);
        row("error not UTF-8", " out\n", "\xff", outputOnly);
    };
    rows(u"info"_s, u" out\n"_s, u" out\n"_s, u""_s, u""_s);
    rows(u"dry run"_s, u" out\n"_s, u" out\n"_s, u"err\n"_s, u""_s);
    rows(u"cleanup"_s, u" out\n"_s, u" out\n"_s, u"err\n"_s, u"Nothing to clean up."_s);
    rows(u"doctor"_s, u" out\n\nerr\n"_s, u" out\n"_s, u"\nerr\n"_s, u""_s);
    QTest::newRow("colours") << u"doctor"_s << QByteArray("\033[1mready\033[0m\n\n") << QByteArray()
                             << u"\u001b[1mready\u001b[0m\n\n"_s;
    for (const auto& [name, makeReport] : reports()) {
        const QString joint = name == u"doctor"_s ? u"a\0b\nc\0d"_s : u"a\0b"_s;
        QTest::addRow("%s: NUL", qUtf8Printable(name))
            << name << QByteArray("a\0b", 3) << QByteArray("c\0d", 3) << joint;
    }
    QTest::newRow("NUL in the error alone")
        << u"cleanup"_s << QByteArray() << QByteArray("c\0d", 3) << u"c\0d"_s;
    QTest::newRow("could be composed")
        << u"info"_s << QByteArray("cafe\u0301") << QByteArray() << u"cafe\u0301"_s;
    QTest::newRow("only a line end")
        << u"cleanup"_s << QByteArray("\n") << QByteArray("err") << u"\n"_s;
}

void ReportsTest::chooseWhatToReturn() {
    QFETCH(QString, report);
    QFETCH(QByteArray, output);
    QFETCH(QByteArray, error);
    QFETCH(QString, text);
    const FakeBrew brew;
    const QByteArray body = brew.print(output) + brew.printError(error);
    BrewManager manager(brewAt(brew));
    manager.errorMessage.set(u"brew tap failed"_s);
    const PublicationRecorder recorder(manager);
    for (const char* ending : {"exit 0", "exit 1", "kill -9 $$"}) {
        brew.setBody(body + ending);
        QCOMPARE(QCoro::waitFor(reports().at(report)(manager)), text);
    }
    QCOMPARE(recorder.lines(), QStringList());
}

void ReportsTest::returnThatBrewCouldNotBeStarted_data() {
    QTest::addColumn<QString>("report");
    for (const auto& [name, report] : reports())
        QTest::newRow(qUtf8Printable(name)) << name;
}

void ReportsTest::returnThatBrewCouldNotBeStarted() {
    QFETCH(QString, report);
    const FakeBrew brew;
    BrewManager manager(brewAt(brew));
    const PublicationRecorder recorder(manager);
    QString text;
    {
        const DescriptorLimit none(0);
        text = QCoro::waitFor(reports().at(report)(manager));
    }
    QCOMPARE(text, u"Error: /bin/zsh could not be started: Too many open files."_s);
    QCOMPARE(recorder.lines(), QStringList());
}

void ReportsTest::returnWhatThereIsWithoutBrew() {
    const FakeBrew brew;
    BrewManager manager(brewAt(brew));
    brew.remove();
    QCOMPARE(QCoro::waitFor(reports().at(u"info"_s)(manager)), u""_s);
    const QString complaint = QCoro::waitFor(reports().at(u"cleanup"_s)(manager));
    QVERIFY2(complaint.startsWith(u"zsh:"_s), qUtf8Printable(complaint));
    QCOMPARE(QCoro::waitFor(reports().at(u"dry run"_s)(manager)), complaint);
    QCOMPARE(QCoro::waitFor(reports().at(u"doctor"_s)(manager)), u'\n' + complaint);
}

void ReportsTest::mayOverlap() {
    const FakeBrew brew;
    brew.setBody(brew.waitFor(u"$2"_s) + "echo \"about $2\"");
    BrewManager manager(brewAt(brew));
    auto first = manager.getPackageInfo(u"first"_s, PackageType::formula);
    auto second = manager.getPackageInfo(u"second"_s, PackageType::formula);
    brew.open(u"second"_s);
    QTRY_VERIFY(second.isReady());
    QVERIFY(!first.isReady());
    brew.open(u"first"_s);
    QTRY_VERIFY(first.isReady());
    QCOMPARE(QCoro::waitFor(std::move(first)), u"about first\n"_s);
    QCOMPARE(QCoro::waitFor(std::move(second)), u"about second\n"_s);
}

void ReportsTest::areMadeBesideTheInterface() {
    const FakeBrew brew("head -c 50000000 /dev/zero | tr '\\0' x; echo odd >&2");
    BrewManager manager(brewAt(brew));
    const ProcessorTimes times;
    const QString text = QCoro::waitFor(manager.doctor());
    const double share = times.shareOfThisThread();
    QCOMPARE(text.size(), 50'000'005);
    QVERIFY2(share < 0.1, qPrintable(QString::number(share)));
}

QTEST_GUILESS_MAIN(ReportsTest)
#include "tst_reports.moc"
