// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QCoroTask>
#include <QStringList>
#include <QUrl>

#include <chrono>
#include <optional>

/// How lumora-fetch ends: with a whole answer, with none, or with one that has another status
/// than 200.
enum class FetchStatus { Fetched, NoAnswer, AnsweredOtherwise };

/// What lumora-fetch is asked for. It is a process of its own that ends with this one.
///
/// Whoever asks throws UpdateFailure when there is no whole answer, and when the program can't be
/// run.
struct FetchRequest final {
    /// Where the program is.
    QString program;
    QUrl address;
    /// How long the server may say nothing. It is the program that looks at the clock.
    std::chrono::milliseconds patience{};
    /// Such as "Accept: text/plain".
    QStringList headers{};
};

/// Gives what there is; nothing if the server answers with another status than 200. An answer of
/// more than `longest` bytes isn't a whole one.
[[nodiscard]] QCoro::Task<std::optional<QByteArray>> fetch(FetchRequest request, qsizetype longest);

/// Writes it over a file; false, with whatever is in the file then, if the server answers with
/// another status than 200.
[[nodiscard]] QCoro::Task<bool> fetchInto(QString path, FetchRequest request);
