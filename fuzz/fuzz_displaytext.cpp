// SPDX-License-Identifier: MIT
//
// Any text on its way to the screen. The first byte says how often the rest is repeated, so that
// short inputs make long texts.
#include "Require.h"
#include "widgets/DisplayText.h"
#include "widgets/TerminalText.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype longestLine = 4096;

/// As the Unicode standard lists them.
bool isHarmful(QChar character) {
    const QStringView marks =
        u"\u061C\u200E\u200F\u202A\u202B\u202C\u202D\u202E\u2066\u2067\u2068\u2069";
    return character.category() == QChar::Other_Control || marks.contains(character);
}

void requireHarmless(const QString& shown, QStringView kept) {
    const auto isShowable = [kept](QChar character) {
        return !isHarmful(character) || kept.contains(character);
    };
    require(std::ranges::all_of(shown, isShowable), "nothing that controls or reorders");
}

void tryLine(const QString& text) {
    const QString line = DisplayText::line(text);
    requireHarmless(line, {});
    require(!line.contains(QChar::LineSeparator) && !line.contains(QChar::ParagraphSeparator),
            "a line is one line");
    require(line.size() <= longestLine + 1, "a line is short enough");
    require(line.isValidUtf16() || !text.isValidUtf16(), "no character is cut in halves");
    if (text.size() > longestLine)
        require(line.endsWith(u'…'), "what is cut off says so");
    else
        require(line.size() == text.size() && DisplayText::line(line) == line,
                "a stand-in for each character");

    require(DisplayText::label(text).replace(u"&&"_s, u"&"_s) == line, "a label is the line");
    const QString toolTip = DisplayText::toolTip(text);
    require(toolTip.isEmpty() == text.isEmpty(), "a tool tip for every text");
    if (!toolTip.isEmpty()) {
        const QString inside = toolTip.sliced(4).chopped(5);
        require(toolTip == u"<qt>"_s + inside + u"</qt>"_s, "a tool tip is markup");
        require(!inside.contains(u'<') && !inside.contains(u'>'), "markup stays text");
    }
}

void tryBlock(const QString& text, const QString& block) {
    requireHarmless(block, u"\n\t");
    require(block.isValidUtf16() || !text.isValidUtf16(), "no character is cut in halves");
    for (const QStringView line : QStringView(block).tokenize(u'\n'))
        require(line.size() <= longestLine + 1, "a line that a layout can handle");
}

void tryTerminal(const QString& text) {
    const QString shown = terminalText(text);
    require(terminalText(shown) == shown, "what is shown is shown");
    require(shown.count(u'\n') == text.count(u'\n'), "as many lines as were printed");
    require(shown.size() <= text.size(), "nothing that wasn't printed");
    auto printed = text.begin();
    for (const QChar character : shown) {
        printed = std::find(printed, text.end(), character);
        require(printed != text.end(), "in the order it was printed");
        ++printed;
    }
}

void tryParagraph(const QString& text) {
    const QString paragraph = DisplayText::paragraph(text);
    requireHarmless(paragraph, u"\n\t");
    constexpr qsizetype mostLines = 20;
    require(paragraph.count(u'\n') < mostLines, "a paragraph fits on a screen");
    // Each of its characters may be followed by a break at the most.
    constexpr qsizetype longest = 2 * 2'000 + 1;
    require(paragraph.size() <= longest, "a paragraph is short");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return 0;
    constexpr int powers = 14;
    constexpr qsizetype longest = 1 << 14;
    const QString piece = textOf(data + 1, size - 1);
    const qsizetype most = std::max<qsizetype>(longest / std::max<qsizetype>(piece.size(), 1), 1);
    // Long texts take long: every other one is as short as it is.
    const qsizetype times = *data < 0x80 ? 1 : qsizetype{1} << (*data % powers);
    const QString text = piece.repeated(std::min(times, most));
    tryLine(text);
    tryBlock(text, DisplayText::block(text));
    tryBlock(text, DisplayText::transcript(text));
    tryTerminal(text);
    tryParagraph(text);
    return 0;
}
