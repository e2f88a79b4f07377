// SPDX-License-Identifier: MIT
#include "JsonReport.h"

#include "BrewListResponse.h"
#include "OutdatedResponse.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QStringDecoder>
#include <simdjson.h>

#include <algorithm>
#include <array>
#include <cstdint>

using namespace Qt::StringLiterals;

namespace {

using Element = simdjson::dom::element;

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

QString text(std::string_view utf8) {
    const QByteArrayView bytes(utf8.data(), static_cast<qsizetype>(utf8.size()));
    // At the start of a file it is no character, and at the start of a text it would be taken for
    // none either.
    if (utf8.starts_with(byteOrderMark))
        return QStringDecoder(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom)(bytes);
    return QString::fromUtf8(bytes);
}

/// What went wrong, and the path to it, which grows from the inside out on the way back.
struct Mismatch {
    QString path;
    QString expected;
    QString found;

    void isInside(const QString& outer) {
        const bool needsDot = !path.isEmpty() && !path.startsWith(u'[');
        path = outer + (needsDot ? u"."_s : QString()) + path;
    }

    [[nodiscard]] QString description() const {
        return u"%1: expected %2, found %3"_s.arg(path.isEmpty() ? u"the report"_s : path, expected,
                                                  found);
    }
};

/// Lets texts that are alike and near each other in a report share their letters. A formula says
/// its name and its version more than once and needs what its neighbours need, and it is making
/// texts that takes the most of decoding.
class RecentTexts final {
public:
    /// The bytes have to outlive this.
    QString shared(std::string_view utf8) {
        Entry& entry = m_entries[std::hash<std::string_view>()(utf8) % m_entries.size()];
        if (entry.text.isNull() || entry.utf8 != utf8)
            entry = {.utf8 = utf8, .text = text(utf8)};
        return entry.text;
    }

private:
    struct Entry {
        std::string_view utf8;
        QString text;
    };

    std::array<Entry, 1024> m_entries;
};

/// What the decoding of one report has along.
struct Decoding {
    Mismatch mismatch;
    RecentTexts texts;
};

QString kindName(Element element) {
    switch (element.type()) {
    case simdjson::dom::element_type::ARRAY:
        return u"list"_s;
    case simdjson::dom::element_type::OBJECT:
        return u"object"_s;
    case simdjson::dom::element_type::STRING:
        return u"text"_s;
    case simdjson::dom::element_type::BOOL:
        return u"truth value"_s;
    case simdjson::dom::element_type::NULL_VALUE:
        return u"null"_s;
    default:
        return u"number"_s;
    }
}

// Value traits: the name of each kind, how it is decoded and how it is encoded.

template <class T>
struct Json;

template <class T>
bool refuse(Element element, Decoding& decoding) {
    decoding.mismatch = {.path = {}, .expected = Json<T>::kind(), .found = kindName(element)};
    return false;
}

template <>
struct Json<QString> {
    static QString kind() { return u"text"_s; }

    static bool decode(Element element, QString& value, Decoding& decoding) {
        std::string_view utf8;
        if (element.get(utf8) != simdjson::SUCCESS)
            return refuse<QString>(element, decoding);
        value = decoding.texts.shared(utf8);
        return true;
    }

    static QJsonValue encode(const QString& value) { return value; }
};

template <>
struct Json<bool> {
    static QString kind() { return u"truth value"_s; }

    static bool decode(Element element, bool& value, Decoding& decoding) {
        return element.get(value) == simdjson::SUCCESS || refuse<bool>(element, decoding);
    }

    static QJsonValue encode(bool value) { return value; }
};

template <class T>
struct Json<std::optional<T>> {
    static QString kind() { return Json<T>::kind(); }

    static bool decode(Element element, std::optional<T>& value, Decoding& decoding) {
        if (element.is_null()) {
            value.reset();
            return true;
        }
        return Json<T>::decode(element, value.emplace(), decoding);
    }

    static QJsonValue encode(const std::optional<T>& value) { return Json<T>::encode(*value); }
};

template <class T>
struct Json<QList<T>> {
    static QString kind() { return u"list"_s; }

