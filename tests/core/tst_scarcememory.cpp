// SPDX-License-Identifier: MIT
#include "FakeBrew.h"
#include "FreshHome.h"
#include "ResultText.h"

#include <QtTest>

#include <sys/wait.h>

#include <atomic>
#include <cstdlib>
#include <limits>
#include <new>

namespace {

std::atomic<std::size_t> largestBlock{std::numeric_limits<std::size_t>::max()};

/// There is no memory for larger blocks for as long as it lives.
class ScarceMemory final {
public:
    explicit ScarceMemory(std::size_t largest) { largestBlock = largest; }

    ScarceMemory(const ScarceMemory&) = delete;
    ScarceMemory& operator=(const ScarceMemory&) = delete;

    ~ScarceMemory() { largestBlock = std::numeric_limits<std::size_t>::max(); }
};

} // namespace

void* operator new(std::size_t size) {
    void* const block = size <= largestBlock ? std::malloc(size) : nullptr;
    if (block == nullptr)
        throw std::bad_alloc();
    return block;
}

void operator delete(void* block) noexcept {
    std::free(block);
}

void operator delete(void* block, std::size_t) noexcept {
    std::free(block);
}

/// Runs whose output is more than there is room for.
class ScarceMemoryTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void reportsWhatDoesNotFit_data();
    void reportsWhatDoesNotFit();
    void reportsThatThereIsNoRoomForTheCommand();
    void limitsEachStream_data();
    void limitsEachStream();

private:
    FreshHome m_home;
};

namespace {

constexpr std::size_t mebibyte = 1024 * 1024;

const std::string noMemory = "There is not enough memory for this command and what it prints.";

std::string failureOf(const RunOutcome& outcome) {
    const auto* const error = std::get_if<LaunchError>(&outcome);
    return error != nullptr ? error->description : "none";
}

/// Prints so many bytes to a stream of its script's, the shell's number of which is given.
QByteArray printing(std::size_t bytes, char stream) {
    return "head -c " + QByteArray::number(static_cast<qint64>(bytes)) +
           " /dev/zero | tr '\\0' x >&" + stream + '\n';
}

} // namespace

void ScarceMemoryTest::reportsWhatDoesNotFit_data() {
    QTest::addColumn<QByteArray>("work");
    const QByteArray output = printing(3 * mebibyte, '1');
    // Its pipe has no reader but after the end of standard output.
    const QByteArray error = "exec >&-\n" + printing(3 * mebibyte, '2');
    QTest::newRow("output") << output;
    QTest::newRow("error") << error;
    QTest::newRow("both") << output + error;
}

void ScarceMemoryTest::reportsWhatDoesNotFit() {
    QFETCH(const QByteArray, work);
    const FakeBrew brew;
    brew.setBody("set -e\n" + work + brew.reach(QStringLiteral("finished")));
    RunOutcome outcome;
    {
        const ScarceMemory memory(mebibyte);
        outcome = runBrewSync(brew.path().toStdString(), {"upgrade"});
    }
    QCOMPARE(failureOf(outcome), noMemory);
    // Whoever upgrades must not be stopped in the middle of it because its words are too many.
    QVERIFY(brew.hasReached(QStringLiteral("finished")));
    QCOMPARE(::waitpid(-1, nullptr, WNOHANG), -1);
}

void ScarceMemoryTest::reportsThatThereIsNoRoomForTheCommand() {
    const FakeBrew brew;
    const std::vector<std::string> args{std::string(2 * mebibyte, 'x')};
    RunOutcome outcome;
    {
        const ScarceMemory memory(mebibyte);
        outcome = runBrewSync(brew.path().toStdString(), args);
    }
    QCOMPARE(failureOf(outcome), noMemory);
}

void ScarceMemoryTest::limitsEachStream_data() {
    QTest::addColumn<std::size_t>("output");
    QTest::addColumn<std::size_t>("error");
    QTest::addColumn<std::string>("failure");
    const std::string tooMuch =
        "The command printed more than 2 MiB, which is more than Lumora keeps.";
    QTest::newRow("both full") << 2 * mebibyte << 2 * mebibyte << std::string("none");
    QTest::newRow("a byte of output too much") << 2 * mebibyte + 1 << mebibyte << tooMuch;
    QTest::newRow("a byte of error too much") << mebibyte << 2 * mebibyte + 1 << tooMuch;
    QTest::newRow("far too much") << 20 * mebibyte << 20 * mebibyte << tooMuch;
}

void ScarceMemoryTest::limitsEachStream() {
    QFETCH(const std::size_t, output);
    QFETCH(const std::size_t, error);
    QFETCH(const std::string, failure);
    const FakeBrew brew;
    brew.setBody("set -e\n" + printing(output, '1') + "exec >&-\n" + printing(error, '2') +
                 brew.reach(QStringLiteral("finished")));
    const RunOutcome outcome = runBrewSync(brew.path().toStdString(), {}, 2 * mebibyte);
    QCOMPARE(failureOf(outcome), failure);
    if (const auto* const result = std::get_if<CommandResult>(&outcome)) {
        QCOMPARE(result->standardOutput.size(), output);
        QCOMPARE(result->standardError.size(), error);
    }
    QVERIFY(brew.hasReached(QStringLiteral("finished")));
    QCOMPARE(::waitpid(-1, nullptr, WNOHANG), -1);
}

QTEST_GUILESS_MAIN(ScarceMemoryTest)
#include "tst_scarcememory.moc"
