// SPDX-License-Identifier: MIT
#include "JsonSyntax.h"

#include <algorithm>
#include <string>

using namespace Qt::StringLiterals;

namespace {

bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

bool isControl(char character) {
    return static_cast<unsigned char>(character) < 0x20U;
}

bool isContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

/// Walks over one document. Every step is true if it found what it was to find; else it has
/// noted what that was, and the place stays where it was missed.
class Scanner final {
public:
    explicit Scanner(std::string_view text) : m_text(text) {}

    std::optional<JsonSyntaxError> firstError() {
        bool sound = value();
        while (sound && !m_open.empty())
            sound = insideBrackets();
        if (sound) {
            skipBlanks();
            sound = m_at == m_text.size() || miss("the end of the report");
        }
        if (sound)
            return std::nullopt;
        return JsonSyntaxError{.offset = m_at, .expected = m_expected};
    }

private:
    bool miss(std::string_view expected) {
        m_expected = expected;
        return false;
    }

    /// The next byte; NUL, which no step accepts, at the end.
    [[nodiscard]] char peek() const { return m_at < m_text.size() ? m_text[m_at] : '\0'; }

    bool take(char character) {
        if (m_at == m_text.size() || m_text[m_at] != character)
            return false;
        ++m_at;
        return true;
    }

    bool take(std::string_view word) {
        if (!m_text.substr(m_at).starts_with(word))
            return false;
        m_at += word.size();
        return true;
    }

    void skipBlanks() { m_at = std::min(m_text.find_first_not_of(" \t\r\n", m_at), m_text.size()); }

    bool skipDigits() {
        const std::size_t first = m_at;
        while (isDigit(peek()))
            ++m_at;
        return m_at > first;
    }

    bool insideBrackets() {
        const bool isObject = m_open.back() == '{';
        const bool isFirst = std::exchange(m_isJustOpened, false);
        skipBlanks();
        if (take(isObject ? '}' : ']')) {
            m_open.pop_back();
            return true;
        }
        if (!isFirst && !take(','))
            return miss(isObject ? R"("," or "}")" : R"("," or "]")");
        return !isObject || key() ? value() : false;
    }

    bool key() {
        skipBlanks();
        if (peek() != '"')
            return miss("a key in double quotes");
        if (!string())
            return false;
        skipBlanks();
        return take(':') || miss(R"(":")");
    }

    bool value() {
        constexpr std::size_t deepest = 1024;
        skipBlanks();
        const char first = peek();
        if (first == '"')
            return string();
        if (first == '-' || isDigit(first))
            return number();
        if (first == '{' || first == '[') {
            if (m_open.size() == deepest)
                return miss("at most 1024 levels");
            ++m_at;
            m_open += first;
            m_isJustOpened = true;
            return true;
        }
        return take("true") || take("false") || take("null") || miss("a value");
    }

    bool number() {
        take('-');
        if (!take('0') && !skipDigits())
            return miss("a digit");
        if (take('.') && !skipDigits())
            return miss("a digit");
        if (take('e') || take('E')) {
            static_cast<void>(take('+') || take('-'));
            return skipDigits() || miss("a digit");
        }
        return true;
    }

    bool string() {
        ++m_at;
        for (;;) {
            if (take('"'))
                return true;
            if (m_at == m_text.size())
                return miss("the closing quote");
            if (isControl(peek()))
                return miss("an escaped control character");
            if (peek() != '\\')
                ++m_at;
            else if (!escape())
                return false;
        }
    }

    bool escape() {
        constexpr std::string_view single = "\"\\/bfnrt";
        if (m_at + 1 < m_text.size() && single.find(m_text[m_at + 1]) != std::string_view::npos) {
            m_at += 2;
            return true;
        }
        const int unit = codeUnit(m_at);
        if (unit < 0)
            return miss("an escape sequence");
        if (unit < 0xD800 || unit > 0xDFFF) {
            m_at += codeUnitSize;
            return true;
        }
        const int second = codeUnit(m_at + codeUnitSize);
        if (unit > 0xDBFF || second < 0xDC00 || second > 0xDFFF)
            return miss("both halves of a surrogate pair");
        m_at += 2 * codeUnitSize;
        return true;
    }

    /// The value of the \uXXXX at `place`, or -1.
    [[nodiscard]] int codeUnit(std::size_t place) const {
        if (place + codeUnitSize > m_text.size() || m_text.substr(place, 2) != "\\u")
            return -1;
        int unit = 0;
        for (const char digit : m_text.substr(place + 2, codeUnitSize - 2)) {
            const auto index = hexDigits.find(digit);
            if (index == std::string_view::npos)
                return -1;
            unit = 16 * unit + static_cast<int>(index < 16 ? index : index - 6);
        }
        return unit;
    }

    static constexpr std::size_t codeUnitSize = 6;
    static constexpr std::string_view hexDigits = "0123456789abcdefABCDEF";

    std::string_view m_text;
    std::size_t m_at{};
    std::string_view m_expected;
    /// The brackets around the current place.
    std::string m_open;
    bool m_isJustOpened{};
};

/// What stands at the start of `rest`, fit for a one-line message.
QString excerpt(std::string_view rest) {
    constexpr qsizetype longest = 40;
    if (rest.empty())
        return u"the end"_s;
    if (rest.starts_with("\xEF\xBB\xBF"))
        return u"a byte order mark"_s;
    if (rest.front() == '\n' || rest.front() == '\r')
        return u"a line break"_s;
    if (isControl(rest.front()))
        return u"a control character"_s;

    const std::string_view line =
        rest.substr(0, std::min(rest.find('\n'), std::size_t{4 * longest}));
    QString found = QString::fromUtf8(line.data(), static_cast<qsizetype>(line.size())).trimmed();
    if (found.size() > longest) {
        const bool cutsAPair = found[longest - 1].isHighSurrogate();
        found = found.left(cutsAPair ? longest - 1 : longest) + u'…';
    }
    for (QChar& character : found) {
        if (!character.isPrint() && !character.isSurrogate())
            character = u' ';
    }
    return u'"' + found + u'"';
}

} // namespace

std::optional<JsonSyntaxError> JsonSyntaxError::find(std::string_view utf8) {
    return Scanner(utf8).firstError();
}

QString JsonSyntaxError::description(std::string_view utf8) const {
    const std::string_view before = utf8.substr(0, offset);
    // npos, "no line break", is one below zero.
    const std::string_view line = before.substr(before.rfind('\n') + 1);
    const auto column =
        line.size() - static_cast<std::size_t>(std::ranges::count_if(line, isContinuation));
    return u"line %1, column %2: expected %3, found %4"_s.arg(
        QString::number(std::ranges::count(before, '\n') + 1), QString::number(column + 1),
        QString::fromLatin1(expected.data(), static_cast<qsizetype>(expected.size())),
        excerpt(utf8.substr(offset)));
}
