// SPDX-License-Identifier: MIT
#include "AskpassProgram.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

using namespace Qt::StringLiterals;

class AskpassProgramTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void isOfferedWhereNoneIsSet_data();
    void isOfferedWhereNoneIsSet();
    void isFoundWhereItIsInstalled();
    void leavesTheUsersOwn();
    void isOfferedOnlyIfItCanBeRun_data();
    void isOfferedOnlyIfItCanBeRun();

private:
    [[nodiscard]] QString program() const { return m_folder->filePath(u"lumora-askpass"_s); }

    void makeProgram(QFile::Permissions permissions) const {
        QFile file(program());
        QVERIFY(file.open(QIODevice::WriteOnly));
        QVERIFY(file.setPermissions(permissions));
    }

    std::optional<QTemporaryDir> m_folder;
};

namespace {

constexpr const char* variable = "SUDO_ASKPASS";
constexpr const char* session = "HOMEBREW_LUMORA_SESSION";

} // namespace

void AskpassProgramTest::init() {
    m_folder.emplace();
    qunsetenv(variable);
    qunsetenv(session);
    qputenv("DISPLAY", ":7");
}

void AskpassProgramTest::isOfferedWhereNoneIsSet_data() {
    QTest::addColumn<bool>("isSet");
    QTest::newRow("unset") << false;
    QTest::newRow("empty") << true;
}

void AskpassProgramTest::isOfferedWhereNoneIsSet() {
    QFETCH(const bool, isSet);
    if (isSet)
        qputenv(variable, "");
    makeProgram(QFile::ReadOwner | QFile::ExeOwner);
    AskpassProgram::offer(m_folder->path());
    QCOMPARE(qgetenv(variable), program().toUtf8());
    QVERIFY(qgetenv(session).split('\n').contains("DISPLAY=:7"));
}

void AskpassProgramTest::isFoundWhereItIsInstalled() {
    const QString programs = m_folder->filePath(u"bin"_s);
    const QString installed = QDir::cleanPath(programs + u"/" LUMORA_HELPER_FOLDER ""_s);
    makeProgram(QFile::ReadOwner | QFile::ExeOwner);
    for (const QString& folder : {installed, programs}) {
        // The bundle's is the one beside the others.
        QVERIFY(QDir().mkpath(folder));
        QVERIFY(QFile::copy(program(), folder + u"/lumora-askpass"_s));
        qunsetenv(variable);
        AskpassProgram::offer(programs);
        QCOMPARE(qEnvironmentVariable(variable), folder + u"/lumora-askpass"_s);
    }
}

void AskpassProgramTest::leavesTheUsersOwn() {
    qputenv(variable, "/usr/bin/of-the-user");
    makeProgram(QFile::ReadOwner | QFile::ExeOwner);
    AskpassProgram::offer(m_folder->path());
    QCOMPARE(qgetenv(variable), QByteArray("/usr/bin/of-the-user"));
    QVERIFY(!qEnvironmentVariableIsSet(session));
}

void AskpassProgramTest::isOfferedOnlyIfItCanBeRun_data() {
    QTest::addColumn<QString>("what");
    QTest::newRow("nothing") << u"nothing"_s;
    QTest::newRow("a folder") << u"a folder"_s;
    QTest::newRow("not executable") << u"a file"_s;
}

void AskpassProgramTest::isOfferedOnlyIfItCanBeRun() {
    QFETCH(const QString, what);
    if (what == u"a folder"_s)
        QVERIFY(QDir().mkdir(program()));
    else if (what == u"a file"_s)
        makeProgram(QFile::ReadOwner);
    AskpassProgram::offer(m_folder->path());
    QVERIFY(!qEnvironmentVariableIsSet(variable));
    QVERIFY(!qEnvironmentVariableIsSet(session));
}

QTEST_GUILESS_MAIN(AskpassProgramTest)
#include "tst_askpassprogram.moc"
