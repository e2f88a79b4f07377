// SPDX-License-Identifier: MIT
#include "BrewAt.h"
#include "FreshHome.h"
#include "Lines.h"
#include "LoadCase.h"
#include "PublicationRecorder.h"
#include "SecondProcess.h"

#include <cstdio>

using namespace Qt::StringLiterals;

/// The loads when nothing goes wrong.
class LoadsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void runBrewWithTheirArguments_data();
    void runBrewWithTheirArguments();
    void publishStepByStep_data();
    void publishStepByStep();
    void holdTheirFlagUpWhileBrewRuns_data();
    void holdTheirFlagUpWhileBrewRuns();
    void publishEmptyLists_data();
    void publishEmptyLists();
    void fillEveryFieldOfAFormula();
    void fillEveryFieldOfACask();
    void sortPackagesByName_data();
    void sortPackagesByName();
    void keepTheOrderOfOutdatedPackages();
    void showTheFirstOfSeveralOutdatedVersions();
    void publishBothOutdatedListsInOneTurn();
    void readTapsLineByLine_data();
    void readTapsLineByLine();
    void sortTapsWithoutTheUsersLocale();
    void decodeAReportOfAHundredMegabytes();

private:
    const FreshHome m_home;
};

namespace {

template <class Record>
QStringList namesOf(const QList<Record>& records) {
    QStringList names;
    for (const Record& record : records)
        names.append(record.name);
    return names;
}

/// A manager that has loaded this output of brew, whatever the load.
class Loaded final {
public:
    Loaded(QCoro::Task<> (BrewManager::*load)(), const QByteArray& output) {
        m_brew.setBody(m_brew.print(output));
        QCoro::waitFor((m_manager.*load)());
    }

    const BrewManager* operator->() const { return &m_manager; }

private:
    const FakeBrew m_brew;
    BrewManager m_manager{brewAt(m_brew)};
};

/// Loads the taps in the locale of the environment and prints them.
int printTaps(const QStringList& arguments) {
    int argc = 1;
    char name[] = "taps";
    char* argv[]{name, nullptr};
    const QCoreApplication application(argc, argv);
    BrewManager manager(brewAt(arguments.value(0)));
    QCoro::waitFor(manager.loadTaps());
    std::fputs(qPrintable(namesOf(*manager.taps).join(u' ')), stdout);
    return 0;
}

} // namespace

void LoadsTest::runBrewWithTheirArguments_data() {
    LoadCase::addRows();
}

void LoadsTest::runBrewWithTheirArguments() {
    QFETCH(QString, load);
    const LoadCase& row = LoadCase::named(load);
    const FakeBrew brew;
    brew.setBody(brew.recordArguments());
    BrewManager manager(brewAt(brew));
    QCoro::waitFor((manager.*row.load)());
    QCOMPARE(brew.recordedRuns(), QList<QStringList>{row.arguments});
}

void LoadsTest::publishStepByStep_data() {
    LoadCase::addRows();
}

void LoadsTest::publishStepByStep() {
    QFETCH(QString, load);
    const LoadCase& row = LoadCase::named(load);
    const FakeBrew brew;
    brew.setBody(LoadCase::answers(brew) + brew.printError("Warning: something is old\n"));
    BrewManager manager(brewAt(brew));
    PublicationRecorder recorder(manager);

    QCoro::waitFor((manager.*row.load)());
    QCOMPARE(recorder.lines(), row.recordedWith(row.publication));

    recorder.forget();
    QCoro::waitFor((manager.*row.load)());
    QCOMPARE(recorder.lines(), row.recordedWith(row.publication));
}

void LoadsTest::holdTheirFlagUpWhileBrewRuns_data() {
    LoadCase::addRows();
}