    static bool decode(Element element, QList<T>& values, Decoding& decoding) {
        simdjson::dom::array array;
        if (element.get(array) != simdjson::SUCCESS)
            return refuse<QList<T>>(element, decoding);
        values.clear();
        values.reserve(static_cast<qsizetype>(array.size()));
        for (const Element item : array) {
            if (!Json<T>::decode(item, values.emplaceBack(), decoding)) {
                decoding.mismatch.isInside(u"[%1]"_s.arg(values.size() - 1));
                return false;
            }
        }
        return true;
    }

    static QJsonValue encode(const QList<T>& values) {
        QJsonArray array;
        for (const T& value : values)
            array.append(Json<T>::encode(value));
        return array;
    }
};

template <JsonRecord Record>
struct Json<Record> {
    static constexpr auto fields = Record::fields();
    static constexpr std::size_t fieldCount = std::tuple_size_v<decltype(Record::fields())>;
    using Indices = std::make_index_sequence<fieldCount>;
    using Seen = std::array<bool, fieldCount>;

    /// One bit per length of a key with a field. A report has ten times as many keys as there
    /// are fields, and their length alone tells most of them apart.
    static constexpr std::uint64_t keyLengths = std::apply(
        [](auto... field) { return (... | (std::uint64_t{1} << field.key.size())); }, fields);

    static QString kind() { return u"object"_s; }

    static bool decode(Element element, Record& record, Decoding& decoding) {
        simdjson::dom::object object;
        if (element.get(object) != simdjson::SUCCESS)
            return refuse<Record>(element, decoding);
        Seen seen{};
        for (const auto [key, value] : object) {
            if (key.size() >= 64 || (keyLengths >> key.size() & 1) == 0)
                continue;
            if (!decodeMember(key, value, record, seen, decoding, Indices())) {
                decoding.mismatch.isInside(text(key));
                return false;
            }
        }
        return hasRequired(seen, decoding, Indices());
    }

    static QJsonValue encode(const Record& record) {
        QJsonObject object;
        std::apply([&](auto... field) { (encodeMember(record, field, object), ...); }, fields);
        return object;
    }

private:
    /// True for a key without a field: a report says more than is read of it.
    template <std::size_t... I>
    static bool decodeMember(std::string_view key, Element value, Record& record, Seen& seen,
                             Decoding& decoding, std::index_sequence<I...>) {
        bool decoded = true;
        const auto tryField = [&]<std::size_t index>() {
            constexpr auto field = std::get<index>(fields);
            if (key != field.key)
                return false;
            seen[index] = true;
            auto& member = record.*field.member;
            decoded = Json<std::remove_cvref_t<decltype(member)>>::decode(value, member, decoding);
            return true;
        };
        static_cast<void>((tryField.template operator()<I>() || ...));
        return decoded;
    }

    template <std::size_t... I>
    static bool hasRequired(const Seen& seen, Decoding& decoding, std::index_sequence<I...>) {
        const auto present = [&]<std::size_t index>() {
            constexpr auto field = std::get<index>(fields);
            if (!field.isRequired || seen[index])
                return true;
            using Member = std::remove_cvref_t<decltype(std::declval<Record>().*field.member)>;
            decoding.mismatch = {
                .path = text(field.key), .expected = Json<Member>::kind(), .found = u"nothing"_s};
            return false;
        };
        return (present.template operator()<I>() && ...);
    }

