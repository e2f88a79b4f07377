// SPDX-License-Identifier: MIT
#include "../model/SampleReports.h"
#include "BrewListResponse.h"
#include "Faulty.h"
#include "FreshHome.h"
#include "JsonReport.h"

#include <QDir>

#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <functional>
#include <memory>

using namespace Qt::StringLiterals;
using namespace std::string_literals;

/// All that can go wrong with a brew, through the real shell and the real pipes: what a load, an
/// operation and a report say of it, and what is left behind.
class FaultsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init() { m_home = std::make_unique<FreshHome>(); }

    void areToldAndLeaveNothing_data();
    void areToldAndLeaveNothing();
    void areToldWhereverAReportIsCut();
    void areToldOfHalfAGigabyte();

private:
    std::unique_ptr<FreshHome> m_home;
};

namespace {

constexpr int mebibyte = 1024 * 1024;

const std::string goodReport = R"({"formulae":[{"name":"jq"}],"casks":[]})";
const QByteArray printReport = "printf '%s' '" + QByteArray::fromStdString(goodReport) + "'\n";

struct Fault final {
    QByteArray name;
    /// What brew does.
    QByteArray body{};
    /// `@` stands for brew's path in what it prints.
    std::string output{};
    std::string error{};
    int status{};
    QByteArray profile{};
    /// Makes something else of the file that brew is.
    std::function<void(const QString& path)> spoil{};
};

void replaceBy(const QString& path, const QByteArray& content,
               QFile::Permissions permissions = QFile::ReadOwner | QFile::ExeOwner) {
    QFile::remove(path);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() ||
        !file.setPermissions(permissions))
        qFatal("%s could not be written", qUtf8Printable(path));
}

QList<Fault> brewsThatCannotRun() {
    const auto isMissing = [](const QString& path) { QFile::remove(path); };
    const auto isFolder = [](const QString& path) {
        QFile::remove(path);
        QDir().mkdir(path);
    };
    const auto isPlain = [](const QString& path) { replaceBy(path, {}, QFile::ReadOwner); };
    const auto isEmpty = [](const QString& path) { replaceBy(path, {}); };
    const auto hasNoShell = [](const QString& path) { replaceBy(path, "#!/missing/shell\n"); };
    return {
        {.name = "missing",
         .error = "zsh:1: no such file or directory: @\n",
         .status = 127,
         .spoil = isMissing},
        {.name = "a folder",
         .error = "zsh:1: permission denied: @\n",
         .status = 126,
         .spoil = isFolder},
        {.name = "not executable",
         .error = "zsh:1: permission denied: @\n",
         .status = 126,
         .spoil = isPlain},
        {.name = "an empty file", .spoil = isEmpty},
        {.name = "of a shell that is missing",
         .error = "zsh:1: @: bad interpreter: /missing/shell: no such file or directory\n",
         .status = 127,
         .spoil = hasNoShell},
    };
}

QList<Fault> brewsEndedBySignals() {
    QList<Fault> faults;
    for (const int number : {SIGHUP, SIGINT, SIGQUIT, SIGILL, SIGTRAP, SIGABRT, SIGBUS, SIGFPE,
                             SIGKILL, SIGUSR1, SIGSEGV, SIGUSR2, SIGPIPE, SIGALRM, SIGTERM}) {
        faults.append(
            {.name = "ended by signal " + QByteArray::number(number),
             .body = "ulimit -c 0\necho half\nkill -" + QByteArray::number(number) + " $$",
             .output = "half\n",
             .status = 128 + number});
    }
    return faults;
}

