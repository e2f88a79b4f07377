// SPDX-License-Identifier: MIT
#include "shell/OperationSummary.h"

#include "OperationReport.h"
#include "widgets/DisplayText.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// The first line that is wanted, or "".
template <class Predicate>
QString firstOf(const QList<QStringView>& lines, Predicate isWanted) {
    const auto found = std::ranges::find_if(lines, isWanted);
    return found == lines.end() ? QString() : DisplayText::line(found->trimmed().toString());
}

bool hasWords(QStringView line) {
    return std::ranges::any_of(line, [](QChar character) { return character.isLetterOrNumber(); });
}

bool isError(QStringView line) {
    return line.startsWith("Error:"_L1);
}

} // namespace

OperationSummary::OperationSummary(const OperationReport& report)
    : succeeded(report.succeeded), transcript(DisplayText::transcript(report.transcript)) {
    QList<QStringView> lines = QStringView(transcript).split(u'\n');
    if (succeeded) {
        std::ranges::reverse(lines);
        title = firstOf(lines, hasWords);
        return;
    }
    title = DisplayText::line(report.closing);
    reason = firstOf(lines, isError);
    if (title.isEmpty())
        title = std::exchange(reason, {});
    if (title.isEmpty())
        title = DisplayText::line(report.start);
}

QString OperationSummary::line() const {
    return reason.isEmpty() ? title : title + u" — "_s + reason;
}