    template <class Member>
    static void encodeMember(const Record& record, JsonField<Record, Member> field,
                             QJsonObject& object) {
        const Member& member = record.*field.member;
        if constexpr (!JsonField<Record, Member>::isRequired) {
            if (!member)
                return;
        }
        object.insert(text(field.key), Json<Member>::encode(member));
    }
};

/// The parser refuses numbers beyond 64 bits, which JSON allows and brew may print under a key
/// that is not read. No field is a number, so that any other will do.
std::string withSmallNumbers(const std::string& utf8) {
    static const QRegularExpression number(
        uR"("(?:[^"\\]|\\.)*+"(*SKIP)(*FAIL))"
        uR"(|(?<![\w.+-])-?(?:0|[1-9]\d*+)(?:\.\d++)?+(?:[Ee][+-]?\d++)?+(?![\w.+-]))"_s);
    return QString::fromStdString(utf8).replace(number, u"0"_s).toStdString();
}

/// The place that Qt's parser, unlike the strict one, notes, and what stands there: a user whose
/// shell profile prints a greeting into every report needs to see that line.
QString description(const QJsonParseError& error, std::string_view utf8) {
    // The last byte that was taken is what it stumbled over. npos + 1 is the text's start.
    const auto taken = static_cast<std::size_t>(error.offset);
    const std::string_view before = utf8.substr(0, taken);
    const std::size_t lineStart = before.rfind('\n') + 1;
    const auto lineNumber = std::ranges::count(before, '\n') + 1;
    const qsizetype column = std::max<qsizetype>(text(before.substr(lineStart)).size(), 1);

    constexpr qsizetype context = 20;
    const std::string_view line = utf8.substr(lineStart, utf8.find('\n', taken) - lineStart);
    QString excerpt = text(line).mid(std::max<qsizetype>(column - context, 0), 2 * context);
    if (!excerpt.isEmpty() && excerpt.front().isLowSurrogate())
        excerpt.remove(0, 1);
    if (!excerpt.isEmpty() && excerpt.back().isHighSurrogate())
        excerpt.chop(1);
    for (QChar& character : excerpt) {
        if (!character.isPrint() && !character.isSurrogate())
            character = u' ';
    }
    excerpt = excerpt.trimmed();
    return u"line %1, column %2: %3 near %4"_s.arg(
        QString::number(lineNumber), QString::number(column), error.errorString(),
        excerpt.isEmpty() ? u"the end"_s : u'"' + excerpt + u'"');
}

/// The whole document, which lives as long as the parser, or why the text is not JSON.
std::variant<Element, DecodingError> parse(const std::string& utf8, simdjson::dom::parser& parser) {
    // JSON has none; some versions of the parser skip it all the same.
    if (utf8.starts_with(byteOrderMark))
        return DecodingError{u"line 1, column 1: expected object, found a byte order mark"_s};
    Element document;
    const auto error = parser.parse(utf8).get(document);
    if (error == simdjson::SUCCESS)
        return document;
    if (utf8.find_first_not_of(" \t\r\n") == std::string::npos) {
        // Output that isn't UTF-8 arrives here as nothing.
        return DecodingError{
            u"the report is empty or not valid UTF-8: expected object, found nothing"_s};
    }
    if (error == simdjson::UTF8_ERROR)
        return DecodingError{u"the report: expected valid UTF-8, found other bytes"_s};

    QJsonParseError slip;
    QJsonDocument::fromJson(
        QByteArray::fromRawData(utf8.data(), static_cast<qsizetype>(utf8.size())), &slip);
    const bool isAccepted = slip.error == QJsonParseError::NoError;
    const bool mayBeANumber = isAccepted || slip.error == QJsonParseError::IllegalNumber;
    if (mayBeANumber && parser.parse(withSmallNumbers(utf8)).get(document) == simdjson::SUCCESS)
        return document;
    return DecodingError{isAccepted ? u"the report: "_s + text(simdjson::error_message(error))
                                    : description(slip, utf8)};
}

} // namespace

template <class Report>
std::variant<Report, DecodingError> decodeReport(const std::string& utf8) {
    simdjson::dom::parser parser;
    auto document = parse(utf8, parser);
    if (auto* error = std::get_if<DecodingError>(&document))
        return std::move(*error);
    Report report;
    Decoding decoding;
    if (!Json<Report>::decode(std::get<Element>(document), report, decoding))
        return DecodingError{decoding.mismatch.description()};
    return report;
}

template <class Report>
QByteArray encodeReport(const Report& report) {
    return QJsonDocument(Json<Report>::encode(report).toObject()).toJson(QJsonDocument::Compact);
}

template std::variant<BrewListResponse, DecodingError> decodeReport(const std::string&);
template std::variant<BrewInfoResponse, DecodingError> decodeReport(const std::string&);
template std::variant<OutdatedResponse, DecodingError> decodeReport(const std::string&);
template QByteArray encodeReport(const BrewListResponse&);
template QByteArray encodeReport(const BrewInfoResponse&);
template QByteArray encodeReport(const OutdatedResponse&);
