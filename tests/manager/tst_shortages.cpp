// SPDX-License-Identifier: MIT
#include "../core/DescriptorLimit.h"
#include "Faulty.h"
#include "FreshHome.h"
#include "RunBrewSync.h"
#include "SecondProcess.h"

#include <sys/resource.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;

/// What a load, an operation and a report say when the system has too little for a run of brew,
/// and what is left behind.
class ShortagesTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void areToldWithoutDescriptors_data();
    void areToldWithoutDescriptors();
    void areToldWithoutProcesses();
    void areToldWithoutMemory_data();
    void areToldWithoutMemory();

private:
    const FreshHome m_home;
};

namespace {

/// What all three say when there is no result.
void compareFailures(Faulty& faulty, const QString& why) {
    QCOMPARE(faulty.loadFormulae(), Faulty::formulaeLoad().failurePrefix + why);
    QVERIFY(faulty.keptItsLists());
    QCOMPARE(faulty.upgrade(), u"Upgrading wget...\n\nError: "_s + why + u" (false)"_s);
    QCOMPARE(faulty.doctor(), u"Error: "_s + why);
}

} // namespace

void ShortagesTest::areToldWithoutDescriptors_data() {
    QTest::addColumn<int>("left");
    for (int left = 0; left < 4; ++left)
        QTest::addRow("%d left", left) << left;
}

void ShortagesTest::areToldWithoutDescriptors() {
    QFETCH(const int, left);
    const FakeBrew brew("exit 1");
    Faulty faulty(brew);
    const QByteArray before = traces();
    // A sanitizer needs descriptors itself to look at classes for the first time.
    QCOMPARE(faulty.loadFormulae(), Faulty::formulaeLoad().statusFailure);
    QCOMPARE(faulty.upgrade(), u"Upgrading wget...\n\nFailed to upgrade wget (false)"_s);
    QCOMPARE(faulty.doctor(), u""_s);
    brew.setBody(R"(echo '{"formulae":[],"casks":[]}')");
    {
        const DescriptorLimit limit(left);
        compareFailures(faulty, u"/bin/zsh could not be started: Too many open files."_s);
    }
    QTRY_COMPARE(traces(), before);
    QCOMPARE(faulty.loadFormulae(), u"none"_s);
    // Its thread ends a moment after it has given its result: before the next row begins.
    QTRY_COMPARE(traces(), before);
}

namespace {

/// As somebody who may have no more processes, prints what a manager and the runner say.
int runWithoutProcesses(const QStringList& arguments) {
    int count = 1;
    char name[] = "application";
    char* vector[] = {name, nullptr};
    const QCoreApplication application(count, vector);
    BrewManager manager(brewAt(arguments[0]));
    // Root may have as many as it likes.
    constexpr uid_t nobody = 65534;
    if (::geteuid() == 0 && ::setuid(nobody) != 0)
        return EXIT_FAILURE;
    const rlimit none{};
    ::setrlimit(RLIMIT_NPROC, &none);
    const QByteArray before = traces();
    QCoro::waitFor(manager.loadTaps());
    const RunOutcome outcome = runBrewSync("brew", {"tap"});
    std::printf("%s\n%s\n%d %d\n", qUtf8Printable(manager.errorMessage->value_or(u"none"_s)),
                std::get<LaunchError>(outcome).description.c_str(), *manager.isLoadingTaps ? 1 : 0,
                traces() == before ? 1 : 0);
    return EXIT_SUCCESS;
}

} // namespace

void ShortagesTest::areToldWithoutProcesses() {
    const FakeBrew brew;
    const SecondProcess process(u"without processes"_s, {brew.path()});
    QCOMPARE(process.output(), "Failed to load taps: No thread could be started for brew: "
                               "Resource temporarily unavailable\n"
                               "/bin/zsh could not be started: Resource temporarily unavailable.\n"
                               "0 1\n");
}

namespace {

/// Limits this program's memory to so many bytes more than it uses.
class TightMemory final {
public:
    explicit TightMemory(rlim_t more) {
        QFile sizes(u"/proc/self/statm"_s);
        if (!sizes.open(QIODevice::ReadOnly))
            qFatal("This program doesn't know its size");
        const auto pages = static_cast<rlim_t>(sizes.readAll().split(' ')[0].toLongLong());
        const auto used = pages * static_cast<rlim_t>(::sysconf(_SC_PAGESIZE));
        limit(used + more);
    }

