// SPDX-License-Identifier: MIT
#include "../core/DescriptorLimit.h"
#include "BrewAt.h"
#include "BrewListResponse.h"
#include "FreshHome.h"
#include "JsonReport.h"
#include "LoadCase.h"
#include "PublicationRecorder.h"
#include "TextForm.h"

#include <QtTest>

#include <memory>

using namespace Qt::StringLiterals;

/// The loads when something goes wrong: the old lists stay, and errorMessage says why.
class LoadsFailingTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init() { m_home = std::make_unique<FreshHome>(); }

    void reportThatBrewFailed_data();
    void reportThatBrewFailed();
    void reportThatBrewCouldNotBeStarted_data();
    void reportThatBrewCouldNotBeStarted();
    void reportWhatCouldNotBeDecoded_data();
    void reportWhatCouldNotBeDecoded();
    void readACaskWithItsVersionsInOneText();
    void takeProfileNoiseForTaps();
    void surviveAHundredMegabytesOfNonsense();
    void recoverAfterAFailure_data();
    void recoverAfterAFailure();

private:
    std::unique_ptr<FreshHome> m_home;
};

namespace {

/// A manager whose lists are filled, about to load from something worse.
class Filled final {
public:
    Filled() {
        m_brew.setBody(LoadCase::answers(m_brew));
        QCoro::waitFor(m_manager.refreshAll());
        m_lists = lists();
        m_recorder = std::make_unique<PublicationRecorder>(m_manager);
    }

    void load(const LoadCase& row) { QCoro::waitFor((m_manager.*row.load)()); }

    [[nodiscard]] const FakeBrew& brew() const { return m_brew; }

    [[nodiscard]] QStringList recorded() const { return m_recorder->lines(); }

    [[nodiscard]] QString errorMessage() const { return m_manager.errorMessage->value_or(u""_s); }

    [[nodiscard]] bool keptItsLists() const { return m_lists.size() == 5 && lists() == m_lists; }

private:
    /// Each list as text; one that was emptied or filled anew would read differently.
    [[nodiscard]] QStringList lists() const {
        const BrewManager& manager = m_manager;
        return {textForm(*manager.formulae), textForm(*manager.casks),
                textForm(*manager.outdatedFormulae), textForm(*manager.outdatedCasks),
                textForm(*manager.taps)};
    }

    FakeBrew m_brew;
    BrewManager m_manager{brewAt(m_brew)};
    QStringList m_lists;
    std::unique_ptr<PublicationRecorder> m_recorder;
};

QStringList message(const QString& text) {
    return {u"announced: errorMessage = "_s + textForm(text)};
}

/// What the decoder says of a text that is not JSON: its words are not the manager's.
QString decodersComplaint(const QByteArray& output) {
    const auto decoded = decodeReport<BrewListResponse>(output.toStdString());
    return std::get<DecodingError>(decoded).description;
}

/// Rows for every load and every way of failing.
void addRows(const QList<std::pair<const char*, QByteArray>>& bodies) {
    QTest::addColumn<QString>("load");
    QTest::addColumn<QByteArray>("body");
    for (const LoadCase& row : LoadCase::all()) {
        for (const auto& [what, body] : bodies)
            QTest::addRow("%s: %s", qUtf8Printable(row.name), what) << row.name << body;
    }
}

} // namespace

void LoadsFailingTest::reportThatBrewFailed_data() {
    addRows({{"status 1 with a report", "echo '{\"formulae\":[],\"casks\":[]}'; exit 1"},
             {"status 1 with a complaint", "echo 'Error: no such command' >&2; exit 1"},
             {"highest status", "exit 255"},
             {"ended by a signal", "kill -9 $$"},
             {"brew has gone", {}}});
}

