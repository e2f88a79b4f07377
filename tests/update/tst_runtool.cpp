// SPDX-License-Identifier: MIT
#include "ChangedVariable.h"
#include "RunTool.h"
#include "UpdateFailure.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

using namespace Qt::StringLiterals;

class RunToolTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void waitsForTheToolWhateverItsStatus_data();
    void waitsForTheToolWhateverItsStatus();
    void looksForAToolElsewhere();
    void reportsAToolThatCannotStart_data();
    void reportsAToolThatCannotStart();
    void startsAToolWithoutWaiting();

private:
    [[nodiscard]] QString path(const QString& name) const { return m_folder.filePath(name); }

    void makeTool(const QString& name, const QByteArray& content) const {
        QFile file(path(name));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
        file.close();
        QVERIFY(file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    }

    QTemporaryDir m_folder;
};

namespace {

/// How a run ended: "done", or why it couldn't begin.
QCoro::Task<> note(QString path, QStringList arguments, QString* end) {
    try {
        co_await runTool(path, arguments);
        *end = u"done"_s;
    } catch (const UpdateFailure& failure) {
        *end = failure.description();
    }
}

} // namespace

void RunToolTest::waitsForTheToolWhateverItsStatus_data() {
    QTest::addColumn<QString>("ending");
    QTest::newRow("success") << u"exit 0"_s;
    QTest::newRow("failure") << u"exit 2"_s;
    QTest::newRow("crash") << u"kill -9 $$"_s;
    QTest::newRow("output") << u"seq 1 100000; seq 1 100000 >&2"_s;
    QTest::newRow("input") << u"read line"_s;
}

void RunToolTest::waitsForTheToolWhateverItsStatus() {
    QFETCH(const QString, ending);
    QFile::remove(path(u"gate"_s));
    QString end;
    note(u"/bin/sh"_s,
         {u"-c"_s, u"until [ -e '%1' ]; do sleep 0.01; done; "_s.arg(path(u"gate"_s)) + ending},
         &end);
    // It isn't waited for here, but it is there.
    QCOMPARE(end, QString());
    QTest::qWait(1);
    QCOMPARE(end, QString());
    makeTool(u"gate"_s, {});
    QTRY_COMPARE(end, u"done"_s);
}

void RunToolTest::looksForAToolElsewhere() {
    makeTool(u"unlikely-tool"_s, "#!/bin/sh\necho \"$@\" > \"$0.arguments\"\n");
    const ChangedVariable searchPath("PATH", m_folder.path().toUtf8() + ':' + qgetenv("PATH"));
    QString end;
    note(u"/nowhere/unlikely-tool"_s, {u"one"_s, u"two three"_s}, &end);
    QTRY_COMPARE(end, u"done"_s);
    QFile arguments(path(u"unlikely-tool.arguments"_s));
    QVERIFY(arguments.open(QIODevice::ReadOnly));
    QCOMPARE(arguments.readAll(), "one two three\n");
}

void RunToolTest::reportsAToolThatCannotStart_data() {
    QTest::addColumn<QString>("tool");
    makeTool(u"bad-interpreter"_s, "#!/nowhere/interpreter\n");
    QTest::newRow("missing") << u"/nowhere/no-such-tool"_s;
    QTest::newRow("without interpreter") << path(u"bad-interpreter"_s);
}

void RunToolTest::reportsAToolThatCannotStart() {
    QFETCH(const QString, tool);
    QString end;
    note(tool, {}, &end);
    QTRY_VERIFY(!end.isEmpty());
    QVERIFY2(end.startsWith(tool + u": "_s) && end.contains(u"No such file or directory"_s),
             qPrintable(end));
    QVERIFY_THROWS_EXCEPTION(UpdateFailure, startTool(tool, {}));
}

void RunToolTest::startsAToolWithoutWaiting() {
    startTool(u"/bin/sh"_s, {u"-c"_s, u"until [ -e '%1' ]; do sleep 0.01; done; : > '%2'"_s.arg(
                                          path(u"gate 2"_s), path(u"end"_s))});
    QVERIFY(!QFile::exists(path(u"end"_s)));
    makeTool(u"gate 2"_s, {});
    QTRY_VERIFY(QFile::exists(path(u"end"_s)));
}

QTEST_GUILESS_MAIN(RunToolTest)
#include "tst_runtool.moc"
