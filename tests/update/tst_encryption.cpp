// SPDX-License-Identifier: MIT
#include "ChangedVariable.h"
#include "FreshHome.h"
#include "UpdateScene.h"

#include <QStandardPaths>
#include <QTest>

using namespace Qt::StringLiterals;

/// A server that nobody vouches for, and the same one once somebody does.
class EncryptionTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void takesAnErrorForAFailedCheck();
    void takesAnErrorForAFailedDownload();
    void installsFromATrustedServer();
    void neverGivesUpEncryption();

private:
    FreshHome m_home;
    std::optional<ReleaseServer> m_server;
};

namespace {

constexpr const char* trusted = "LUMORA_TRUSTED_CERTIFICATE";

} // namespace

void EncryptionTest::initTestCase() {
    if (QStandardPaths::findExecutable(u"openssl"_s).isEmpty())
        QSKIP("openssl makes the certificates of this test, and it is not installed");
    m_server.emplace(ReleaseServer::Transport::Encrypted);
}

void EncryptionTest::takesAnErrorForAFailedCheck() {
    UpdateScene scene(*m_server);
    scene.offerArchive();
    scene.updater().checkForUpdatesManually();
    QTRY_COMPARE(scene.alerts().shown().size(), 1);
    QCOMPARE(scene.alerts().shown().first().title, u"Update Check Failed"_s);
    QCOMPARE(scene.alerts().shown().first().text, u"Failed to check for updates."_s);
    QVERIFY(scene.server().requests().isEmpty());
}

void EncryptionTest::takesAnErrorForAFailedDownload() {
    ReleaseServer own;
    ReleaseServer& stranger = *m_server;
    UpdateScene scene(own);
    scene.offerArchive();
    stranger.reset();
    stranger.answer(u"/archive.tar.gz"_s, {{u"file"_s, scene.servedArchive()}});
    scene.server().redirect(u"/archive.tar.gz"_s, stranger.address() + u"/archive.tar.gz"_s);
    scene.updater().checkForUpdatesManually();
    QTRY_COMPARE_WITH_TIMEOUT(scene.alerts().shown().size(), 2, UpdateScene::patience);
    QVERIFY2(scene.alerts().shown().last().text.contains(u"self-signed"_s),
             qPrintable(scene.alerts().shown().last().text));
    QVERIFY(stranger.requests().isEmpty());
    QVERIFY(!scene.isAskedToEnd());
    QVERIFY(scene.isBundleUntouched());
}

void EncryptionTest::installsFromATrustedServer() {
    UpdateScene scene(*m_server);
    scene.offerArchive();
    const ChangedVariable certificate(trusted, m_server->certificatePath().toUtf8());
    scene.updater().checkForUpdatesManually();
    QTRY_VERIFY2_WITH_TIMEOUT(scene.isSwapDone(), scene.description(), UpdateScene::patience);
}

void EncryptionTest::neverGivesUpEncryption() {
    // Plain http to this machine would do, had it been so from the beginning.
    ReleaseServer plain;
    UpdateScene scene(*m_server);
    scene.offerArchive();
    const ChangedVariable certificate(trusted, m_server->certificatePath().toUtf8());
    plain.answer(u"/archive.tar.gz"_s, {{u"file"_s, scene.servedArchive()}});
    scene.server().redirect(u"/archive.tar.gz"_s, plain.address() + u"/archive.tar.gz"_s);
    scene.updater().checkForUpdatesManually();
    QTRY_COMPARE_WITH_TIMEOUT(scene.alerts().shown().size(), 2, UpdateScene::patience);
    QVERIFY2(scene.alerts().shown().last().text.endsWith(u"would not be secure."_s),
             qPrintable(scene.alerts().shown().last().text));
    QVERIFY(plain.requests().isEmpty());
    QVERIFY(scene.isBundleUntouched());
}

QTEST_GUILESS_MAIN(EncryptionTest)
#include "tst_encryption.moc"
