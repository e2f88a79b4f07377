// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QDir>

#include <fcntl.h>
#include <sys/wait.h>

/// What work could leave behind in this process, as a text: descriptors, threads, children.
[[nodiscard]] inline QByteArray traces() {
    int descriptors = 0;
    constexpr int highest = 1024;
    for (int fd = 0; fd < highest; ++fd)
        descriptors += ::fcntl(fd, F_GETFD) >= 0 ? 1 : 0;
    const auto threads =
        QDir(QStringLiteral("/proc/self/task")).entryList(QDir::Dirs | QDir::NoDotAndDotDot).size();
    siginfo_t child{};
    const bool hasChildren = ::waitid(P_ALL, 0, &child, WEXITED | WNOHANG | WNOWAIT) == 0;
    return QByteArray::number(descriptors) + " descriptors, " + QByteArray::number(threads) +
           " threads, " + (hasChildren ? "children" : "no children");
}
