// SPDX-License-Identifier: MIT
#include "Askpass.h"

#include "LangManager.h"
#include "PasswordDialog.h"
#include "SessionVariables.h"
#include "ToolkitTexts.h"
#include "style/Look.h"
#include "style/SystemAppearance.h"

#include <QApplication>
#include <QLockFile>
#include <QStandardPaths>
#include <QTimer>

#include <poll.h>
#include <sys/resource.h>
#include <unistd.h>

#ifdef Q_OS_LINUX
#include <sys/prctl.h>
#endif

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <optional>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

void complain(const char* reason) {
    std::fprintf(stderr, "lumora-askpass: %s\n", reason);
}

/// Standard error ends up in what the user reads of brew: Qt's remarks don't belong there. Its
/// one fatal message is that nothing can be shown anywhere, after which it would abort.
void handleMessage(QtMsgType type, const QMessageLogContext&, const QString&) {
    if (type != QtFatalMsg)
        return;
    complain("there is no display to ask on");
    std::_Exit(EXIT_FAILURE);
}

void leaveNoCore() {
    constexpr rlimit none{0, 0};
    ::setrlimit(RLIMIT_CORE, &none);
#ifdef Q_OS_LINUX
    // Nor may another process of the user's look into this one's memory.
    ::prctl(PR_SET_DUMPABLE, 0);
#endif
}

/// Whether nobody is left to read what is printed. Linux calls that an error of the pipe, macOS a
/// hang-up, and the latter only to those who want to write.
bool isReaderGone() {
    pollfd output{STDOUT_FILENO, POLLOUT, 0};
    return ::poll(&output, 1, 0) > 0 && (output.revents & (POLLERR | POLLHUP)) != 0;
}

bool print(QByteArrayView bytes) {
    while (!bytes.isEmpty()) {
        const ssize_t count = ::write(STDOUT_FILENO, bytes.data(), std::size_t(bytes.size()));
        if (count < 0 && errno != EINTR)
            return false;
        bytes = bytes.sliced(std::max<ssize_t>(count, 0));
    }
    return true;
}

} // namespace

int Askpass::run(const char* prompt) {
    qInstallMessageHandler(handleMessage);
    SessionVariables::takeUp();

    // None of the arguments is Qt's, whatever a prompt looks like.
    char name[] = "lumora-askpass";
    char* arguments[] = {name, nullptr};
    int count = 1;
    const QApplication application(count, arguments);
    // Lumora's own, for its preferences.
    QApplication::setOrganizationName(u"Lumora"_s);
    QApplication::setApplicationName(u"Lumora"_s);
    QApplication::setDesktopFileName(u"lumora"_s);

    // In a folder that is the user's alone. Without one there is no telling who else asks.
    QLockFile lock(QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation) +
                   u"/lumora-askpass.lock"_s);
    // However long somebody thinks about it.
    lock.setStaleLockTime(0);
    // In milliseconds: for as long as one that nobody waits for any more takes to find that out.
    constexpr int untilOneIsGone = 3'000;
    if (!lock.tryLock(untilOneIsGone)) {
        complain(lock.error() == QLockFile::LockFailedError ? "another password is being asked for"
                                                            : "the lock can't be taken");
        return EXIT_FAILURE;
    }

    Look::setUp();
    std::optional<SystemAppearance> desktop;
    if (const QByteArray told = qgetenv(SessionVariables::appearance); !told.isEmpty()) {
        Look::setDark(told == "dark");
    } else {
        desktop.emplace();
        Look::follow(*desktop);
    }
    // Not before: the desktop's portal answers nobody whose memory it couldn't look into.
    leaveNoCore();
    // Whoever asked may go before the answer is out.
    std::signal(SIGPIPE, SIG_IGN);

    const ToolkitTexts toolkitTexts(LangManager::shared());
    PasswordDialog dialog(QString::fromUtf8(prompt));
    // Nobody waits for the password any more then, and the next one who needs it shall not be
    // refused. The toolkit has a notifier for it, but none that works on macOS.
    QTimer glance;
    QObject::connect(&glance, &QTimer::timeout, &dialog, [&dialog] {
        if (isReaderGone())
            dialog.reject();
    });
    glance.start(1s);
    dialog.show();
    dialog.activateWindow();
    if (dialog.exec() != QDialog::Accepted)
        return EXIT_FAILURE;
    QByteArray password = dialog.takePassword();
    const bool isPrinted = print(password) && print("\n");
    PasswordDialog::wipe(password);
    return isPrinted ? EXIT_SUCCESS : EXIT_FAILURE;
}
