// SPDX-License-Identifier: MIT
#include "Reports.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace {

QJsonObject formulaEntry(const BrewPackage& package) {
    return {
        {u"name"_s, package.name},
        {u"full_name"_s, package.fullName},
        {u"desc"_s, package.desc},
        {u"homepage"_s, package.homepage},
        {u"versions"_s, QJsonObject{{u"stable"_s, package.version}}},
        {u"installed"_s,
         QJsonArray{QJsonObject{{u"version"_s, package.installedVersion},
                                {u"installed_on_request"_s, package.installedOnRequest}}}},
        {u"dependencies"_s, QJsonArray::fromStringList(package.dependencies)},
        {u"outdated"_s, package.isOutdated},
    };
}

QJsonObject caskEntry(const BrewPackage& package) {
    return {
        {u"token"_s, package.name},          {u"full_token"_s, package.fullName},
        {u"desc"_s, package.desc},           {u"homepage"_s, package.homepage},
        {u"version"_s, package.version},     {u"installed"_s, package.installedVersion},
        {u"outdated"_s, package.isOutdated},
    };
}

QByteArray document(const QJsonArray& formulae, const QJsonArray& casks) {
    return QJsonDocument(QJsonObject{{u"formulae"_s, formulae}, {u"casks"_s, casks}}).toJson();
}

} // namespace

QByteArray Reports::installed(const QList<BrewPackage>& packages) {
    QJsonArray formulae;
    QJsonArray casks;
    for (const BrewPackage& package : packages) {
        if (package.type == PackageType::cask)
            casks.append(caskEntry(package));
        else
            formulae.append(formulaEntry(package));
    }
    return document(formulae, casks);
}

QByteArray Reports::outdated(const QList<OutdatedPackage>& packages) {
    QJsonArray formulae;
    QJsonArray casks;
    for (const OutdatedPackage& package : packages) {
        QJsonObject entry{{u"name"_s, package.name}, {u"current_version"_s, package.latestVersion}};
        if (package.type == PackageType::cask) {
            entry.insert(u"installed_versions"_s, package.currentVersion);
            casks.append(entry);
        } else {
            entry.insert(u"installed_versions"_s, QJsonArray{package.currentVersion});
            formulae.append(entry);
        }
    }
    return document(formulae, casks);
}

QByteArray Reports::lines(const QStringList& lines) {
    QByteArray text;
    for (const QString& line : lines)
        text += line.toUtf8() + '\n';
    return text;
}
