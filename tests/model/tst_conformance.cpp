// SPDX-License-Identifier: MIT
#include "Decoding.h"

#include <QDir>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QtTest>

using namespace Qt::StringLiterals;

/// Reports that a real brew has printed, held against Qt's own reading of the same bytes.
///
/// LUMORA_RECORDED is the folder of the recordings, as tools/record-brew makes it: in brew-*
/// <run>.args with the arguments as a JSON list, and <run>.stdout and <run>.status with what came
/// of them. scale/all-formulae.json.xz may be there, too.
class ConformanceTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void agreesOnRecordedReports_data();
    void agreesOnRecordedReports();
    void decodesTheWholeCatalogue();

private:
    QDir m_recorded;
};

namespace {

QByteArray contentOf(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("%s could not be read", qUtf8Printable(path));
    return file.readAll();
}

/// A record as Qt reads it, reduced to the keys that are in `ours`, without nulls.
QJsonObject reduced(const QJsonObject& theirs, const QStringList& keys) {
    QJsonObject object;
    for (const QString& key : keys) {
        const QJsonValue value = theirs[key];
        if (!value.isNull() && !value.isUndefined())
            object[key] = value;
    }
    return object;
}

QJsonArray reduced(const QJsonArray& theirs, const QStringList& keys) {
    QJsonArray array;
    for (const QJsonValue& record : theirs)
        array.append(reduced(record.toObject(), keys));
    return array;
}

const QStringList caskKeys{u"token"_s,    u"full_token"_s, u"name"_s,      u"desc"_s,
                           u"homepage"_s, u"version"_s,    u"installed"_s, u"outdated"_s};
const QStringList outdatedKeys{u"name"_s, u"installed_versions"_s, u"current_version"_s,
                               u"pinned"_s};

QJsonObject reducedFormula(const QJsonObject& theirs) {
    QJsonObject formula =
        reduced(theirs, {u"name"_s, u"full_name"_s, u"desc"_s, u"homepage"_s, u"versions"_s,
                         u"installed"_s, u"outdated"_s, u"dependencies"_s});
    if (formula.contains(u"versions"_s))
        formula[u"versions"_s] =
            reduced(formula[u"versions"_s].toObject(), {u"stable"_s, u"head"_s});
    if (formula.contains(u"installed"_s))
        formula[u"installed"_s] =
            reduced(formula[u"installed"_s].toArray(),
                    {u"version"_s, u"installed_on_request"_s, u"installed_as_dependency"_s});
    return formula;
}

/// Everything that is read of an installed-packages report, and nothing else.
QJsonObject reducedInstalled(const QJsonObject& theirs) {
    QJsonArray formulae;
    for (const QJsonValue& formula : theirs[u"formulae"_s].toArray())
        formulae.append(reducedFormula(formula.toObject()));
    return {{u"formulae"_s, formulae},
            {u"casks"_s, reduced(theirs[u"casks"_s].toArray(), caskKeys)}};
}

QJsonObject reducedOutdated(const QJsonObject& theirs) {
    QStringList caskOutdatedKeys = outdatedKeys;
    caskOutdatedKeys.removeLast();
    return {{u"formulae"_s, reduced(theirs[u"formulae"_s].toArray(), outdatedKeys)},
            {u"casks"_s, reduced(theirs[u"casks"_s].toArray(), caskOutdatedKeys)}};
}

/// The place of the first cask with a list of versions, which is refused; null without one.
QString placeOfListForm(const QJsonObject& outdated) {
    const QJsonArray casks = outdated[u"casks"_s].toArray();
    for (qsizetype i = 0; i < casks.size(); ++i) {
        if (casks[i][u"installed_versions"_s].isArray())
            return u"casks[%1].installed_versions"_s.arg(i);
    }
    return {};
}

} // namespace

void ConformanceTest::initTestCase() {
    const QString folder = qEnvironmentVariable("LUMORA_RECORDED");
    if (folder.isEmpty())
        QSKIP("LUMORA_RECORDED doesn't name a folder of recorded reports.");
    m_recorded.setPath(folder);
    QVERIFY2(!m_recorded.entryList({u"brew-*"_s}, QDir::Dirs).isEmpty(), qPrintable(folder));
}

