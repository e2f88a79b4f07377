// SPDX-License-Identifier: MIT
#include "Askpass.h"
#include "FreshHome.h"
#include "PasswordDialog.h"
#include "SecondProcess.h"
#include "style/Theme.h"

#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QLockFile>
#include <QProcess>
#include <QTimer>

#include <sys/resource.h>

#ifdef Q_OS_LINUX
#include <sys/prctl.h>
#endif

using namespace Qt::StringLiterals;

/// The program as sudo meets it: a process with a prompt, a pipe and a status.
class AskpassTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void printsWhatIsTyped_data();
    void printsWhatIsTyped();
    void printsNothingWhenCancelled_data();
    void printsNothingWhenCancelled();
    void asksWhateverItIsGiven_data();
    void asksWhateverItIsGiven();
    void takesNoPromptForAnOption();
    void looksLikeLumora();
    void keepsItsMemoryToItself();
    void saysNothingOfWhatIsTyped();
    void opensNoSecondField();
    void takesOverFromOneThatWasKilled();
    void endsWithWhoeverAsked();
    void endsWithoutADisplay_data();
    void endsWithoutADisplay();
    void isNotMistakenForTheApplication();

private:
    [[nodiscard]] QString lockPath() const {
        return m_home.path() + u"/runtime/lumora-askpass.lock"_s;
    }

    FreshHome m_home;
};

namespace {

constexpr int patience = 120'000;

std::function<void(PasswordDialog&)> answer;

/// Answers the dialog of the application that is about to be made.
void answerWhenAsked() {
    auto* const timer = new QTimer(QCoreApplication::instance());
    QObject::connect(timer, &QTimer::timeout, timer, [timer] {
        for (QWidget* const widget : QApplication::topLevelWidgets()) {
            auto* const dialog = qobject_cast<PasswordDialog*>(widget);
            if (dialog != nullptr && dialog->isActiveWindow()) {
                timer->stop();
                answer(*dialog);
                return;
            }
        }
    });
    constexpr int often = 10;
    timer->start(often);
}

int askAnd(const QString& prompt, std::function<void(PasswordDialog&)> then) {
    answer = std::move(then);
    qAddPreRoutine(answerWhenAsked);
    return Askpass::run(prompt.toUtf8().constData());
}

/// Arguments: the prompt, and what is typed before Return.
int type(const QStringList& arguments) {
    return askAnd(arguments.value(0), [text = arguments.value(1)](PasswordDialog& dialog) {
        QTest::keyClicks(dialog.focusWidget(), text);
        QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
    });
}

int cancel(const QStringList& arguments) {
    return askAnd(u"Password:"_s, [way = arguments.value(0)](PasswordDialog& dialog) {
        QTest::keyClicks(dialog.focusWidget(), u"secret"_s);
        if (way == u"Escape"_s)
            QTest::keyClick(dialog.focusWidget(), Qt::Key_Escape);
        else
            dialog.close();
    });
}

/// Succeeds if what is looked at is as it should be.
int look(const std::function<bool(PasswordDialog&)>& isRight,
         const QString& prompt = u"Password:"_s) {
    bool isFound = false;
    const int status = askAnd(prompt, [&](PasswordDialog& dialog) {
        isFound = isRight(dialog);
        dialog.reject();
    });
    return status == EXIT_FAILURE && isFound ? EXIT_SUCCESS : EXIT_FAILURE;
}

int lookAtTheWindow(const QStringList&) {
    return look([](PasswordDialog& dialog) {
        return dialog.palette().color(QPalette::Window) == Theme::light().content &&
               !dialog.windowIcon().isNull() && QGuiApplication::desktopFileName() == u"lumora"_s &&
               QCoreApplication::applicationName() == u"Lumora"_s;
    });
}

int lookAtThePrompt(const QStringList&) {
    // To Qt it says to lay out everything from right to left.
    const QString prompt = u"-reverse"_s;
    const auto isShown = [prompt](PasswordDialog& dialog) {
        return dialog.findChild<QLabel*>(u"prompt"_s)->text() == prompt &&
               dialog.layoutDirection() == Qt::LeftToRight;
    };
    return look(isShown, prompt);
}

int lookAtTheProcess(const QStringList&) {
    return look([](PasswordDialog&) {
        rlimit core{1, 1};
        ::getrlimit(RLIMIT_CORE, &core);
#ifdef Q_OS_LINUX
        if (::prctl(PR_GET_DUMPABLE) != 0)
            return false;
#endif
        return core.rlim_cur == 0 && core.rlim_max == 0;
    });
}

/// The built program, started with this prompt and left waiting for an answer.
class Program final {
public:
    explicit Program(const QStringList& arguments = {u"Password:"_s}) {
        m_process.start(qEnvironmentVariable("LUMORA_ASKPASS"), arguments);
    }