QList<Fault> brewsWithOddStreams() {
    return {
        {.name = "nothing at all", .body = ":"},
        {.name = "status 1 with a good report",
         .body = printReport + "exit 1",
         .output = goodReport,
         .status = 1},
        {.name = "status 1 with a complaint",
         .body = "echo 'Error: no' >&2; exit 1",
         .error = "Error: no\n",
         .status = 1},
        {.name = "status 255", .body = "exit 255", .status = 255},
        {.name = "silence for a second", .body = "sleep 1\n" + printReport, .output = goodReport},
        {.name = "errors of 64 KiB",
         .body = flood(64 * 1024, 'e', ">&2") + printReport,
         .output = goodReport,
         .error = std::string(64 * 1024, 'e')},
        {.name = "errors of just less than 1 MiB",
         .body = flood(mebibyte - 1, 'e', ">&2") + printReport,
         .output = goodReport,
         .error = std::string(mebibyte - 1, 'e')},
        {.name = "errors of 1 MiB",
         .body = flood(mebibyte, 'e', ">&2") + printReport,
         .output = goodReport,
         .error = std::string(mebibyte, 'e')},
        {.name = "errors of 3 MiB behind the output",
         .body = printReport + "exec >&-\n" + flood(3 * mebibyte, 'e', ">&2"),
         .output = goodReport,
         .error = std::string(3 * mebibyte, 'e')},
        {.name = "10 MiB that are no report",
         .body = flood(10 * mebibyte, 'x'),
         .output = std::string(10 * mebibyte, 'x')},
        {.name = "output closed early",
         .body = "exec >&-\necho still here >&2\nexit 4",
         .error = "still here\n",
         .status = 4},
        {.name = "errors closed early", .body = "exec 2>&-\n" + printReport, .output = goodReport},
        {.name = "both closed early", .body = "exec >&- 2>&-\nsleep 0.1\nexit 5", .status = 5},
        {.name = "a grandchild with the output",
         .body = "( sleep 0.2; echo late ) 2> /dev/null &\necho early",
         .output = "early\nlate\n"},
        {.name = "a grandchild with the errors",
         .body = "( sleep 0.2; echo late >&2 ) > /dev/null &\necho early",
         .output = "early\n",
         .error = "late\n"},
        {.name = "a grandchild with nothing of ours",
         .body = "sleep 1 > /dev/null 2>&1 &\n" + printReport,
         .output = goodReport},
    };
}