void ConformanceTest::agreesOnRecordedReports_data() {
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<bool>("isOutdatedReport");
    int reports = 0;
    for (const QString& version : m_recorded.entryList({u"brew-*"_s}, QDir::Dirs)) {
        const QDir runs(m_recorded.filePath(version));
        for (const QString& name : runs.entryList({u"*.args"_s}, QDir::Files, QDir::Name)) {
            const QJsonArray arguments =
                QJsonDocument::fromJson(contentOf(runs.filePath(name))).array();
            const QString run = name.chopped(5);
            // Of a run that failed nothing is decoded.
            const bool succeeded = contentOf(runs.filePath(run + u".status"_s)).trimmed() == "0";
            if (!succeeded || !arguments.contains(u"--json=v2"_s))
                continue;
            ++reports;
            QTest::newRow(qPrintable(version + u'/' + run))
                << contentOf(runs.filePath(run + u".stdout"_s))
                << (arguments[0].toString() == u"outdated"_s);
        }
    }
    QVERIFY2(reports > 0, "There is no report among the recordings.");
}

void ConformanceTest::agreesOnRecordedReports() {
    QFETCH(QByteArray, json);
    QFETCH(bool, isOutdatedReport);
    const QJsonDocument theirs = QJsonDocument::fromJson(json);
    const QString error = isOutdatedReport ? decodingError<OutdatedResponse>(json)
                                           : decodingError<BrewListResponse>(json);

    if (theirs.isNull()) {
        // Printed by the user's profile, before the report.
        const QByteArray firstLine = json.left(json.indexOf('\n'));
        QCOMPARE(error, u"line 1, column 1: illegal value near \"%1\""_s.arg(
                            QString::fromUtf8(firstLine)));
        return;
    }
    if (isOutdatedReport) {
        if (const QString place = placeOfListForm(theirs.object()); !place.isNull()) {
            QCOMPARE(error, place + u": expected text, found list"_s);
            return;
        }
        QCOMPARE(error, QString());
        QCOMPARE(QJsonDocument::fromJson(encodeReport(*decoded<OutdatedResponse>(json))).object(),
                 reducedOutdated(theirs.object()));
        return;
    }
    QCOMPARE(error, QString());
    QCOMPARE(QJsonDocument::fromJson(encodeReport(*decoded<BrewListResponse>(json))).object(),
             reducedInstalled(theirs.object()));
}

void ConformanceTest::decodesTheWholeCatalogue() {
    const QString path = m_recorded.filePath(u"scale/all-formulae.json.xz"_s);
    if (!QFile::exists(path))
        QSKIP("There is no report of all formulae among the recordings.");
    QProcess xz;
    xz.start(u"xz"_s, {u"-dc"_s, path});
    QVERIFY2(xz.waitForFinished(60'000) && xz.exitCode() == 0, xz.readAllStandardError());
    const QByteArray json = xz.readAllStandardOutput();
    const std::string text = json.toStdString();

    QElapsedTimer timer;
    timer.start();
    const auto outcome = decodeReport<BrewListResponse>(text);
    const qint64 microseconds = timer.nsecsElapsed() / 1000;

    const auto* report = std::get_if<BrewListResponse>(&outcome);
    QVERIFY(report != nullptr);
    qInfo("%lld formulae of %lld bytes decoded in %.1f ms",
          static_cast<long long>(report->formulae.size()), static_cast<long long>(json.size()),
          static_cast<double>(microseconds) / 1000);

    const QJsonArray theirs = QJsonDocument::fromJson(json)[u"formulae"_s].toArray();
    QVERIFY(!theirs.isEmpty());
    QCOMPARE(report->formulae.size(), theirs.size());
    const QJsonArray ours = QJsonDocument::fromJson(encodeReport(*report))[u"formulae"_s].toArray();
    for (qsizetype i = 0; i < theirs.size(); ++i)
        QCOMPARE(ours[i].toObject(), reducedFormula(theirs[i].toObject()));
}

QTEST_GUILESS_MAIN(ConformanceTest)
#include "tst_conformance.moc"
