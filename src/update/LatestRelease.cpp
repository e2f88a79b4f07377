// SPDX-License-Identifier: MIT
#include "LatestRelease.h"

#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

std::optional<LatestRelease::Archive> archiveAmong(const QJsonArray& assets) {
    const auto isArchive = [](const QJsonValue& asset) {
        return asset["name"_L1].toString().endsWith(".tar.gz"_L1);
    };
    const auto isObject = [](const QJsonValue& asset) { return asset.isObject(); };
    const auto archive = std::ranges::find_if(assets, isArchive);
    if (!std::ranges::all_of(assets, isObject) || archive == assets.end())
        return std::nullopt;
    const QJsonValue address = (*archive)["browser_download_url"_L1];
    if (!address.isString())
        return std::nullopt;
    return LatestRelease::Archive{.address = address.toString(),
                                  .digest = (*archive)["digest"_L1].toString()};
}

} // namespace

std::optional<LatestRelease> LatestRelease::from(const QJsonObject& answer) {
    const QJsonValue tag = answer["tag_name"_L1];
    if (!tag.isString())
        return std::nullopt;
    QString version = tag.toString();
    if (version.startsWith(u'v'))
        version.remove(0, 1);
    return LatestRelease{.version = version,
                         .archive = archiveAmong(answer["assets"_L1].toArray())};
}
