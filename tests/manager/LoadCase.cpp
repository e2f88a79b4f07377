// SPDX-License-Identifier: MIT
#include "LoadCase.h"

#include <QtTest>

#include <algorithm>

using namespace Qt::StringLiterals;

const QList<LoadCase>& LoadCase::all() {
    static const QList<LoadCase> cases{
        {
            u"formulae"_s,
            &BrewManager::loadFormulae,
            u"isLoadingFormulae"_s,
            &BrewManager::isLoadingFormulae,
            {u"info"_s, u"--json=v2"_s, u"--installed"_s, u"--formula"_s},
            u"Failed to load formulae: "_s,
            u"brew info --installed --formula failed"_s,
            R"({"formulae":[{"name":"wget"},{"name":"jq"}],"casks":[{"token":"ignored"}]})",
            {uR"(announced: formulae = 2: "jq", "wget")"_s},
        },
        {
            u"casks"_s,
            &BrewManager::loadCasks,
            u"isLoadingCasks"_s,
            &BrewManager::isLoadingCasks,
            {u"info"_s, u"--json=v2"_s, u"--installed"_s, u"--cask"_s},
            u"Failed to load casks: "_s,
            u"brew info --installed --cask failed"_s,
            R"({"formulae":[{"name":"ignored"}],"casks":[{"token":"iina"},{"token":"alfred"}]})",
            {uR"(announced: casks = 2: "alfred", "iina")"_s},
        },
        {
            u"outdated"_s,
            &BrewManager::loadOutdated,
            u"isLoadingOutdated"_s,
            &BrewManager::isLoadingOutdated,
            {u"outdated"_s, u"--json=v2"_s},
            u"Failed to load outdated: "_s,
            u"brew outdated failed"_s,
            R"({"formulae":[{"name":"wget","installed_versions":["1"],"current_version":"2"}],)"
            R"("casks":[{"name":"iina","installed_versions":"1","current_version":"2"}]})",
            {uR"(announced: outdatedFormulae = 1: "wget")"_s,
             uR"(announced: outdatedCasks = 1: "iina")"_s},
        },
        {
            u"taps"_s,
            &BrewManager::loadTaps,
            u"isLoadingTaps"_s,
            &BrewManager::isLoadingTaps,
            {u"tap"_s},
            u"Failed to load taps: "_s,
            u"brew tap failed"_s,
            "user/tools\nhomebrew/core\n",
            {uR"(announced: taps = 2: "homebrew/core", "user/tools")"_s},
        },
    };
    return cases;
}

const LoadCase& LoadCase::named(const QString& name) {
    return *std::ranges::find(all(), name, &LoadCase::name);
}

void LoadCase::addRows() {
    QTest::addColumn<QString>("load");
    for (const LoadCase& row : all())
        QTest::newRow(qUtf8Printable(row.name)) << row.name;
}

QByteArray LoadCase::answers(const FakeBrew& brew,
                             const std::function<QByteArray(const LoadCase&)>& before) {
    QByteArray body = "case \"$*\" in\n";
    for (const LoadCase& row : all()) {
        body += '\'' + row.arguments.join(u' ').toUtf8() + "')\n";
        body += (before ? before(row) : QByteArray()) + brew.print(row.report) + ";;\n";
    }
    return body + "esac\n";
}

QStringList LoadCase::recordedWith(const QStringList& outcome) const {
    return QStringList{u"announced: "_s + flagName + u" = true"_s,
                       u"announced: errorMessage = none"_s} +
           outcome + QStringList{u"announced: "_s + flagName + u" = false"_s};
}

QByteArray formulaeReport(const QByteArrayList& names) {
    QByteArrayList formulae;
    for (const QByteArray& name : names)
        formulae.append(R"({"name":")" + name + R"("})");
    return R"({"formulae":[)" + formulae.join(',') + R"(],"casks":[]})";
}