    TightMemory(const TightMemory&) = delete;
    TightMemory& operator=(const TightMemory&) = delete;

    ~TightMemory() { limit(RLIM_INFINITY); }

private:
    static void limit(rlim_t bytes) {
        const rlimit limit{.rlim_cur = bytes, .rlim_max = RLIM_INFINITY};
        ::setrlimit(RLIMIT_AS, &limit);
    }
};

/// Prints what a manager says of a hundred million letters, with so many MiB of memory for them.
int runWithoutMemory(const QStringList& arguments) {
    int count = 1;
    char name[] = "application";
    char* vector[] = {name, nullptr};
    const QCoreApplication application(count, vector);
    BrewManager manager(brewAt(arguments[0]));
    const QString& call = arguments[1];
    QString said = u"nothing"_s;
    QObject::connect(&manager, &BrewManager::operationEnded, &manager,
                     [&](const OperationReport& report) {
                         if (report.transcript == *manager.operationOutput && !report.succeeded &&
                             report.closing.isEmpty())
                             said = report.transcript;
                     });
    {
        const TightMemory memory(static_cast<rlim_t>(arguments[2].toInt()) * 1024 * 1024);
        if (call == u"upgrade"_s) {
            if (QCoro::waitFor(manager.upgrade(u"wget"_s, PackageType::formula)))
                return EXIT_FAILURE;
        } else if (call == u"taps"_s) {
            QCoro::waitFor(manager.loadTaps());
            said = manager.errorMessage->value_or(u"none"_s);
        } else {
            said = QCoro::waitFor(manager.doctor());
        }
    }
    if (*manager.isRunningOperation || *manager.isLoadingTaps)
        return EXIT_FAILURE;
    constexpr qsizetype longest = 400;
    std::puts(qUtf8Printable(said.left(longest)));
    return EXIT_SUCCESS;
}

} // namespace

void ShortagesTest::areToldWithoutMemory_data() {
    QTest::addColumn<QString>("call");
    QTest::addColumn<int>("mebibytes");
    QTest::addColumn<QByteArray>("work");
    QTest::addColumn<QByteArray>("start");
    const auto row = [](const char* what, const QString& call, int mebibytes,
                        const QByteArray& work, const QByteArray& start) {
        QTest::addRow("%s: room for %s", qUtf8Printable(call), what)
            << call << mebibytes << work << start;
    };
    const QByteArray output = flood(100'000'000, 'x');
    const QByteArray errors = "echo Some words\nexec >&-\n" + flood(100'000'000, 'x', ">&2");
    const QByteArray operation = "Upgrading wget...\n\nError: ";
    row("nothing", u"upgrade"_s, 100, output, operation);
    row("the bytes", u"upgrade"_s, 300, output, operation);
    row("a text of them", u"upgrade"_s, 450, output, operation);
    row("what comes before them", u"upgrade"_s, 450, errors, operation);
    row("nothing", u"taps"_s, 100, output, "Failed to load taps: ");
    row("the bytes", u"taps"_s, 300, output, "Failed to load taps: ");
    row("nothing", u"doctor"_s, 100, output, "Error: ");
    row("the bytes", u"doctor"_s, 300, output, "Error: ");
}

void ShortagesTest::areToldWithoutMemory() {
#if !defined(__linux__) || defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    QSKIP("This program's memory can't be limited here.");
#endif
    QFETCH(const QString, call);
    QFETCH(const int, mebibytes);
    QFETCH(const QByteArray, work);
    QFETCH(const QByteArray, start);
    const FakeBrew brew(work);
    const SecondProcess process(u"without memory"_s,
                                {brew.path(), call, QString::number(mebibytes)});
    QCOMPARE(process.output(),
             start + "There is not enough memory for this command and what it prints.\n");
    QCOMPARE(process.status(), EXIT_SUCCESS);
}

int main(int argc, char* argv[]) {
    return SecondProcess::main<ShortagesTest>(
        argc, argv,
        {{u"without processes"_s, runWithoutProcesses}, {u"without memory"_s, runWithoutMemory}});
}

#include "tst_shortages.moc"
