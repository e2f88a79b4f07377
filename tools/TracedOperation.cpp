// SPDX-License-Identifier: MIT
#include "TracedOperation.h"

#include "BrewManager.h"
#include "TextForm.h"

using namespace Qt::StringLiterals;

namespace {

QCoro::Task<QString> resultOf(QCoro::Task<> task) {
    co_await task;
    co_return u"done"_s;
}

template <class Result>
QCoro::Task<QString> resultOf(QCoro::Task<Result> task) {
    const Result result = co_await task;
    co_return textForm(result);
}

PackageType typeAt(const QStringList& arguments, qsizetype index) {
    return packageTypeFromRawValue(arguments.value(index)).value_or(PackageType::formula);
}

template <class Result>
TracedOperation plain(const QString& name, QCoro::Task<Result> (BrewManager::*operation)()) {
    return {name, {}, 0, 0, [operation](BrewManager& manager, const QStringList& /*arguments*/) {
                return resultOf((manager.*operation)());
            }};
}

template <class Result>
TracedOperation withText(const QString& name, const QString& synopsis,
                         QCoro::Task<Result> (BrewManager::*operation)(QString)) {
    return {name, synopsis, 1, 1, [operation](BrewManager& manager, const QStringList& arguments) {
                return resultOf((manager.*operation)(arguments.constFirst()));
            }};
}

template <class Result>
TracedOperation withPackage(const QString& name,
                            QCoro::Task<Result> (BrewManager::*operation)(QString, PackageType)) {
    return {name, u"NAME [formula|cask]"_s, 1, 2,
            [operation](BrewManager& manager, const QStringList& arguments) {
                return resultOf((manager.*operation)(arguments.constFirst(), typeAt(arguments, 1)));
            }};
}

} // namespace

const std::vector<TracedOperation>& TracedOperation::all() {
    static const std::vector<TracedOperation> operations{
        plain(u"loadFormulae"_s, &BrewManager::loadFormulae),
        plain(u"loadCasks"_s, &BrewManager::loadCasks),
        plain(u"loadOutdated"_s, &BrewManager::loadOutdated),
        plain(u"loadTaps"_s, &BrewManager::loadTaps),
        plain(u"refreshAll"_s, &BrewManager::refreshAll),
        withText(u"search"_s, u"QUERY"_s, &BrewManager::search),
        withPackage(u"install"_s, &BrewManager::install),
        withPackage(u"uninstall"_s, &BrewManager::uninstall),
        withPackage(u"upgrade"_s, &BrewManager::upgrade),
        plain(u"upgradeAll"_s, &BrewManager::upgradeAll),
        withText(u"addTap"_s, u"NAME"_s, &BrewManager::addTap),
        withText(u"removeTap"_s, u"NAME"_s, &BrewManager::removeTap),
        withPackage(u"getPackageInfo"_s, &BrewManager::getPackageInfo),
        plain(u"cleanupDryRun"_s, &BrewManager::cleanupDryRun),
        plain(u"cleanup"_s, &BrewManager::cleanup),
        plain(u"doctor"_s, &BrewManager::doctor),
    };
    return operations;
}

QString TracedOperation::complaintAbout(const QStringList& arguments) const {
    if (arguments.size() < fewestArguments || arguments.size() > mostArguments) {
        return synopsis.isEmpty() ? name + u" takes no arguments"_s
                                  : name + u" takes "_s + synopsis;
    }
    if (arguments.size() == 2 && !packageTypeFromRawValue(arguments[1]))
        return u"a package is a formula or a cask, not "_s + textForm(arguments[1]);
    return {};
}
