// SPDX-License-Identifier: MIT
#include "shell/OperationSummary.h"

#include "OperationReport.h"
#include "widgets/DisplayText.h"
#include "widgets/TerminalText.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

bool hasWords(QStringView line) {
    return std::ranges::any_of(line, [](QChar character) { return character.isLetterOrNumber(); });
}

QString lastWords(const QString& transcript) {
    QStringView rest(transcript);
    while (!rest.isEmpty()) {
        const qsizetype lineBreak = rest.lastIndexOf(u'\n');
        const QStringView line = rest.sliced(lineBreak + 1);
        if (hasWords(line))
            return DisplayText::line(line.trimmed().toString());
        rest.truncate(std::max<qsizetype>(lineBreak, 0));
    }
    return {};
}

constexpr QLatin1StringView error("Error:");

/// Looks for the first letter alone: several times quicker in megabytes that hardly have it.
qsizetype indexOfError(QStringView written, qsizetype from) {
    qsizetype hit = written.indexOf(error.front(), from);
    while (hit >= 0 && !written.sliced(hit).startsWith(error))
        hit = written.indexOf(error.front(), hit + 1);
    return hit;
}

/// The first line that begins with "Error:", however much was written.
QString firstError(QStringView written) {
    constexpr qsizetype longestLine = 1 << 16;
    qsizetype hit = indexOfError(written, 0);
    while (hit >= 0) {
        const qsizetype start = written.lastIndexOf(u'\n', hit) + 1;
        const qsizetype end = written.indexOf(u'\n', hit);
        const QStringView line = written.sliced(start, (end < 0 ? written.size() : end) - start);
        const QString shown =
            terminalText(line.first(std::min(line.size(), longestLine)).toString());
        if (shown.startsWith(error))
            return DisplayText::line(shown.trimmed());
        hit = end < 0 ? -1 : indexOfError(written, end);
    }
    return {};
}

} // namespace

OperationSummary::OperationSummary(const OperationReport& report)
    : succeeded(report.succeeded), transcript(DisplayText::transcript(report.transcript)) {
    if (succeeded) {
        title = lastWords(transcript);
        return;
    }
    title = DisplayText::line(report.closing);
    reason = firstError(report.transcript);
    if (title.isEmpty())
        title = std::exchange(reason, {});
    if (title.isEmpty())
        title = DisplayText::line(report.start);
}

QString OperationSummary::symbol() const {
    return succeeded ? u"checkmark.circle"_s : u"exclamationmark.triangle"_s;
}

ThemeColor OperationSummary::color() const {
    return succeeded ? &Theme::good : &Theme::destructive;
}

QString OperationSummary::line() const {
    return reason.isEmpty() ? title : title + u" — "_s + reason;
}
