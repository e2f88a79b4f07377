// SPDX-License-Identifier: MIT
#include "SyntheticReport.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <random>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

using Random = std::mt19937;

std::size_t below(Random& random, std::size_t limit) {
    return random() % limit;
}

QString word(Random& random) {
    static const QStringList syllables{u"ka"_s,  u"lo"_s,  u"mi"_s, u"ter"_s, u"gra"_s, u"pod"_s,
                                       u"zin"_s, u"ver"_s, u"sh"_s, u"ux"_s,  u"net"_s, u"o"_s};
    QString result;
    for (std::size_t i = 0, count = 2 + below(random, 3); i < count; ++i)
        result += syllables.at(static_cast<qsizetype>(below(random, 12)));
    return result;
}

QString sentence(Random& random) {
    QString result = word(random);
    for (std::size_t i = 0, count = 3 + below(random, 6); i < count; ++i)
        result += u' ' + word(random);
    return result;
}

QJsonArray words(Random& random, std::size_t most) {
    QJsonArray result;
    for (std::size_t i = 0, count = below(random, most + 1); i < count; ++i)
        result.append(word(random));
    return result;
}

QString digest(Random& random) {
    QString result;
    for (int i = 0; i < 8; ++i)
        result += u"%1"_s.arg(random(), 8, 16, QChar(u'0'));
    return result;
}

QJsonObject bottleFiles(Random& random) {
    QJsonObject files;
    for (const QString& tag : {u"arm64_tahoe"_s, u"arm64_sequoia"_s, u"arm64_sonoma"_s, u"sonoma"_s,
                               u"arm64_linux"_s, u"x86_64_linux"_s}) {
        files.insert(tag, QJsonObject{{u"cellar"_s, u":any_skip_relocation"_s},
                                      {u"url"_s, u"https://bottles.example/"_s + digest(random)},
                                      {u"sha256"_s, digest(random)}});
    }
    return files;
}

QJsonObject formula(const QString& name, Random& random) {
    const QString version =
        u"%1.%2.%3"_s.arg(QString::number(below(random, 30)), QString::number(below(random, 50)),
                          QString::number(below(random, 20)));
    const QJsonObject keg{{u"version"_s, version},
                          {u"used_options"_s, QJsonArray()},
                          {u"built_as_bottle"_s, true},
                          {u"poured_from_bottle"_s, true},
                          {u"time"_s, 1'760'000'000},
                          {u"runtime_dependencies"_s, QJsonArray()},
                          {u"installed_on_request"_s, below(random, 3) == 0}};
    const QJsonObject stable{{u"url"_s, u"https://src.example/"_s + name + u".tar.xz"_s},
                             {u"checksum"_s, digest(random)},
                             {u"tag"_s, QJsonValue()},
                             {u"revision"_s, QJsonValue()}};
    QJsonObject result{
        {u"name"_s, name},
        {u"full_name"_s, name},
        {u"tap"_s, u"homebrew/core"_s},
        {u"desc"_s, sentence(random)},
        {u"license"_s, u"MIT"_s},
        {u"homepage"_s, u"https://"_s + name + u".example/"_s},
        {u"versions"_s,
         QJsonObject{{u"stable"_s, version}, {u"head"_s, u"HEAD"_s}, {u"bottle"_s, true}}},
        {u"urls"_s, QJsonObject{{u"stable"_s, stable}}},
        {u"bottle"_s, QJsonObject{{u"stable"_s, QJsonObject{{u"rebuild"_s, 0},
                                                            {u"files"_s, bottleFiles(random)}}}}},
        {u"dependencies"_s, words(random, 6)},
        {u"build_dependencies"_s, words(random, 4)},
        {u"uses_from_macos"_s, words(random, 3)},
        {u"installed"_s, QJsonArray{keg}},
        {u"linked_keg"_s, version},
        {u"pinned"_s, false},
        {u"outdated"_s, below(random, 12) == 0},
        {u"ruby_source_path"_s, u"Formula/"_s + name + u".rb"_s},
        {u"ruby_source_checksum"_s, QJsonObject{{u"sha256"_s, digest(random)}}}};
    for (const QString& key :
         {u"oldnames"_s, u"aliases"_s, u"versioned_formulae"_s, u"options"_s, u"patches"_s,
          u"test_dependencies"_s, u"recommended_dependencies"_s, u"optional_dependencies"_s,
          u"uses_from_macos_bounds"_s, u"requirements"_s, u"conflicts_with"_s,
          u"conflicts_with_reasons"_s, u"link_overwrite"_s, u"post_install_steps"_s})
        result.insert(key, QJsonArray());
    for (const QString& key :
         {u"caveats"_s, u"keg_only_reason"_s, u"pour_bottle_only_if"_s, u"deprecation_date"_s,
          u"deprecation_reason"_s, u"disable_date"_s, u"disable_reason"_s, u"service"_s,
          u"deprecation_replacement_formula"_s, u"deprecation_replacement_cask"_s,
          u"disable_replacement_formula"_s, u"disable_replacement_cask"_s})
        result.insert(key, QJsonValue());
    return result;
}

} // namespace

std::string syntheticReport(int count) {
    Random random(20'260'101);
    std::vector<QString> names;
    for (int i = 0; i < count; ++i)
        names.push_back(word(random) + (i % 5 == 0 ? u"@%1"_s : u"-%1"_s).arg(i));
    std::ranges::sort(names);

    QJsonArray formulae;
    for (const QString& name : names)
        formulae.append(formula(name, random));
    return QJsonDocument(QJsonObject{{u"formulae"_s, formulae}, {u"casks"_s, QJsonArray()}})
        .toJson(QJsonDocument::Indented)
        .toStdString();
}
