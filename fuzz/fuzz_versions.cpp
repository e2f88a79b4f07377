// SPDX-License-Identifier: MIT
//
// Three versions, a line each, compared with one another.
#include "CompareVersions.h"
#include "Require.h"
#include "UpdateScript.h"

#include <QDir>
#include <QStringList>

#include <algorithm>
#include <charconv>
#include <optional>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

/// Written another way than what it is compared with.
std::optional<std::int64_t> numberIn(const QString& piece) {
    std::string digits = piece.toStdString();
    if (digits.size() > 1 && digits.front() == '+' && digits.at(1) != '-')
        digits.erase(0, 1);
    std::int64_t number = 0;
    const char* end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, number);
    return error == std::errc() && stop == end ? std::optional(number) : std::nullopt;
}

std::vector<std::int64_t> numbersIn(const QString& version) {
    std::vector<std::int64_t> numbers;
    for (const QString& piece : version.split(u'.')) {
        if (const auto number = numberIn(piece))
            numbers.push_back(*number);
    }
    return numbers;
}

int expected(const QString& a, const QString& b) {
    auto left = numbersIn(a);
    auto right = numbersIn(b);
    const std::size_t count = std::max(left.size(), right.size());
    left.resize(count, 0);
    right.resize(count, 0);
    return left == right ? 0 : left < right ? -1 : 1;
}

void requireOrder(const QString& a, const QString& b, const QString& c) {
    const int ab = compareVersions(a, b);
    require(ab == expected(a, b), "pieces compared as numbers");
    require(compareVersions(b, a) == -ab, "the other way round is the opposite");
    if (ab <= 0 && compareVersions(b, c) <= 0)
        require(compareVersions(a, c) <= 0, "what is older than the older is older");
}

void requireSameness(const QString& version) {
    require(compareVersions(version, version) == 0, "the same as itself");
    require(compareVersions(version + u".0"_s, version) == 0, "a zero at the end is nothing");
    require(compareVersions(u"x."_s + version, version) == 0,
            "a piece that is no number is nothing");
    require(compareVersions(u'.' + version + u".."_s, version) == 0, "an empty piece is nothing");
}

void requireHarmlessness(const QString& version) {
    if (!isPlainVersion(version))
        return;
    const QString folder = u"/tmp/folder"_s;
    const QString path = folder + u"/lumora-update-"_s + version + u".tar.gz"_s;
    require(UpdateScript::canName(path), "a plain version is harmless in a script");
    require(QDir::cleanPath(path) == path && QFileInfo(path).path() == folder,
            "a plain version leads nowhere else");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QString text = textOf(data, size);
    QStringList versions{text.section(u'\n', 0, 0), text.section(u'\n', 1, 1),
                         text.section(u'\n', 2)};
    for (const QString& version : versions) {
        requireSameness(version);
        requireHarmlessness(version);
    }
    std::ranges::sort(versions);
    do
        requireOrder(versions.at(0), versions.at(1), versions.at(2));
    while (std::ranges::next_permutation(versions).found);
    return 0;
}
