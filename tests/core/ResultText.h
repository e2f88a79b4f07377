// SPDX-License-Identifier: MIT
#pragma once

#include "RunBrewSync.h"

#include <QByteArray>
#include <QtTest>

// What a failed comparison shows.

template <>
inline char* QTest::toString(const std::string& text) {
    constexpr qsizetype longest = 300;
    return QTest::toString(QByteArray::fromStdString(text).left(longest));
}

template <>
inline char* QTest::toString(const CommandResult& result) {
    constexpr std::size_t longest = 300;
    return QTest::toString("output \"" + result.standardOutput.substr(0, longest) + "\", error \"" +
                           result.standardError.substr(0, longest) + "\", status " +
                           std::to_string(result.status));
}