void LoadsFailingTest::reportThatBrewFailed() {
    QFETCH(QString, load);
    QFETCH(QByteArray, body);
    const LoadCase& row = LoadCase::named(load);
    Filled filled;
    if (body.isEmpty())
        filled.brew().remove();
    else
        filled.brew().setBody(body);

    filled.load(row);
    QCOMPARE(filled.recorded(), row.recordedWith(message(row.statusFailure)));
    QVERIFY(filled.keptItsLists());
}

void LoadsFailingTest::reportThatBrewCouldNotBeStarted_data() {
    LoadCase::addRows();
}

void LoadsFailingTest::reportThatBrewCouldNotBeStarted() {
    QFETCH(QString, load);
    const LoadCase& row = LoadCase::named(load);
    Filled filled;
    {
        const DescriptorLimit none(0);
        filled.load(row);
    }
    const QString why = u"/bin/zsh could not be started: Too many open files."_s;
    QCOMPARE(filled.recorded(), row.recordedWith(message(row.failurePrefix + why)));
    QVERIFY(filled.keptItsLists());
}

void LoadsFailingTest::reportWhatCouldNotBeDecoded_data() {
    QTest::addColumn<QString>("load");
    QTest::addColumn<QByteArray>("output");
    QTest::addColumn<QString>("why");

    const QList<std::pair<const char*, QByteArray>> notJson{
        {"cut short", "{\"formulae\":[]"},
        {"a word", "nonsense"},
        {"noise of a profile", "Welcome back!\n{\"formulae\":[],\"casks\":[]}"},
        {"noise after it", "{\"formulae\":[],\"casks\":[]}\nbye %1 <b>"},
    };
    const QString nothing =
        u"the report is empty or not valid UTF-8: expected object, found nothing"_s;
    for (const QString& load : {u"formulae"_s, u"casks"_s, u"outdated"_s}) {
        const auto row = [&](const char* what, const QByteArray& output, const QString& why) {
            QTest::addRow("%s: %s", qUtf8Printable(load), what) << load << output << why;
        };
        row("empty", "", nothing);
        row("blank", " \n\n", nothing);
        row("not UTF-8", "{\"formulae\":[],\"casks\":[],\"more\":\"\xff\"}", nothing);
        for (const auto& [what, output] : notJson)
            row(what, output, decodersComplaint(output));
        row("a list", "[]", u"the report: expected object, found list"_s);
        row("no casks", R"({"formulae":[]})", u"casks: expected list, found nothing"_s);
        row("no formulae", R"({"casks":[]})", u"formulae: expected list, found nothing"_s);
        row("null for a list", R"({"formulae":null,"casks":[]})",
            u"formulae: expected list, found null"_s);
    }

    const auto row = [](const char* what, const QString& load, const QByteArray& output,
                        const QString& why) { QTest::newRow(what) << load << output << why; };
    row("formula without a name", u"formulae"_s, R"({"formulae":[{"name":"a"},{}],"casks":[]})",
        u"formulae[1].name: expected text, found nothing"_s);
    row("number for a name", u"formulae"_s, R"({"formulae":[{"name":1}],"casks":[]})",
        u"formulae[0].name: expected text, found number"_s);
    row("bad cask among formulae", u"formulae"_s, R"({"formulae":[],"casks":[{}]})",
        u"casks[0].token: expected text, found nothing"_s);
    row("text for a cask's names", u"casks"_s,
        R"({"formulae":[],"casks":[{"token":"a","name":"A"}]})",
        u"casks[0].name: expected list, found text"_s);
    row("bad keg", u"formulae"_s, R"({"formulae":[{"name":"a","installed":[{}]}],"casks":[]})",
        u"formulae[0].installed[0].version: expected text, found nothing"_s);
    row("no current version", u"outdated"_s,
        R"({"formulae":[{"name":"a","installed_versions":[]}],"casks":[]})",
        u"formulae[0].current_version: expected text, found nothing"_s);
    row("list of a cask's versions", u"outdated"_s,
        R"({"formulae":[{"name":"a","installed_versions":["1"],"current_version":"2"}],)"
        R"("casks":[{"name":"b","installed_versions":["1"],"current_version":"2"}]})",
        u"casks[0].installed_versions: expected text, found list"_s);
    row("text of a formula's versions", u"outdated"_s,
        R"({"formulae":[{"name":"a","installed_versions":"1","current_version":"2"}],"casks":[]})",
        u"formulae[0].installed_versions: expected list, found text"_s);
}

