// SPDX-License-Identifier: MIT
#include "SampleBundle.h"
#include "Shortage.h"
#include "UpdateFailure.h"
#include "UpdateFiles.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

using namespace Qt::StringLiterals;

class WriteAtomicallyTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void writesANewFile();
    void replacesAFile();
    void replacesALinkAndNotItsTarget();
    void leavesAFolder();
    void leavesWhatIsThereWhenSpaceIsShort();

private:
    [[nodiscard]] QString path() const { return m_folder->filePath(u"file"_s); }

    [[nodiscard]] QString failure(const QByteArray& content) const {
        try {
            UpdateFiles::writeAtomically(path(), content);
        } catch (const UpdateFailure& reason) {
            return reason.description();
        }
        return {};
    }

    [[nodiscard]] QByteArray contentOf(const QString& name) const {
        QFile file(m_folder->filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : "nothing";
    }

    std::optional<QTemporaryDir> m_folder;
};

void WriteAtomicallyTest::init() {
    m_folder.emplace();
}

void WriteAtomicallyTest::cleanup() {
    m_folder.reset();
}

void WriteAtomicallyTest::writesANewFile() {
    QCOMPARE(failure("new"), QString());
    QCOMPARE(contentOf(u"file"_s), "new");
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files), QStringList{u"file"_s});
}

void WriteAtomicallyTest::replacesAFile() {
    QCOMPARE(failure("a longer text"), QString());
    QCOMPARE(failure("new"), QString());
    QCOMPARE(contentOf(u"file"_s), "new");
}

void WriteAtomicallyTest::replacesALinkAndNotItsTarget() {
    QFile target(m_folder->filePath(u"target"_s));
    QVERIFY(target.open(QIODevice::WriteOnly) && target.write("precious") > 0);
    target.close();
    QVERIFY(QFile::link(target.fileName(), path()));
    QCOMPARE(failure("new"), QString());
    QVERIFY(!QFileInfo(path()).isSymLink());
    QCOMPARE(contentOf(u"file"_s), "new");
    QCOMPARE(contentOf(u"target"_s), "precious");
}

void WriteAtomicallyTest::leavesAFolder() {
    QVERIFY(QDir().mkpath(path() + u"/full"_s));
    QVERIFY(failure("new").startsWith(path() + u": "_s));
    QVERIFY(QFile::exists(path() + u"/full"_s));
    QVERIFY(QDir(m_folder->path()).entryList(QDir::Files).isEmpty());
}

void WriteAtomicallyTest::leavesWhatIsThereWhenSpaceIsShort() {
    constexpr qint64 space = 64 * 1024;
    const TightSpace disk(m_folder->path(), space);
    QCOMPARE(failure("old"), QString());
    // Little enough to be kept in memory until the last moment, too.
    for (const qint64 size : {4 * space, space + 1}) {
        const QString reason = failure(QByteArray(size, 'n'));
        QCOMPARE(reason, path() + u": "_s + disk.complaint());
        QCOMPARE(contentOf(u"file"_s), "old");
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files), QStringList{u"file"_s});
    }
}

QTEST_GUILESS_MAIN(WriteAtomicallyTest)
#include "tst_writeatomically.moc"
