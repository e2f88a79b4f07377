// SPDX-License-Identifier: MIT
#include "ChangedVariable.h"
#include "Shortage.h"
#include "UpdateFailure.h"
#include "UpdateFiles.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

class UpdateFolderTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void liesInTheTemporaryDirectory();
    void isMadePrivateWhateverTheMask();
    void isUsedAgain();
    void refusesAFolderThatOthersCanEnter_data();
    void refusesAFolderThatOthersCanEnter();
    void refusesAFolderOfAnother();
    void refusesALink();
    void refusesAFile();
    void reportsAnUnwritableDirectory();

private:
    [[nodiscard]] QString path() const { return m_folder->filePath(u"private"_s); }

    std::optional<QTemporaryDir> m_folder;
};

namespace {

QString failureOf(const QString& path) {
    try {
        UpdateFiles::makePrivateFolder(path);
    } catch (const UpdateFailure& failure) {
        return failure.description();
    }
    return {};
}

unsigned modeOf(const QString& path) {
    struct stat status {};

    ::stat(QFile::encodeName(path).constData(), &status);
    return status.st_mode & 07777;
}

} // namespace

void UpdateFolderTest::init() {
    m_folder.emplace();
}

void UpdateFolderTest::cleanup() {
    m_folder.reset();
}

void UpdateFolderTest::liesInTheTemporaryDirectory() {
    const ChangedVariable temporary("TMPDIR", m_folder->path().toUtf8());
    const QString path = UpdateFiles::prepareFolder();
#ifdef Q_OS_MACOS
    QCOMPARE(path, m_folder->path());
#else
    QCOMPARE(path, m_folder->filePath(u"lumora-"_s + QString::number(::geteuid())));
    QCOMPARE(modeOf(path), 0700U);
#endif
}

void UpdateFolderTest::isMadePrivateWhateverTheMask() {
    const mode_t before = ::umask(0);
    const QString failure = failureOf(path());
    ::umask(before);
    QCOMPARE(failure, QString());
    QCOMPARE(modeOf(path()), 0700U);
}

void UpdateFolderTest::isUsedAgain() {
    QCOMPARE(failureOf(path()), QString());
    QCOMPARE(failureOf(path()), QString());
}

void UpdateFolderTest::refusesAFolderThatOthersCanEnter_data() {
    QTest::addColumn<int>("mode");
    QTest::newRow("everybody") << 0777;
    QTest::newRow("everybody may look") << 0704;
    QTest::newRow("everybody may pass") << 0701;
    QTest::newRow("the group may write") << 0720;
    QTest::newRow("sticky") << 01777;
}

void UpdateFolderTest::refusesAFolderThatOthersCanEnter() {
    QFETCH(const int, mode);
    QVERIFY(QDir().mkdir(path()));
    QCOMPARE(::chmod(QFile::encodeName(path()).constData(), static_cast<mode_t>(mode)), 0);
    QCOMPARE(failureOf(path()),
             path() + u" is open to other users. Please remove it and try again."_s);
}

void UpdateFolderTest::refusesAFolderOfAnother() {
    QString foreign = u"/"_s;
    if (::geteuid() == 0) {
        QVERIFY(QDir().mkdir(path()));
        QCOMPARE(::chmod(QFile::encodeName(path()).constData(), 0700), 0);
        constexpr uid_t nobody = 65534;
        QCOMPARE(::chown(QFile::encodeName(path()).constData(), nobody, nobody), 0);
        foreign = path();
    }
    QCOMPARE(failureOf(foreign),
             foreign + u" is open to other users. Please remove it and try again."_s);
}

void UpdateFolderTest::refusesALink() {
    // To a folder that would do by itself.
    QVERIFY(QDir().mkdir(m_folder->filePath(u"target"_s)));
    QVERIFY(QFile::setPermissions(m_folder->filePath(u"target"_s),
                                  QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    QVERIFY(QFile::link(m_folder->filePath(u"target"_s), path()));
    QCOMPARE(failureOf(path()), path() + u": Not a directory"_s);
}

void UpdateFolderTest::refusesAFile() {
    QFile file(path());
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(failureOf(path()), path() + u": Not a directory"_s);
}

void UpdateFolderTest::reportsAnUnwritableDirectory() {
    const ReadOnlyFolder unwritable(m_folder->path());
    const QString failure = failureOf(path());
    QVERIFY2(failure == path() + u": Read-only file system"_s ||
                 failure == path() + u": Permission denied"_s,
             qPrintable(failure));
}

QTEST_GUILESS_MAIN(UpdateFolderTest)
#include "tst_updatefolder.moc"