void LoadsTest::holdTheirFlagUpWhileBrewRuns() {
    QFETCH(QString, load);
    const LoadCase& row = LoadCase::named(load);
    const FakeBrew brew;
    brew.setBody(brew.recordArguments() +
                 LoadCase::answers(brew, [&](const LoadCase&) { return brew.waitFor(u"go"_s); }));
    BrewManager manager(brewAt(brew));
    const PublicationRecorder recorder(manager);

    const auto task = (manager.*row.load)();
    const QStringList start = row.recordedWith({}).first(2);
    QCOMPARE(recorder.lines(), start);
    QTRY_COMPARE(brew.recordedRuns().size(), 1);
    QCOMPARE(recorder.lines(), start);
    QVERIFY(!task.isReady());

    brew.open(u"go"_s);
    QTRY_VERIFY(task.isReady());
    QVERIFY(!*(manager.*row.flag));
}

void LoadsTest::publishEmptyLists_data() {
    QTest::addColumn<QString>("load");
    QTest::addColumn<QByteArray>("output");
    QTest::addColumn<QStringList>("publication");
    const QByteArray empty = R"({"formulae":[],"casks":[]})";
    QTest::newRow("formulae") << u"formulae"_s << empty
                              << QStringList{u"announced: formulae = 0"_s};
    QTest::newRow("casks") << u"casks"_s << empty << QStringList{u"announced: casks = 0"_s};
    QTest::newRow("outdated") << u"outdated"_s << empty
                              << QStringList{u"announced: outdatedFormulae = 0"_s,
                                             u"announced: outdatedCasks = 0"_s};
    QTest::newRow("no tap") << u"taps"_s << QByteArray() << QStringList{u"announced: taps = 0"_s};
    QTest::newRow("blank lines for taps")
        << u"taps"_s << QByteArray("\n   \n\t\n\u3000\n") << QStringList{u"announced: taps = 0"_s};
    QTest::newRow("taps that are not UTF-8")
        << u"taps"_s << QByteArray("user/tools\n\xff\n") << QStringList{u"announced: taps = 0"_s};
}

void LoadsTest::publishEmptyLists() {
    QFETCH(QString, load);
    QFETCH(QByteArray, output);
    QFETCH(QStringList, publication);
    const LoadCase& row = LoadCase::named(load);
    const FakeBrew brew;
    brew.setBody(LoadCase::answers(brew));
    BrewManager manager(brewAt(brew));
    QCoro::waitFor((manager.*row.load)());
    brew.setBody(brew.print(output));

    const PublicationRecorder recorder(manager);
    QCoro::waitFor((manager.*row.load)());
    QCOMPARE(recorder.lines(), row.recordedWith(publication));
}

void LoadsTest::fillEveryFieldOfAFormula() {
    const Loaded manager(&BrewManager::loadFormulae, R"({"formulae":[{
        "name":"wget","full_name":"user/tools/wget","tap":"user/tools",
        "desc":"한국어","homepage":"https://example.org/?a=1&b",
        "versions":{"stable":"1.25.0","head":null,"bottle":true},
        "installed":[{"version":"1.24.5","installed_on_request":false},{"version":"1.20"}],
        "outdated":true,"dependencies":["openssl@3","libidn2"]}],"casks":[]})");
    const BrewPackage expected{
        .name = u"wget"_s,
        .fullName = u"user/tools/wget"_s,
        .desc = u"한국어"_s,
        .homepage = u"https://example.org/?a=1&b"_s,
        .version = u"1.25.0"_s,
        .installedVersion = u"1.24.5"_s,
        .isOutdated = true,
        .dependencies = {u"openssl@3"_s, u"libidn2"_s},
        .type = PackageType::formula,
        .installedOnRequest = false,
    };
    QCOMPARE(*manager->formulae, QList<BrewPackage>{expected});
}

