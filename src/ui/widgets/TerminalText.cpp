// SPDX-License-Identifier: MIT
#include "widgets/TerminalText.h"

#include <algorithm>

namespace {

constexpr char16_t bell = 0x07;
constexpr char16_t backspace = 0x08;
constexpr char16_t escape = 0x1B;

bool isBetween(QChar character, char16_t first, char16_t last) {
    return character.unicode() >= first && character.unicode() <= last;
}

/// The rest of a text that is being read.
class Reader final {
public:
    explicit Reader(QStringView text) : m_rest(text) {}

    [[nodiscard]] bool isAtEnd() const { return m_rest.isEmpty(); }

    [[nodiscard]] QChar take() {
        const QChar first = m_rest.front();
        m_rest = m_rest.sliced(1);
        return first;
    }

    /// What follows the escape character in one of its sequences.
    void skipSequence() {
        if (skipOne(u'['))
            skipControlSequence();
        else if (skipOne(u']') || skipOne(u'P') || skipOne(u'X') || skipOne(u'^') || skipOne(u'_'))
            skipString();
        else
            skipShortSequence();
    }

private:
    bool skipOne(char16_t character) {
        const bool isNext = m_rest.startsWith(QChar(character));
        m_rest = m_rest.sliced(isNext ? 1 : 0);
        return isNext;
    }

    void skipWhile(char16_t first, char16_t last) {
        while (!m_rest.isEmpty() && isBetween(m_rest.front(), first, last))
            m_rest = m_rest.sliced(1);
    }

    void skipFinal(char16_t first) {
        constexpr char16_t last = 0x7E;
        if (!m_rest.isEmpty() && isBetween(m_rest.front(), first, last))
            m_rest = m_rest.sliced(1);
    }

    /// Parameters and intermediate characters, then one that says what they are for.
    void skipControlSequence() {
        skipWhile(0x20, 0x3F);
        skipFinal(0x40);
    }

    /// As "ESC ( B", which chooses a set of characters.
    void skipShortSequence() {
        skipWhile(0x20, 0x2F);
        skipFinal(0x30);
    }

    /// A title, the address of a link …: up to a bell or "ESC \", but never beyond the line.
    void skipString() {
        while (!m_rest.isEmpty() && !m_rest.startsWith(u'\n')) {
            const QChar next = take();
            if (next == bell || (next == escape && skipOne(u'\\')))
                return;
        }
    }

    QStringView m_rest;
};

} // namespace

QString terminalText(const QString& printed) {
    const auto isForTerminals = [](QChar character) {
        return character == bell || character == backspace || character == escape ||
               character == u'\r';
    };
    if (std::ranges::none_of(printed, isForTerminals))
        return printed;

    QString shown;
    shown.reserve(printed.size());
    qsizetype lineStart = 0;
    bool isReturned = false;
    for (Reader reader(printed); !reader.isAtEnd();) {
        const QChar character = reader.take();
        if (character == escape) {
            reader.skipSequence();
        } else if (character == u'\r') {
            isReturned = true;
        } else if (character == backspace) {
            const bool isPair = shown.size() - lineStart > 1 && shown.back().isLowSurrogate();
            shown.chop(std::min<qsizetype>(isPair ? 2 : 1, shown.size() - lineStart));
        } else if (character == u'\n') {
            // A return right before the end of a line takes nothing of it away.
            shown += character;
            lineStart = shown.size();
            isReturned = false;
        } else if (character != bell) {
            // Progress is written anew from the start of its line. What is shorter than before
            // reads better without the leftovers.
            if (std::exchange(isReturned, false))
                shown.truncate(lineStart);
            shown += character;
        }
    }
    return shown;
}
