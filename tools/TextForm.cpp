// SPDX-License-Identifier: MIT
#include "TextForm.h"

using namespace Qt::StringLiterals;

namespace {

QString escaped(char32_t character) {
    switch (character) {
    case U'\n':
        return u"\\n"_s;
    case U'\r':
        return u"\\r"_s;
    case U'\t':
        return u"\\t"_s;
    case U'"':
        return u"\\\""_s;
    case U'\\':
        return u"\\\\"_s;
    default:
        break;
    }
    const bool looksLikeItself =
        character == U' ' || (QChar::isPrint(character) && !QChar::isSpace(character));
    return looksLikeItself ? QString::fromUcs4(&character, 1)
                           : u"\\u{"_s + QString::number(character, 16) + u'}';
}

} // namespace

QString textForm(const QString& text) {
    QString form = u"\""_s;
    for (const char32_t character : text.toStdU32String())
        form += escaped(character);
    return form + u'"';
}

QString textForm(const std::optional<QString>& text) {
    return text ? textForm(*text) : u"none"_s;
}

QString textForm(bool value) {
    return value ? u"true"_s : u"false"_s;
}

QString textFormOfNames(qsizetype count, const QList<QString>& firstNames) {
    QString form = QString::number(count);
    for (qsizetype i = 0; i < firstNames.size(); ++i)
        form += (i == 0 ? u": "_s : u", "_s) + textForm(firstNames[i]);
    return firstNames.size() < count ? form + u", …"_s : form;
}
