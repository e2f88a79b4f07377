// SPDX-License-Identifier: MIT
#include "BrewAt.h"
#include "BrewManager.h"
#include "FakeBrew.h"
#include "FreshHome.h"

#include <QDirIterator>
#include <QJsonDocument>
#include <QtTest>

using namespace Qt::StringLiterals;

/// Lists of names that a real brew has printed: a line each, and nothing but names.
///
/// LUMORA_RECORDED is the folder of the recordings, as tools/record-brew makes it.
class ConformanceListsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void readsRecordedLists_data();
    void readsRecordedLists();

private:
    const FreshHome m_home;
};

namespace {

QByteArray contentOf(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("%s could not be read", qUtf8Printable(path));
    return file.readAll();
}

QStringList namesOf(const auto& records) {
    QStringList names;
    for (const auto& record : records)
        names.append(record.name);
    return names;
}

} // namespace

void ConformanceListsTest::initTestCase() {
    if (qEnvironmentVariableIsEmpty("LUMORA_RECORDED"))
        QSKIP("LUMORA_RECORDED doesn't name a folder of recorded reports.");
}

void ConformanceListsTest::readsRecordedLists_data() {
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("output");
    QTest::addColumn<QByteArray>("status");
    int lists = 0;
    QDirIterator files(qEnvironmentVariable("LUMORA_RECORDED"), {u"*.args"_s}, QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString run = files.next().chopped(5);
        const QStringList arguments =
            QJsonDocument::fromJson(contentOf(run + u".args"_s)).toVariant().toStringList();
        const bool isSearch = arguments.size() == 2 && arguments[0] == u"search"_s;
        if (!isSearch && arguments != QStringList(u"tap"_s))
            continue;
        ++lists;
        QTest::newRow(qPrintable(QFileInfo(run).fileName()))
            << arguments << contentOf(run + u".stdout"_s) << contentOf(run + u".status"_s);
    }
    QVERIFY2(lists > 0, "There is no list among the recordings.");
}

void ConformanceListsTest::readsRecordedLists() {
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, output);
    QFETCH(QByteArray, status);
    const FakeBrew brew;
    brew.setBody(brew.print(output) + "exit " + status);
    BrewManager manager(brewAt(brew));
    const bool isSearch = arguments.size() == 2;
    QCoro::waitFor(isSearch ? manager.search(arguments[1]) : manager.loadTaps());
    const QStringList names = isSearch ? namesOf(*manager.searchResults) : namesOf(*manager.taps);

    QStringList printed;
    for (const QByteArray& line : output.split('\n')) {
        if (!line.isEmpty() && !line.startsWith("==>"))
            printed.append(QString::fromUtf8(line));
    }
    if (!isSearch)
        printed.sort();
    QCOMPARE(names, printed);
    QVERIFY(!manager.errorMessage->has_value());
    static const QRegularExpression name(u"^[a-z0-9@._+/-]+$"_s);
    for (const QString& each : names)
        QVERIFY2(name.match(each).hasMatch(), qPrintable(each));
}

QTEST_GUILESS_MAIN(ConformanceListsTest)
#include "tst_conformance_lists.moc"