QList<Fault> brewsWithOddBytes() {
    const auto printed = [](const QByteArray& name, const QByteArray& bytes) {
        return Fault{
            .name = name, .body = "printf '%s' '" + bytes + '\'', .output = bytes.toStdString()};
    };
    return {
        {.name = "invalid UTF-8 first", .body = "printf '\\377'\n" + printReport},
        {.name = "invalid UTF-8 last", .body = printReport + "printf '\\303'"},
        {.name = "invalid UTF-8 on the error stream",
         .body = printReport + "printf '\\377' >&2",
         .output = goodReport},
        {.name = "NUL in front",
         .body = "printf '\\0'\n" + printReport,
         .output = std::string(1, '\0') + goodReport},
        {.name = "NUL inside a name",
         .body = R"(printf '{"formulae":[{"name":"j\0q"}],"casks":[]}')",
         .output = "{\"formulae\":[{\"name\":\"j\0q\"}],\"casks\":[]}"s},
        {.name = "lists 100,000 deep",
         .body = flood(100'000, '['),
         .output = std::string(100'000, '[')},
        printed("objects 2,000 deep", QByteArray(R"({"formulae":)").repeated(2'000)),
        printed("keys twice", R"({"formulae":[],"formulae":[{"name":"a"}],"casks":[]})"),
        printed("a number too large", R"({"formulae":[{"name":1e999}],"casks":[]})"),
        printed("a whole number too large",
                R"({"formulae":[{"name":"a","revision":99999999999999999999}],"casks":[]})"),
        printed("a number that is none", R"({"formulae":[NaN],"casks":[]})"),
        printed("half a surrogate", R"({"formulae":[{"name":"\ud800"}],"casks":[]})"),
        printed("a comma too many", R"({"formulae":[],"casks":[],})"),
        printed("a mark of byte order", "\xEF\xBB\xBF{\"formulae\":[],\"casks\":[]}"),
        printed("a page of the network's log-in", "<html><body>Welcome</body></html>"),
        printed("two reports", R"({"formulae":[],"casks":[]}{"formulae":[],"casks":[]})"),
    };
}

QList<Fault> brewsBehindAProfile() {
    return {
        {.name = "a profile that prints",
         .body = printReport,
         .output = "Welcome!\n" + goodReport,
         .profile = "echo Welcome!"},
        {.name = "a profile that complains",
         .body = printReport,
         .output = goodReport,
         .error = "Careful!\n",
         .profile = "echo Careful! >&2"},
        {.name = "a profile that ends the shell",
         .body = printReport,
         .status = 3,
         .profile = "exit 3"},
        {.name = "a profile that becomes another program",
         .body = printReport,
         .profile = "exec true"},
        {.name = "a profile that kills the shell",
         .body = printReport,
         .status = 128 + SIGKILL,
         .profile = "kill -KILL $$"},
    };
}

const QList<Fault>& allFaults() {
    static const QList<Fault> faults = brewsThatCannotRun() + brewsEndedBySignals() +
                                       brewsWithOddStreams() + brewsWithOddBytes() +
                                       brewsBehindAProfile();
    return faults;
}

/// The words of a load whose brew ended well and printed this.
QString messageFor(const std::string& output) {
    const auto decoded = decodeReport<BrewListResponse>(output);
    const auto* const error = std::get_if<DecodingError>(&decoded);
    return error != nullptr ? Faulty::formulaeLoad().failurePrefix + error->description : u"none"_s;
}

/// Compares without printing megabytes.
void compareTexts(const QString& actual, const QString& expected) {
    constexpr qsizetype longest = 400;
    QCOMPARE(actual.left(longest), expected.left(longest));
    QVERIFY(actual == expected);
}

bool grantsLargePipes() {
#ifdef F_SETPIPE_SZ
    int ends[2];
    if (::pipe(ends) != 0)
        return false;
    const bool isGranted = ::fcntl(ends[1], F_SETPIPE_SZ, mebibyte) >= mebibyte;
    for (const int end : ends)
        ::close(end);
    return isGranted;
#else
    return false;
#endif
}

QString withPath(const std::string& text, const FakeBrew& brew) {
    return QString::fromStdString(text).replace(u'@', brew.path());
}

} // namespace

void FaultsTest::areToldAndLeaveNothing_data() {
    QTest::addColumn<qsizetype>("index");
    for (qsizetype i = 0; i < allFaults().size(); ++i)
        QTest::newRow(allFaults()[i].name.constData()) << i;
}

void FaultsTest::areToldAndLeaveNothing() {
    QFETCH(const qsizetype, index);
    const Fault& fault = allFaults()[index];
    if (fault.error.size() > 64 * 1024 && !grantsLargePipes())
        QSKIP("The system grants no large pipe.");
    const FakeBrew brew(fault.body);
    m_home->write(u".zprofile"_s, fault.profile + '\n');
    Faulty faulty(brew);
    if (fault.spoil)
        fault.spoil(brew.path());
    const QString output = withPath(fault.output, brew);
    const QString error = withPath(fault.error, brew);
    const bool isWell = fault.status == 0;
    const QByteArray before = traces();

    const QString message =
        isWell ? messageFor(fault.output) : Faulty::formulaeLoad().statusFailure;
    compareTexts(faulty.loadFormulae(), message);
    QCOMPARE(faulty.keptItsLists(), message != u"none"_s);
    compareTexts(faulty.upgrade(), u"Upgrading wget...\n"_s + output +
                                       (error.isEmpty() ? QString() : u'\n' + error) +
                                       (isWell ? u"\nSuccessfully upgraded wget (true)"_s
                                               : u"\nFailed to upgrade wget (false)"_s));
    compareTexts(faulty.doctor(), error.isEmpty() ? output : output + u'\n' + error);
    // A thread ends a moment after it has given its result.
    QTRY_COMPARE(traces(), before);
}

void FaultsTest::areToldWhereverAReportIsCut() {
    const FakeBrew brew;
    Faulty faulty(brew);
    const QByteArray before = traces();
    for (int percent = 1; percent < 100; ++percent) {
        const QByteArray part = installedReport.left(installedReport.size() * percent / 100);
        brew.setBody(brew.print(part));
        const QString message = faulty.loadFormulae();
        QVERIFY(message.startsWith(Faulty::formulaeLoad().failurePrefix));
        // A cut through a character leaves a text that is none.
        QCOMPARE(message, messageFor(part.isValidUtf8() ? part.toStdString() : std::string()));
        QVERIFY(faulty.keptItsLists());
    }
    QTRY_COMPARE(traces(), before);
    brew.setBody(brew.print(installedReport));
    QCOMPARE(faulty.loadFormulae(), u"none"_s);
    QTRY_COMPARE(traces(), before);
}

void FaultsTest::areToldOfHalfAGigabyte() {
    const FakeBrew brew(flood(500'000'000, 'x'));
    Faulty faulty(brew);
    const QByteArray before = traces();
    const QString message = faulty.loadFormulae();
    QVERIFY2(message.startsWith(Faulty::formulaeLoad().failurePrefix + u"line 1, column 1: "_s),
             qUtf8Printable(message));
    QVERIFY(message.size() < 200);
    QVERIFY(faulty.keptItsLists());
    QTRY_COMPARE(traces(), before);
}

QTEST_GUILESS_MAIN(FaultsTest)
#include "tst_faults.moc"
