// SPDX-License-Identifier: MIT
#include "widgets/Row.h"

#include "widgets/DisplayText.h"

using namespace Qt::StringLiterals;

QString Row::accessibleText() const {
    QStringList parts{title};
    parts << (newVersion.isEmpty() ? subtitle : subtitle + u" → "_s + newVersion) << version;
    for (const RowTag& tag : tags)
        parts << tag.text;
    for (const RowAction& action : actions) {
        if (action.kind == RowAction::Kind::Badge)
            parts << action.title;
    }
    parts.removeAll(QString());
    return DisplayText::line(parts.join(u", "_s));
}

QString Row::accessibleDescription() const {
    QStringList parts;
    for (const RowTag& tag : tags) {
        if (const QString explanation = tag.explanation(); !explanation.isEmpty())
            parts << tag.text + u": "_s + explanation;
    }
    return DisplayText::line(parts.join(u"; "_s));
}
