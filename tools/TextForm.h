// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>

#include <optional>

/// The text in double quotes on one line: what can't be seen or would end the line is escaped.
[[nodiscard]] QString textForm(const QString& text);
/// The quoted text, or the bare word none.
[[nodiscard]] QString textForm(const std::optional<QString>& text);
/// true or false.
[[nodiscard]] QString textForm(bool value);

/// "2: "abc", "xyz"" for the names of a list's records. No more than the first few are given.
[[nodiscard]] QString textFormOfNames(qsizetype count, const QList<QString>& firstNames);

inline constexpr qsizetype shownNames = 5;

/// The number of records and the names of the first few.
template <class Record>
[[nodiscard]] QString textForm(const QList<Record>& records) {
    QList<QString> names;
    for (const Record& record : records.first(qMin(records.size(), shownNames)))
        names.append(record.name);
    return textFormOfNames(records.size(), names);
}
