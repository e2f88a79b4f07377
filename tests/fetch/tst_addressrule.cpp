// SPDX-License-Identifier: MIT
#include "HttpGet.h"

#include <QUrl>
#include <QtTest>

using namespace Qt::StringLiterals;

class AddressRuleTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void allowsOnlyWhatNobodyCanChangeOnTheWay_data();
    void allowsOnlyWhatNobodyCanChangeOnTheWay();
    void neverGivesUpEncryption_data();
    void neverGivesUpEncryption();
};

void AddressRuleTest::allowsOnlyWhatNobodyCanChangeOnTheWay_data() {
    QTest::addColumn<QString>("address");
    QTest::addColumn<bool>("isAllowed");

    QTest::newRow("https") << u"https://example.org/a.tar.gz"_s << true;
    QTest::newRow("https, capitals") << u"HTTPS://example.org/a.tar.gz"_s << true;
    QTest::newRow("https without host") << u"https:///a.tar.gz"_s << false;
    QTest::newRow("http") << u"http://example.org/a.tar.gz"_s << false;
    QTest::newRow("http to a number") << u"http://192.0.2.1/a.tar.gz"_s << false;
    QTest::newRow("http to loopback") << u"http://127.0.0.1:8080/a.tar.gz"_s << true;
    QTest::newRow("http to another loopback") << u"http://127.8.9.10/a.tar.gz"_s << true;
    QTest::newRow("http to loopback 6") << u"http://[::1]:8080/a.tar.gz"_s << true;
    QTest::newRow("http to loopback by name") << u"http://localhost/a.tar.gz"_s << true;
    QTest::newRow("a name that begins like it") << u"http://localhost.example.org/a"_s << false;
    QTest::newRow("a name that looks like it") << u"http://127.0.0.1.example.org/a"_s << false;
    QTest::newRow("loopback as user name") << u"http://127.0.0.1@example.org/a"_s << false;
    QTest::newRow("any address") << u"http://0.0.0.0/a"_s << false;
    QTest::newRow("file") << u"file:///etc/passwd"_s << false;
    QTest::newRow("ftp") << u"ftp://127.0.0.1/a.tar.gz"_s << false;
    QTest::newRow("data") << u"data:text/plain,a"_s << false;
    QTest::newRow("no scheme") << u"//example.org/a.tar.gz"_s << false;
    QTest::newRow("a path") << u"a.tar.gz"_s << false;
    QTest::newRow("nothing") << u""_s << false;
}

void AddressRuleTest::allowsOnlyWhatNobodyCanChangeOnTheWay() {
    QFETCH(const QString, address);
    QTEST(AddressRule::isAllowed(QUrl(address)), "isAllowed");
}

void AddressRuleTest::neverGivesUpEncryption_data() {
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("to");
    QTest::addColumn<bool>("isAllowed");

    const QString encrypted = u"https://example.org/"_s;
    const QString plain = u"http://example.org/"_s;
    const QString loopback = u"http://127.0.0.1/"_s;
    QTest::newRow("https to https") << encrypted << u"https://example.net/"_s << true;
    QTest::newRow("https to http") << encrypted << plain << false;
    QTest::newRow("https to loopback") << encrypted << loopback << false;
    QTest::newRow("loopback to https") << loopback << encrypted << true;
    QTest::newRow("loopback to http") << loopback << plain << false;
    QTest::newRow("loopback to loopback") << loopback << u"http://[::1]/"_s << true;
    QTest::newRow("loopback to a file") << loopback << u"file:///etc/passwd"_s << false;
}

void AddressRuleTest::neverGivesUpEncryption() {
    QFETCH(const QString, from);
    QFETCH(const QString, to);
    QTEST(AddressRule::isAllowedRedirect(QUrl(from), QUrl(to)), "isAllowed");
}

QTEST_APPLESS_MAIN(AddressRuleTest)
#include "tst_addressrule.moc"