    [[nodiscard]] bool hasLocked(const QString& path) {
        return QTest::qWaitFor([&] { return lockedBy(path) == m_process.processId(); }, patience);
    }

    [[nodiscard]] QProcess& process() { return m_process; }

    [[nodiscard]] qint64 id() const { return m_process.processId(); }

    ~Program() {
        m_process.kill();
        m_process.waitForFinished();
    }

    Q_DISABLE_COPY_MOVE(Program)

private:
    static qint64 lockedBy(const QString& path) {
        qint64 id = 0;
        QString host;
        QString name;
        return QLockFile(path).getLockInfo(&id, &host, &name) ? id : 0;
    }

    QProcess m_process;
};

} // namespace

void AskpassTest::init() {
    const QString runtime = QFileInfo(lockPath()).path();
    QVERIFY(QDir().mkpath(runtime));
    QVERIFY(QFile::setPermissions(runtime, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    qputenv("XDG_RUNTIME_DIR", runtime.toUtf8());
}

void AskpassTest::printsWhatIsTyped_data() {
    QTest::addColumn<QString>("typed");
    QTest::newRow("a word") << u"secret"_s;
    QTest::newRow("blanks and quotes") << u" it's \"$(id)\" \\ "_s;
    QTest::newRow("nothing") << QString();
    QTest::newRow("as much as sudo takes") << u"0123456789"_s.repeated(100);
}

void AskpassTest::printsWhatIsTyped() {
    QFETCH(const QString, typed);
    const SecondProcess process(u"type"_s, {u"[sudo] password for mina: "_s, typed});
    QCOMPARE(process.output(), typed.toUtf8() + '\n');
    QCOMPARE(process.status(), EXIT_SUCCESS);
}

void AskpassTest::printsNothingWhenCancelled_data() {
    QTest::addColumn<QString>("way");
    QTest::newRow("Escape") << u"Escape"_s;
    QTest::newRow("closed") << u"closed"_s;
}

void AskpassTest::printsNothingWhenCancelled() {
    QFETCH(const QString, way);
    const SecondProcess process(u"cancel"_s, {way});
    QCOMPARE(process.output(), QByteArray());
    QCOMPARE(process.status(), EXIT_FAILURE);
}

void AskpassTest::asksWhateverItIsGiven_data() {
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("a platform") << QStringList{u"-platform"_s, u"none"_s};
    QTest::newRow("a style") << QStringList{u"-style"_s, u"none"_s};
    QTest::newRow("help") << QStringList{u"--help"_s};
    QTest::newRow("nothing at all") << QStringList();
    QTest::newRow("something long") << QStringList{u"<b>&\x1B"_s.repeated(20'000)};
}

void AskpassTest::asksWhateverItIsGiven() {
    QFETCH(const QStringList, arguments);
    Program program(arguments);
    QVERIFY(program.hasLocked(lockPath()));
    QCOMPARE(program.process().state(), QProcess::Running);
}

void AskpassTest::takesNoPromptForAnOption() {
    QCOMPARE(SecondProcess(u"look at the prompt"_s).status(), EXIT_SUCCESS);
}

void AskpassTest::looksLikeLumora() {
    QCOMPARE(SecondProcess(u"look at the window"_s).status(), EXIT_SUCCESS);
}

void AskpassTest::keepsItsMemoryToItself() {
    QCOMPARE(SecondProcess(u"look at the process"_s).status(), EXIT_SUCCESS);
}

void AskpassTest::saysNothingOfWhatIsTyped() {
    // As chatty as Qt can be made.
    qputenv("QT_LOGGING_RULES", "*=true");
    QProcess process;
    process.start(u"/bin/sh"_s, {u"-c"_s, QString::fromUtf8(SecondProcess::scriptLine(
                                              u"type"_s, {u"Password:"_s, u"secret"_s}))});
    QVERIFY(process.waitForFinished(patience));
    qunsetenv("QT_LOGGING_RULES");
    QCOMPARE(process.readAllStandardOutput(), QByteArray("secret\n"));
    QCOMPARE(process.readAllStandardError(), QByteArray());
}

void AskpassTest::opensNoSecondField() {
    Program first;
    QVERIFY(first.hasLocked(lockPath()));
    Program second;
    QVERIFY(second.process().waitForFinished(patience));
    QCOMPARE(second.process().exitStatus(), QProcess::NormalExit);
    QCOMPARE(second.process().exitCode(), EXIT_FAILURE);
    QCOMPARE(second.process().readAllStandardOutput(), QByteArray());
    QCOMPARE(second.process().readAllStandardError(),
             QByteArray("lumora-askpass: another password is being asked for\n"));
    QCOMPARE(first.process().state(), QProcess::Running);
}

void AskpassTest::takesOverFromOneThatWasKilled() {
    {
        Program first;
        QVERIFY(first.hasLocked(lockPath()));
    }
    QVERIFY(QFile::exists(lockPath()));
    Program second;
    QVERIFY(second.hasLocked(lockPath()));
}

void AskpassTest::endsWithWhoeverAsked() {
    // The reader of the pipe is gone as soon as it is there.
    QProcess shell;
    shell.start(u"/bin/sh"_s, {u"-c"_s, u"{ \"$LUMORA_ASKPASS\" Password:; echo $? >&2; } | :"_s});
    QVERIFY(shell.waitForFinished(patience));
    QCOMPARE(shell.readAllStandardError(), QByteArray("1\n"));
}

void AskpassTest::endsWithoutADisplay_data() {
    QTest::addColumn<QByteArray>("platform");
    QTest::addColumn<QByteArray>("display");
    QTest::newRow("no display") << QByteArray("xcb") << QByteArray();
    QTest::newRow("one that isn't there") << QByteArray("xcb") << QByteArray(":9999");
    QTest::newRow("no platform") << QByteArray("nonexistent") << QByteArray();
}

void AskpassTest::endsWithoutADisplay() {
    QFETCH(const QByteArray, platform);
    QFETCH(const QByteArray, display);
    const QByteArray before = qgetenv("QT_QPA_PLATFORM");
    qputenv("QT_QPA_PLATFORM", platform);
    qputenv("DISPLAY", display);
    Program program;
    qputenv("QT_QPA_PLATFORM", before);
    QVERIFY(program.process().waitForFinished(patience));
    QCOMPARE(program.process().exitStatus(), QProcess::NormalExit);
    QCOMPARE(program.process().exitCode(), EXIT_FAILURE);
    QCOMPARE(program.process().readAllStandardOutput(), QByteArray());
    QCOMPARE(program.process().readAllStandardError(),
             QByteArray("lumora-askpass: there is no display to ask on\n"));
}

void AskpassTest::isNotMistakenForTheApplication() {
    Program program;
    QVERIFY(program.hasLocked(lockPath()));
    const auto find = [](const QString& name) {
        QProcess pgrep;
        pgrep.start(u"pgrep"_s,
                    {u"-x"_s, u"-P"_s, QString::number(QCoreApplication::applicationPid()), name});
        pgrep.waitForFinished(patience);
        return pgrep.readAllStandardOutput().trimmed();
    };
    QCOMPARE(find(u"lumora-askpass"_s), QByteArray::number(program.id()));
    // An update waits until no process has this name.
    QCOMPARE(find(u"Lumora"_s), QByteArray());
}

int main(int argc, char* argv[]) {
    return SecondProcess::main<AskpassTest>(argc, argv,
                                            {{u"type"_s, type},
                                             {u"cancel"_s, cancel},
                                             {u"look at the prompt"_s, lookAtThePrompt},
                                             {u"look at the window"_s, lookAtTheWindow},
                                             {u"look at the process"_s, lookAtTheProcess}});
}

#include "tst_askpass.moc"
