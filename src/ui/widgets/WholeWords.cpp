// SPDX-License-Identifier: MIT
#include "widgets/WholeWords.h"

#include "style/Typography.h"

#include <QStringList>
#include <QTextBoundaryFinder>

#include <algorithm>

namespace {

constexpr QChar noBreak{u'\u2060'};
constexpr QChar mayBreak{u'\u200B'};

QStringList piecesOf(const QString& text, QTextBoundaryFinder::BoundaryType boundary) {
    QTextBoundaryFinder finder(boundary, text);
    QStringList pieces;
    qsizetype start = 0;
    for (qsizetype end = finder.toNextBoundary(); end > 0; end = finder.toNextBoundary()) {
        pieces.append(text.sliced(start, end - start));
        start = end;
    }
    return pieces;
}

/// Between the letters of scripts that use no blanks every line may end.
bool isInsideWord(QChar before, QChar after) {
    constexpr char16_t firstEastAsian = 0x1100;
    return !before.isSpace() && !after.isSpace() && before.unicode() < firstEastAsian &&
           after.unicode() < firstEastAsian;
}

} // namespace

WholeWords wholeWords(const QString& text, const QFont& font, int widest) {
    WholeWords result;
    QStringList word;
    const auto addWord = [&] {
        const int width = Typography::width(font, word.join(QString()).trimmed());
        const bool fits = width <= widest;
        result.width = std::max(result.width, std::min(width, widest));
        result.text +=
            fits ? word.join(noBreak)
                 : piecesOf(word.join(QString()), QTextBoundaryFinder::Grapheme).join(mayBreak);
        word.clear();
    };
    for (const QString& piece : piecesOf(text, QTextBoundaryFinder::Line)) {
        if (!word.isEmpty() && !isInsideWord(word.constLast().back(), piece.front()))
            addWord();
        word.append(piece);
    }
    if (!word.isEmpty())
        addWord();
    return result;
}