void LoadsTest::fillEveryFieldOfACask() {
    const Loaded manager(&BrewManager::loadCasks, R"({"formulae":[],"casks":[{
        "token":"iina","full_token":"user/tools/iina","name":["IINA","Player"],
        "desc":"Plays films","homepage":"https://example.org",
        "version":"1.4","installed":"1.3","outdated":true,"depends_on":{}}]})");
    const BrewPackage expected{
        .name = u"iina"_s,
        .fullName = u"user/tools/iina"_s,
        .desc = u"Plays films"_s,
        .homepage = u"https://example.org"_s,
        .version = u"1.4"_s,
        .installedVersion = u"1.3"_s,
        .isOutdated = true,
        .dependencies = {},
        .type = PackageType::cask,
        .installedOnRequest = true,
    };
    QCOMPARE(*manager->casks, QList<BrewPackage>{expected});
}

void LoadsTest::sortPackagesByName_data() {
    QTest::addColumn<QByteArrayList>("reported");
    QTest::addColumn<QStringList>("sorted");
    QTest::newRow("ignoring case")
        << QByteArrayList{"abc", "Abd", "abb"} << QStringList{u"abb"_s, u"abc"_s, u"Abd"_s};
    QTest::newRow("equal but for case") << QByteArrayList{"xz", "JQ", "jq", "Jq"}
                                        << QStringList{u"JQ"_s, u"jq"_s, u"Jq"_s, u"xz"_s};
    QTest::newRow("same name twice")
        << QByteArrayList{"b", "a", "b"} << QStringList{u"a"_s, u"b"_s, u"b"_s};
}

void LoadsTest::sortPackagesByName() {
    QFETCH(QByteArrayList, reported);
    QFETCH(QStringList, sorted);
    const Loaded formulae(&BrewManager::loadFormulae, formulaeReport(reported));
    QCOMPARE(namesOf(*formulae->formulae), sorted);

    const Loaded casks(&BrewManager::loadCasks, R"({"formulae":[],"casks":[{"token":")" +
                                                    reported.join(R"("},{"token":")") + R"("}]})");
    QCOMPARE(namesOf(*casks->casks), sorted);
}

void LoadsTest::keepTheOrderOfOutdatedPackages() {
    const Loaded manager(&BrewManager::loadOutdated, R"({"formulae":[
        {"name":"xz","installed_versions":["1"],"current_version":"2"},
        {"name":"jq","installed_versions":["1"],"current_version":"2"}],"casks":[
        {"name":"vlc","installed_versions":"1","current_version":"2"},
        {"name":"Iina","installed_versions":"1","current_version":"2"}]})");
    QCOMPARE(namesOf(*manager->outdatedFormulae), (QStringList{u"xz"_s, u"jq"_s}));
    QCOMPARE(namesOf(*manager->outdatedCasks), (QStringList{u"vlc"_s, u"Iina"_s}));
}

void LoadsTest::showTheFirstOfSeveralOutdatedVersions() {
    const Loaded manager(&BrewManager::loadOutdated, R"({"formulae":[
        {"name":"jq","installed_versions":["1.0","1.1"],"current_version":"1.2","pinned":true},
        {"name":"xz","installed_versions":[],"current_version":"5"}],"casks":[
        {"name":"iina","installed_versions":"1.3, 1.4","current_version":"1.5"}]})");
    QStringList rows;
    for (const auto& packages : {*manager->outdatedFormulae, *manager->outdatedCasks}) {
        for (const OutdatedPackage& package : packages) {
            rows.append(
                u"%1 %2 -> %3"_s.arg(package.id(), package.currentVersion, package.latestVersion));
        }
    }
    QCOMPARE(rows, (QStringList{u"formula-jq 1.0 -> 1.2"_s, u"formula-xz ? -> 5"_s,
                                u"cask-iina 1.3, 1.4 -> 1.5"_s}));
}

