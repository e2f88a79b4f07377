// SPDX-License-Identifier: MIT
#include "Utf8.h"

#include <QtTest>

class Utf8Test final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void judgesSequences_data();
    void judgesSequences();
    void agreesWithTheDefinition_data();
    void agreesWithTheDefinition();
    void refusesASequenceCutShort_data();
    void refusesASequenceCutShort();
};

namespace {

/// The UTF-8 form of any number below 2^21 in so many bytes, also where that is not allowed.
QByteArray encoded(char32_t value, int length) {
    if (length == 1)
        return QByteArray(1, static_cast<char>(value));
    QByteArray bytes;
    for (int i = length - 1; i > 0; --i)
        bytes.append(static_cast<char>(0x80 | ((value >> (6 * i - 6)) & 0x3F)));
    const auto lead = static_cast<unsigned>(0xF00 >> length) & 0xFFU;
    bytes.prepend(static_cast<char>(lead | (value >> (6 * (length - 1)))));
    return bytes;
}

bool isValid(const QByteArray& bytes) {
    return isValidUtf8({bytes.constData(), static_cast<std::size_t>(bytes.size())});
}

/// The verdict on `bytes` wherever they stand: at every offset from an eight-byte boundary,
/// with more and less than eight ASCII bytes on either side. Nothing if the verdicts differ.
std::optional<bool> verdictAnywhere(const QByteArray& bytes) {
    constexpr int furthest = 19;
    const bool alone = isValid(bytes);
    for (int before = 0; before <= furthest; ++before) {
        for (int behind = 0; behind <= furthest; ++behind) {
            const QByteArray text = QByteArray(before, 'a') + bytes + QByteArray(behind, 'z');
            if (isValid(text) != alone)
                return std::nullopt;
        }
    }
    return alone;
}

} // namespace

void Utf8Test::judgesSequences_data() {
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("valid");

    QTest::newRow("nothing") << QByteArray() << true;
    QTest::newRow("NUL") << QByteArray(1, '\0') << true;
    QTest::newRow("ASCII") << QByteArray("brew list\n\t\x7F") << true;
    QTest::newRow("mixed") << QByteArray("a é 한 🍺 z") << true;
    QTest::newRow("byte order mark") << QByteArray("\xEF\xBB\xBF") << true;

    QTest::newRow("lone continuation, lowest") << QByteArray("\x80") << false;
    QTest::newRow("lone continuation, highest") << QByteArray("\xBF") << false;
    QTest::newRow("one continuation too many") << QByteArray("\xC3\xA9\xA9") << false;
    QTest::newRow("lead after lead") << QByteArray("\xC3\xC3\xA9") << false;
    QTest::newRow("Latin-1") << QByteArray("caf\xE9") << false;
    for (const int lead : {0xC0, 0xC1, 0xF5, 0xF8, 0xFC, 0xFE, 0xFF})
        QTest::addRow("byte %X", lead)
            << QByteArray(1, static_cast<char>(lead)) + QByteArray("\x80\x80\x80\x80\x80") << false;

    struct Boundary {
        char32_t value;
        int length;
        bool valid;
    };

    constexpr std::array boundaries{
        Boundary{0x7F, 1, true},      Boundary{0x00, 2, false},     Boundary{0x7F, 2, false},
        Boundary{0x80, 2, true},      Boundary{0x7FF, 2, true},     Boundary{0x00, 3, false},
        Boundary{0x7FF, 3, false},    Boundary{0x800, 3, true},     Boundary{0xFFF, 3, true},
        Boundary{0x1000, 3, true},    Boundary{0xCFFF, 3, true},    Boundary{0xD000, 3, true},
        Boundary{0xD7FF, 3, true},    Boundary{0xD800, 3, false},   Boundary{0xDBFF, 3, false},
        Boundary{0xDC00, 3, false},   Boundary{0xDFFF, 3, false},   Boundary{0xE000, 3, true},
        Boundary{0xFFFF, 3, true},    Boundary{0x00, 4, false},     Boundary{0xFFFF, 4, false},
        Boundary{0x10000, 4, true},   Boundary{0x3FFFF, 4, true},   Boundary{0x40000, 4, true},
        Boundary{0xFFFFF, 4, true},   Boundary{0x100000, 4, true},  Boundary{0x10FFFF, 4, true},
        Boundary{0x110000, 4, false}, Boundary{0x13FFFF, 4, false}, Boundary{0x140000, 4, false},
    };
    for (const Boundary& boundary : boundaries)
        QTest::addRow("U+%04X in %d", static_cast<unsigned>(boundary.value), boundary.length)
            << encoded(boundary.value, boundary.length) << boundary.valid;
}

void Utf8Test::judgesSequences() {
    QFETCH(QByteArray, bytes);
    QFETCH(bool, valid);
    const std::optional<bool> verdict = verdictAnywhere(bytes);
    QVERIFY2(verdict.has_value(), "the verdict depends on where the sequence stands");
    QCOMPARE(*verdict, valid);
}

void Utf8Test::agreesWithTheDefinition_data() {
    QTest::addColumn<int>("length");
    for (int length = 1; length <= 4; ++length)
        QTest::addRow("%d bytes", length) << length;
}

void Utf8Test::agreesWithTheDefinition() {
    QFETCH(int, length);
    constexpr std::array<char32_t, 5> shortestFrom{0, 0x0, 0x80, 0x800, 0x10000};
    constexpr std::array<char32_t, 5> limits{0, 0x80, 0x800, 0x10000, 0x200000};
    const auto index = static_cast<std::size_t>(length);
    for (char32_t value = 0; value < limits[index]; ++value) {
        const bool isSurrogate = value >= 0xD800 && value <= 0xDFFF;
        const bool expected = value >= shortestFrom[index] && value <= 0x10FFFF && !isSurrogate;
        if (isValid(encoded(value, length)) != expected)
            QFAIL(qPrintable(QStringLiteral("U+%1 in %2 bytes").arg(value, 4, 16).arg(length)));
    }
}

void Utf8Test::refusesASequenceCutShort_data() {
    QTest::addColumn<QByteArray>("character");
    QTest::newRow("two bytes") << QByteArray("é");
    QTest::newRow("three bytes") << QByteArray("한");
    QTest::newRow("four bytes") << QByteArray("🍺");
}

void Utf8Test::refusesASequenceCutShort() {
    QFETCH(QByteArray, character);
    QCOMPARE(verdictAnywhere(character), std::optional(true));
    for (qsizetype length = 1; length < character.size(); ++length) {
        QCOMPARE(verdictAnywhere(character.first(length)), std::optional(false));
        // What follows in memory is no part of the text.
        QVERIFY(!isValidUtf8({character.constData(), static_cast<std::size_t>(length)}));
        // Something else where a continuation belongs.
        QByteArray broken = character;
        broken[length] = 'x';
        QCOMPARE(verdictAnywhere(broken), std::optional(false));
        broken[length] = static_cast<char>(0xC2);
        QCOMPARE(verdictAnywhere(broken), std::optional(false));
    }
}

QTEST_GUILESS_MAIN(Utf8Test)
#include "tst_utf8.moc"
