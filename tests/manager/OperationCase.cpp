// SPDX-License-Identifier: MIT
#include "OperationCase.h"

#include <QtTest>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

using OnPackage = QCoro::Task<bool> (BrewManager::*)(QString, PackageType);
using OnTap = QCoro::Task<bool> (BrewManager::*)(QString);

auto with(OnPackage operation, PackageType type) {
    return [operation, type](BrewManager& manager, const QString& package) {
        return (manager.*operation)(package, type);
    };
}

auto with(OnTap operation) {
    return
        [operation](BrewManager& manager, const QString& tap) { return (manager.*operation)(tap); };
}

} // namespace

const QList<OperationCase>& OperationCase::all() {
    using enum PackageType;
    static const QList<OperationCase> cases{
        {u"install formula"_s,
         with(&BrewManager::install, formula),
         {u"install"_s, u"@"_s},
         u"Installing @...\n"_s,
         u"\nSuccessfully installed @"_s,
         u"\nFailed to install @"_s},
        {u"install cask"_s,
         with(&BrewManager::install, cask),
         {u"install"_s, u"--cask"_s, u"@"_s},
         u"Installing @...\n"_s,
         u"\nSuccessfully installed @"_s,
         u"\nFailed to install @"_s},
        {u"uninstall formula"_s,
         with(&BrewManager::uninstall, formula),
         {u"uninstall"_s, u"@"_s},
         u"Uninstalling @...\n"_s,
         u"\nSuccessfully uninstalled @"_s,
         u"\nFailed to uninstall @"_s},
        {u"uninstall cask"_s,
         with(&BrewManager::uninstall, cask),
         {u"uninstall"_s, u"--cask"_s, u"@"_s},
         u"Uninstalling @...\n"_s,
         u"\nSuccessfully uninstalled @"_s,
         u"\nFailed to uninstall @"_s},
        {u"upgrade formula"_s,
         with(&BrewManager::upgrade, formula),
         {u"upgrade"_s, u"@"_s},
         u"Upgrading @...\n"_s,
         u"\nSuccessfully upgraded @"_s,
         u"\nFailed to upgrade @"_s},
        {u"upgrade cask"_s,
         with(&BrewManager::upgrade, cask),
         {u"upgrade"_s, u"--cask"_s, u"@"_s},
         u"Upgrading @...\n"_s,
         u"\nSuccessfully upgraded @"_s,
         u"\nFailed to upgrade @"_s},
        {u"upgrade all"_s,
         [](BrewManager& manager, const QString& /*package*/) { return manager.upgradeAll(); },
         {u"upgrade"_s},
         u"Upgrading all packages...\n"_s,
         u"\nAll packages upgraded"_s,
         u"\nUpgrade failed"_s},
        {u"add tap"_s,
         with(&BrewManager::addTap),
         {u"tap"_s, u"@"_s},
         u"Adding tap @...\n"_s,
         {},
         {}},
        {u"remove tap"_s,
         with(&BrewManager::removeTap),
         {u"untap"_s, u"@"_s},
         u"Removing tap @...\n"_s,
         {},
         {}},
    };
    return cases;
}

const OperationCase& OperationCase::named(const QString& name) {
    return *std::ranges::find(all(), name, &OperationCase::name);
}

void OperationCase::addRows() {
    QTest::addColumn<QString>("operation");
    for (const OperationCase& row : all())
        QTest::newRow(qUtf8Printable(row.name)) << row.name;
}

QStringList OperationCase::argumentsFor(const QString& package) const {
    QStringList words;
    for (const QString& word : arguments)
        words.append(withName(word, package));
    return words;
}

QString withName(const QString& text, const QString& package) {
    return QString(text).replace(u'@', package);
}