void LoadsTest::publishBothOutdatedListsInOneTurn() {
    const FakeBrew brew;
    brew.setBody(LoadCase::answers(brew));
    BrewManager manager(brewAt(brew));
    QStringList casksInTheNextTurn;
    manager.outdatedFormulae.subscribe(this, [&](const auto& /*formulae*/) {
        const auto look = [&] { casksInTheNextTurn = namesOf(*manager.outdatedCasks); };
        QMetaObject::invokeMethod(this, look, Qt::QueuedConnection);
    });
    QCoro::waitFor(manager.loadOutdated());
    QTRY_COMPARE(casksInTheNextTurn, QStringList{u"iina"_s});
}

void LoadsTest::readTapsLineByLine_data() {
    QTest::addColumn<QByteArray>("output");
    QTest::addColumn<QStringList>("taps");
    QTest::newRow("upper case first")
        << QByteArray("homebrew/core\nUser/Tools\nalpha/beta\n")
        << QStringList{u"User/Tools"_s, u"alpha/beta"_s, u"homebrew/core"_s};
    QTest::newRow("no locale rules") << QByteArray("é/e\nz/z\n~/t\nZ/z\n")
                                     << QStringList{u"Z/z"_s, u"z/z"_s, u"~/t"_s, u"é/e"_s};
    QTest::newRow("duplicates") << QByteArray("b/b\na/a\nb/b\n")
                                << QStringList{u"a/a"_s, u"b/b"_s, u"b/b"_s};
    QTest::newRow("blanks around")
        << QByteArray(" \ta/a \n\n  \n\u00a0b/b\u3000\n") << QStringList{u"a/a"_s, u"b/b"_s};
    QTest::newRow("blanks inside")
        << QByteArray("not a tap: at all") << QStringList{u"not a tap: at all"_s};
    QTest::newRow("line ends of another system")
        << QByteArray("b/b\r\na/a\r\n") << QStringList{u"a/a\r"_s, u"b/b\r"_s};
    QTest::newRow("text that could be composed") << QByteArray("cafe\u0301/\u1112\u1161\u11ab\n")
                                                 << QStringList{u"cafe\u0301/\u1112\u1161\u11ab"_s};
    QTest::newRow("NUL") << QByteArray("a\0b/c\nd/e\n", 10)
                         << QStringList{QString(u"a\0b/c"_s), u"d/e"_s};
}

void LoadsTest::readTapsLineByLine() {
    QFETCH(QByteArray, output);
    QFETCH(QStringList, taps);
    const Loaded manager(&BrewManager::loadTaps, output);
    QCOMPARE(namesOf(*manager->taps), taps);
    QCOMPARE(*manager->errorMessage, std::nullopt);
}

void LoadsTest::sortTapsWithoutTheUsersLocale() {
    const FakeBrew brew;
    brew.setBody(brew.print("homebrew/core\nUser/Tools\nalpha/beta\n"));
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"LC_ALL"_s, u"en_US.UTF-8"_s);
    const SecondProcess process(u"taps"_s, {brew.path()}, environment);
    QCOMPARE(process.output(), QByteArray("User/Tools alpha/beta homebrew/core"));
}

void LoadsTest::decodeAReportOfAHundredMegabytes() {
    constexpr int size = 100'000'000;
    const FakeBrew brew(R"(printf '{"casks":[],"formulae":[{"name":"a","desc":"'
        head -c )" + QByteArray::number(size) +
                        R"( /dev/zero | tr '\0' x
        printf '"}]}')");
    BrewManager manager(brewAt(brew));
    QElapsedTimer timer;
    timer.start();
    QCoro::waitFor(manager.loadFormulae());
    qInfo("a report of 100 MB: %lld ms", timer.elapsed());
    QCOMPARE(*manager.errorMessage, std::nullopt);
    QCOMPARE(manager.formulae->constFirst().desc.size(), size);
    QVERIFY(timer.elapsed() < 30'000);
}

int main(int argc, char* argv[]) {
    return SecondProcess::main<LoadsTest>(argc, argv, {{u"taps"_s, printTaps}});
}

#include "tst_loads.moc"
