// SPDX-License-Identifier: MIT
#include "CompareVersions.h"

#include <QList>
#include <QStringView>

#include <algorithm>
#include <optional>

namespace {

/// Qt's own conversion would also take numbers with blanks around them.
std::optional<qlonglong> wholeNumber(QStringView piece) {
    const bool hasSign = piece.startsWith(u'-') || piece.startsWith(u'+');
    const auto isDigit = [](QChar character) { return character >= u'0' && character <= u'9'; };
    if (!std::ranges::all_of(piece.sliced(hasSign ? 1 : 0), isDigit))
        return std::nullopt;
    bool isNumber = false;
    const qlonglong number = piece.toLongLong(&isNumber);
    return isNumber ? std::optional(number) : std::nullopt;
}

QList<qlonglong> numbersIn(QStringView version) {
    QList<qlonglong> numbers;
    for (const QStringView piece : version.tokenize(u'.', Qt::SkipEmptyParts)) {
        if (const auto number = wholeNumber(piece))
            numbers.append(*number);
    }
    return numbers;
}

} // namespace

int compareVersions(QStringView a, QStringView b) {
    const QList<qlonglong> left = numbersIn(a);
    const QList<qlonglong> right = numbersIn(b);
    for (qsizetype i = 0; i < std::max(left.size(), right.size()); ++i) {
        const qlonglong x = left.value(i, 0);
        const qlonglong y = right.value(i, 0);
        if (x != y)
            return x > y ? 1 : -1;
    }
    return 0;
}

bool isPlainVersion(QStringView version) {
    return std::ranges::all_of(version, [](QChar character) {
        return (character.unicode() < 0x80 && character.isLetterOrNumber()) ||
               QStringView(u"._+-").contains(character);
    });
}