void LoadsFailingTest::reportWhatCouldNotBeDecoded() {
    QFETCH(QString, load);
    QFETCH(QByteArray, output);
    QFETCH(QString, why);
    const LoadCase& row = LoadCase::named(load);
    Filled filled;
    filled.brew().setBody(filled.brew().print(output));

    filled.load(row);
    QCOMPARE(filled.recorded(), row.recordedWith(message(row.failurePrefix + why)));
    QVERIFY(filled.keptItsLists());
}

void LoadsFailingTest::readACaskWithItsVersionsInOneText() {
    const LoadCase& row = LoadCase::named(u"outdated"_s);
    Filled filled;
    filled.brew().setBody(filled.brew().print(
        R"({"formulae":[],"casks":[{"name":"b","installed_versions":"1","current_version":"2"}]})"));
    filled.load(row);
    QCOMPARE(filled.recorded(), row.recordedWith({u"announced: outdatedFormulae = 0"_s,
                                                  uR"(announced: outdatedCasks = 1: "b")"_s}));
    QVERIFY(!filled.keptItsLists());
}

void LoadsFailingTest::takeProfileNoiseForTaps() {
    Filled filled;
    m_home->write(u".zprofile"_s, "echo 'Welcome back!'\n");
    const QByteArray report = "homebrew/core\n";
    filled.brew().setBody(filled.brew().print(report));

    filled.load(LoadCase::named(u"taps"_s));
    filled.load(LoadCase::named(u"formulae"_s));
    const QString complaint = decodersComplaint("Welcome back!\n" + report);
    QVERIFY2(complaint.contains(u"Welcome back!"_s), qUtf8Printable(complaint));
    QCOMPARE(filled.recorded(),
             LoadCase::named(u"taps"_s).recordedWith(
                 {uR"(announced: taps = 2: "Welcome back!", "homebrew/core")"_s}) +
                 LoadCase::named(u"formulae"_s)
                     .recordedWith(message(u"Failed to load formulae: "_s + complaint)));
}

void LoadsFailingTest::surviveAHundredMegabytesOfNonsense() {
    Filled filled;
    filled.brew().setBody("head -c 100000000 /dev/zero | tr '\\0' x");
    QElapsedTimer timer;
    timer.start();
    filled.load(LoadCase::named(u"casks"_s));
    qInfo("100 MB that is no report: %lld ms", timer.elapsed());
    const QString message = filled.errorMessage();
    QVERIFY2(message.startsWith(u"Failed to load casks: line 1, column 1: "_s),
             qUtf8Printable(message));
    QVERIFY2(message.size() < 200, qUtf8Printable(message));
    QVERIFY(filled.keptItsLists());
    QVERIFY(timer.elapsed() < 30'000);
}

void LoadsFailingTest::recoverAfterAFailure_data() {
    LoadCase::addRows();
}

void LoadsFailingTest::recoverAfterAFailure() {
    QFETCH(QString, load);
    const LoadCase& row = LoadCase::named(load);
    Filled filled;
    filled.brew().setBody("exit 1");
    filled.load(row);
    QCOMPARE(filled.errorMessage(), row.statusFailure);

    filled.brew().setBody(LoadCase::answers(filled.brew()));
    filled.load(row);
    QCOMPARE(filled.recorded(),
             row.recordedWith(message(row.statusFailure)) + row.recordedWith(row.publication));
    QCOMPARE(filled.errorMessage(), u""_s);
}

QTEST_GUILESS_MAIN(LoadsFailingTest)
#include "tst_loads_failing.moc"
