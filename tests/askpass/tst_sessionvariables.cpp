// SPDX-License-Identifier: MIT
#include "SessionVariables.h"

#include <QtTest>

class SessionVariablesTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void survivesWhatClearsTheEnvironment();
    void takesBackWhatWasSetMeanwhile();
    void passesOnNoValueOfSeveralLines();
    void touchesNothingElse();
    void touchesNothingWhereNothingWasPassedOn();

private:
    QByteArray m_platform;
};

namespace {

constexpr const char* carrier = "HOMEBREW_LUMORA_SESSION";

} // namespace

void SessionVariablesTest::init() {
    m_platform = qgetenv("QT_QPA_PLATFORM");
    qunsetenv(carrier);
    qputenv("XAUTHORITY", "/run/user/1000/a=b c");
    qputenv("LANG", "ko_KR.UTF-8");
    qunsetenv("LC_ALL");
}

void SessionVariablesTest::cleanup() {
    qputenv("QT_QPA_PLATFORM", m_platform);
}

void SessionVariablesTest::survivesWhatClearsTheEnvironment() {
    SessionVariables::passOn();
    qunsetenv("XAUTHORITY");
    qunsetenv("LANG");
    SessionVariables::takeUp();
    QCOMPARE(qgetenv("XAUTHORITY"), QByteArray("/run/user/1000/a=b c"));
    QCOMPARE(qgetenv("LANG"), QByteArray("ko_KR.UTF-8"));
}

void SessionVariablesTest::takesBackWhatWasSetMeanwhile() {
    SessionVariables::passOn();
    qputenv("LC_ALL", "C.UTF-8");
    qputenv("LANG", "en_US.UTF-8");
    SessionVariables::takeUp();
    QVERIFY(!qEnvironmentVariableIsSet("LC_ALL"));
    QCOMPARE(qgetenv("LANG"), QByteArray("ko_KR.UTF-8"));
}

void SessionVariablesTest::passesOnNoValueOfSeveralLines() {
    qputenv("XAUTHORITY", "one\nDISPLAY=two");
    qputenv("DISPLAY", ":7");
    SessionVariables::passOn();
    SessionVariables::takeUp();
    QVERIFY(!qEnvironmentVariableIsSet("XAUTHORITY"));
    QCOMPARE(qgetenv("DISPLAY"), QByteArray(":7"));
}

void SessionVariablesTest::touchesNothingElse() {
    qputenv("OF_SOMEBODY_ELSE", "before");
    qputenv(carrier, "OF_SOMEBODY_ELSE=after\nLD_PRELOAD=/nonexistent\nnothing\n=\nLANG=C");
    SessionVariables::takeUp();
    QCOMPARE(qgetenv("OF_SOMEBODY_ELSE"), QByteArray("before"));
    QVERIFY(!qEnvironmentVariableIsSet("LD_PRELOAD"));
    QCOMPARE(qgetenv("LANG"), QByteArray("C"));
}

void SessionVariablesTest::touchesNothingWhereNothingWasPassedOn() {
    SessionVariables::takeUp();
    QCOMPARE(qgetenv("LANG"), QByteArray("ko_KR.UTF-8"));
}

QTEST_GUILESS_MAIN(SessionVariablesTest)
#include "tst_sessionvariables.moc"
