// SPDX-License-Identifier: MIT
//
// Any bytes as the release service's answer, up to where something would be downloaded; and as an
// address to download from or to open.
#include "Addresses.h"
#include "CompareVersions.h"
#include "HttpGet.h"
#include "LatestRelease.h"
#include "Require.h"
#include "widgets/Links.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QUrl>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// The rule, told by the address as it is written.
bool staysSecure(const QUrl& address) {
    const QString text = QString::fromLatin1(address.toEncoded());
    static const QRegularExpression local(uR"(^(localhost|::1|(::ffff:)?127(\.\d{1,3}){3})$)"_s);
    if (text.startsWith(u"https://"_s))
        return !address.host().isEmpty();
    return text.startsWith(u"http://"_s) && local.match(address.host()).hasMatch();
}

void tryAddress(const QString& text) {
    const QUrl address(text, QUrl::StrictMode);
    if (!address.isValid())
        return;
    require(AddressRule::isAllowed(address) == staysSecure(address), "only secure addresses");

    const QUrl encrypted(u"https://releases.example/"_s);
    const QUrl local(u"http://127.0.0.1/"_s);
    for (const QUrl& from : {encrypted, local, address}) {
        const QUrl to = from.resolved(address);
        if (!AddressRule::isAllowedRedirect(from, to))
            continue;
        require(staysSecure(to), "only to secure addresses");
        require(from != encrypted || to.scheme() == u"https"_s, "encryption is not given up");
    }
}

void tryLink(const QString& text) {
    if (!canOpenAddress(text) || text == Addresses::contact)
        return;
    const QString opened = QString::fromLatin1(QUrl(text, QUrl::StrictMode).toEncoded());
    require(opened.startsWith(u"https://"_s) || opened.startsWith(u"http://"_s),
            "only the web is opened");
    require(text.startsWith(u"http"_s, Qt::CaseInsensitive), "nothing is read into an address");
    const auto isPlain = [](QChar character) {
        return character.unicode() > 0x20 && character.unicode() < 0x7F;
    };
    require(std::ranges::all_of(opened, isPlain), "one word reaches the browser");
}

void requireFirstArchive(const LatestRelease::Archive& archive, const QJsonArray& assets) {
    const auto isObject = [](const QJsonValue& asset) { return asset.isObject(); };
    require(std::ranges::all_of(assets, isObject), "every asset is one");
    for (const QJsonValue& asset : assets) {
        if (asset["name"_L1].toString().endsWith(u".tar.gz"_s)) {
            require(archive.address == asset["browser_download_url"_L1].toString(),
                    "the address is the first archive's");
            require(archive.digest == asset["digest"_L1].toString(), "the digest is, too");
            return;
        }
    }
    require(false, "an archive is among the assets");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const QJsonObject answer = QJsonDocument::fromJson(bytes).object();
    const auto release = LatestRelease::from(answer);
    require(release.has_value() == answer["tag_name"_L1].isString(), "a release has a tag");
    const QString text = textOf(data, size);
    tryAddress(text);
    tryLink(text);
    if (!release)
        return 0;
    const QString tag = answer["tag_name"_L1].toString();
    require(release->version == (tag.startsWith(u'v') ? tag.sliced(1) : tag),
            "a version is a tag without its letter");
    require(compareVersions(release->version, release->version) == 0, "a version can be compared");
    if (const auto& archive = release->archive) {
        requireFirstArchive(*archive, answer["assets"_L1].toArray());
        tryAddress(archive->address);
    }
    return 0;
}
