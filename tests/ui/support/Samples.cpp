// SPDX-License-Identifier: MIT
#include "Samples.h"

using namespace Qt::StringLiterals;

BrewPackage Samples::formula(const QString& name, const QString& desc) {
    return {
        .name = name,
        .fullName = u"homebrew/core/"_s + name,
        .desc = desc,
        .homepage = u"https://example.org/"_s + name,
        .version = u"1.2"_s,
        .installedVersion = u"1.1"_s,
        .dependencies = {},
    };
}

BrewPackage Samples::cask(const QString& name, const QString& desc) {
    BrewPackage package = formula(name, desc);
    package.fullName = u"homebrew/cask/"_s + name;
    package.type = PackageType::cask;
    return package;
}

BrewPackage Samples::dependency(const QString& name) {
    BrewPackage package = formula(name);
    package.installedOnRequest = false;
    return package;
}

BrewPackage Samples::outdated(BrewPackage package) {
    package.isOutdated = true;
    return package;
}

OutdatedPackage Samples::outdatedFormula(const QString& name) {
    return {name, u"1.0"_s, u"2.0"_s, PackageType::formula};
}

OutdatedPackage Samples::outdatedCask(const QString& name) {
    return {name, u"10"_s, u"11"_s, PackageType::cask};
}

QList<BrewPackage> Samples::manyFormulae(int count) {
    QList<BrewPackage> packages;
    packages.reserve(count);
    for (int i = 0; i < count; ++i) {
        BrewPackage package =
            formula(u"package-%1"_s.arg(i, 5, 10, QChar(u'0')),
                    u"Tool number %1 for a list that is longer than any window"_s.arg(i));
        package.version = u"%1.%2"_s.arg(i % 7).arg(i % 11);
        packages.append(package);
    }
    return packages;
}
