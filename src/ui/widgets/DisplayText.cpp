// SPDX-License-Identifier: MIT
#include "widgets/DisplayText.h"

#include "widgets/TerminalText.h"

#include <QWidget>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

enum class Breaks { Shown, Kept };

bool reordersText(QChar character) {
    const char16_t unit = character.unicode();
    return unit == 0x061C || unit == 0x200E || unit == 0x200F ||
           (unit >= 0x202A && unit <= 0x202E) || (unit >= 0x2066 && unit <= 0x2069);
}

bool isBreak(QChar character) {
    return character == u'\n' || character == u'\t' || character == QChar::LineSeparator ||
           character == QChar::ParagraphSeparator;
}

bool isControl(QChar character) {
    return character.category() == QChar::Other_Control;
}

QChar standIn(QChar character) {
    constexpr char16_t pictures = 0x2400;
    constexpr char16_t deletePicture = 0x2421;
    constexpr char16_t firstPrintable = 0x20;
    constexpr char16_t deleteCharacter = 0x7F;
    if (character.unicode() < firstPrintable)
        return {static_cast<char16_t>(pictures + character.unicode())};
    return character.unicode() == deleteCharacter ? QChar(deletePicture)
                                                  : QChar(QChar::ReplacementCharacter);
}

QString replaced(const QString& text, Breaks breaks) {
    const auto needsStandIn = [breaks](QChar character) {
        // Nearly all that is ever printed.
        if (character >= u' ' && character <= u'~')
            return false;
        if (isBreak(character))
            return breaks == Breaks::Shown;
        return isControl(character) || reordersText(character);
    };
    if (std::ranges::none_of(text, needsStandIn))
        return text;
    QString result = text;
    for (QChar& character : result) {
        if (needsStandIn(character))
            character = isBreak(character) && breaks == Breaks::Shown ? u' ' : standIn(character);
    }
    return result;
}

/// Whether it begins no line in scripts without blanks between words, whose sentences are one word
/// to whoever looks for blanks.
bool staysWithWhatIsBefore(QChar character) {
    return u"。、，．・：；！？…ー」』）】〉》〕］｝"_s.contains(character);
}

// Neither cuts a character in halves.

QString start(const QString& text, qsizetype length) {
    return text.first(text.at(length).isLowSurrogate() ? length - 1 : length);
}

QString end(const QString& text, qsizetype length) {
    return text.last(text.at(text.size() - length).isLowSurrogate() ? length - 1 : length);
}

// What a view can lay out within a frame, of the start of a text and of its end.
constexpr qsizetype longestPart = 1 << 17;
constexpr int mostLinesOfPart = 2'000;

qsizetype lengthOfStart(QStringView text) {
    const QStringView part = text.first(std::min(text.size(), longestPart));
    qsizetype length = -1;
    for (int line = 0; line < mostLinesOfPart; ++line) {
        length = part.indexOf(u'\n', length + 1);
        if (length < 0)
            return part.size();
    }
    return length;
}

qsizetype lengthOfEnd(QStringView text) {
    const QStringView part = text.last(std::min(text.size(), longestPart));
    qsizetype before = part.size();
    for (int line = 0; line < mostLinesOfPart; ++line) {
        before = part.first(before).lastIndexOf(u'\n');
        if (before < 0)
            return part.size();
    }
    return part.size() - before - 1;
}

/// Without what nobody could read of it: the middle of thousands of lines. The rest isn't looked
/// at, however long it is.
QString withoutMiddle(const QString& text) {
    const qsizetype startLength = lengthOfStart(text);
    const qsizetype endLength = lengthOfEnd(text);
    // A line break may be all that is between them.
    if (startLength + endLength + 1 >= text.size())
        return text;
    return start(text, startLength) + u"\n…\n"_s + end(text, endLength);
}

/// Harmless, and in lines that a layout can handle.
QString lines(QString text) {
    // Command output ends its lines the way terminals do now and then.
    text.replace(u"\r\n"_s, u"\n"_s);
    const QString result = replaced(text, Breaks::Kept);

    constexpr qsizetype longestLine = 4096;
    // Whoever wraps a line looks for its end once for every row that it takes.
    constexpr qsizetype longestWord = 1024;
    qsizetype lineStart = 0;
    for (;;) {
        const qsizetype lineEnd = result.indexOf(u'\n', lineStart);
        const qsizetype length = (lineEnd < 0 ? result.size() : lineEnd) - lineStart;
        if (length > longestWord)
            break;
        if (lineEnd < 0)
            return result;
        lineStart = lineEnd + 1;
    }
    QString broken;
    broken.reserve(result.size() + result.size() / longestWord + 1);
    qsizetype column = 0;
    qsizetype wordLength = 0;
    const QStringView whole(result);
    qsizetype copied = 0;
    for (qsizetype i = 0; i < whole.size(); ++i) {
        const QChar character = whole[i];
        column = character == u'\n' ? 0 : column + 1;
        wordLength = character.isSpace() ? 0 : wordLength + 1;
        // Not between the two halves of one character.
        if ((column > longestLine || wordLength > longestWord) && !character.isLowSurrogate()) {
            broken.append(whole.sliced(copied, i - copied)).append(u'\n');
            copied = i;
            column = 1;
            wordLength = 1;
        }
    }
    return broken.append(whole.sliced(copied));
}

} // namespace

QString DisplayText::line(const QString& text) {
    // Far wider than any window; measuring a megabyte of text would freeze it.
    constexpr qsizetype longest = 4096;
    if (text.size() <= longest)
        return replaced(text, Breaks::Shown);
    return replaced(start(text, longest), Breaks::Shown) + u'…';
}

QString DisplayText::block(const QString& text) {
    return lines(withoutMiddle(text));
}

QString DisplayText::transcript(const QString& text) {
    return lines(terminalText(withoutMiddle(text)));
}

QString DisplayText::paragraph(const QString& text) {
    constexpr qsizetype longest = 2'000;
    constexpr qsizetype mostLines = 20;
    constexpr qsizetype longestWord = 24;
    const bool isCut = text.size() > longest;
    QString result;
    qsizetype lines = 1;
    qsizetype wordLength = 0;
    const QString shown = block(isCut ? start(text, longest) : text);
    for (const QChar character : shown) {
        if (character == u'\n' && ++lines > mostLines)
            return result + u'…';
        wordLength = character.isSpace() ? 0 : wordLength + 1;
        // Not inside of what is one character to its reader.
        if (wordLength > longestWord && !character.isLowSurrogate() && !character.isMark() &&
            !staysWithWhatIsBefore(character)) {
            result += u'\u200B';
            wordLength = 1;
        }
        result += character;
    }
    return isCut ? result + u'…' : result;
}

QString DisplayText::label(const QString& text) {
    return line(text).replace(u'&', u"&&"_s);
}

QString DisplayText::toolTip(const QString& text) {
    return text.isEmpty() ? QString() : u"<qt>"_s + line(text).toHtmlEscaped() + u"</qt>"_s;
}

void DisplayText::setToolTip(QWidget* widget, const QString& text) {
    widget->setToolTip(toolTip(text));
    widget->setAccessibleDescription(line(text));
}
