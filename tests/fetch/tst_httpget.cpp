// SPDX-License-Identifier: MIT
#include "FreshHome.h"
#include "HttpGet.h"
#include "ReleaseServer.h"

#include <QBuffer>
#include <QCoroTask>
#include <QNetworkAccessManager>
#include <QNetworkRequest>
#include <QSslConfiguration>
#include <QStandardPaths>
#include <QtTest>

using namespace Qt::StringLiterals;

class HttpGetTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void fetchesWhatFitsIntoNoBufferOnTheWay_data();
    void fetchesWhatFitsIntoNoBufferOnTheWay();

private:
    FreshHome m_home;
};

void HttpGetTest::fetchesWhatFitsIntoNoBufferOnTheWay_data() {
    QTest::addColumn<ReleaseServer::Transport>("transport");
    QTest::addColumn<bool>("isChunked");

    using enum ReleaseServer::Transport;
    QTest::newRow("plain") << Plain << false;
    QTest::newRow("plain in chunks") << Plain << true;
    QTest::newRow("encrypted") << Encrypted << false;
    QTest::newRow("encrypted in chunks") << Encrypted << true;
}

void HttpGetTest::fetchesWhatFitsIntoNoBufferOnTheWay() {
    QFETCH(const ReleaseServer::Transport, transport);
    QFETCH(const bool, isChunked);
    if (transport == ReleaseServer::Transport::Encrypted &&
        QStandardPaths::findExecutable(u"openssl"_s).isEmpty())
        QSKIP("openssl makes the certificate of this test, and it is not installed");

    constexpr qsizetype length = qsizetype{20} * 1024 * 1024 + 1;
    QByteArray bytes;
    for (int number = 0; bytes.size() < length; ++number)
        bytes.append(QByteArray::number(number)).append('\n');
    const QTemporaryDir folder;
    QFile served(folder.filePath(u"large"_s));
    QVERIFY(served.open(QIODevice::WriteOnly) && served.write(bytes) == bytes.size());
    served.close();

    ReleaseServer server(transport);
    server.answer(u"/large"_s, {{u"file"_s, served.fileName()}, {u"chunked"_s, isChunked}});
    QNetworkRequest request(QUrl(server.address() + u"/large"_s));
    if (transport == ReleaseServer::Transport::Encrypted) {
        QSslConfiguration trusting = QSslConfiguration::defaultConfiguration();
        trusting.setCaCertificates(QSslCertificate::fromPath(server.certificatePath()));
        request.setSslConfiguration(trusting);
    }
    QBuffer sink;
    QVERIFY(sink.open(QIODevice::WriteOnly));
    QNetworkAccessManager network;
    QCOMPARE(QCoro::waitFor(httpGet(&network, request, &sink)), 200);
    // Compared as a whole, thousands of lines would be printed.
    QVERIFY(sink.data() == bytes);
}

QTEST_GUILESS_MAIN(HttpGetTest)
#include "tst_httpget.moc"
