// SPDX-License-Identifier: MIT
#include "PackageType.h"

using namespace Qt::StringLiterals;

QString rawValue(PackageType type) {
    return type == PackageType::cask ? u"cask"_s : u"formula"_s;
}

std::optional<PackageType> packageTypeFromRawValue(QStringView text) {
    for (const PackageType type : {PackageType::formula, PackageType::cask}) {
        if (text == rawValue(type))
            return type;
    }
    return std::nullopt;
}

QString packageID(PackageType type, const QString& name) {
    return rawValue(type) + u'-' + name;
}
