// SPDX-License-Identifier: MIT
#include "PackageListCase.h"

#include "Samples.h"
#include "pages/PackageListView.h"

using namespace Qt::StringLiterals;

const PackageListCase& PackageListCase::of(PackageType type) {
    static const PackageListCase formulae{
        .type = PackageType::formula,
        .title = u"Formulae"_s,
        .symbol = u"shippingbox"_s,
        .loading = u"Loading formulae..."_s,
        .nothingInstalled = u"No formulae installed"_s,
        .placeholder = u"Filter formulae"_s,
        .refreshHelp = u"Refresh formulae list"_s,
        .alertTitle = u"Uninstall Package"_s,
        .load = ScriptedBrew::infoFormulae,
        .uninstall = u"uninstall"_s,
    };
    static const PackageListCase casks{
        .type = PackageType::cask,
        .title = u"Casks"_s,
        .symbol = u"macwindow"_s,
        .loading = u"Loading casks..."_s,
        .nothingInstalled = u"No casks installed"_s,
        .placeholder = u"Filter casks"_s,
        .refreshHelp = u"Refresh cask list"_s,
        .alertTitle = u"Uninstall Cask"_s,
        .load = ScriptedBrew::infoCasks,
        .uninstall = u"uninstall --cask"_s,
    };
    return type == PackageType::cask ? casks : formulae;
}

void PackageListCase::addRows() {
    QTest::addColumn<PackageType>("type");
    QTest::newRow("formulae") << PackageType::formula;
    QTest::newRow("casks") << PackageType::cask;
}

BrewPackage PackageListCase::package(const QString& name, const QString& desc) const {
    return type == PackageType::cask ? Samples::cask(name, desc) : Samples::formula(name, desc);
}

void PackageListCase::setInstalled(ScriptedBrew& brew, const QList<BrewPackage>& packages) const {
    if (type == PackageType::cask)
        brew.setCasks(packages);
    else
        brew.setFormulae(packages);
}

void PackageListCase::publish(BrewManager& manager, const QList<BrewPackage>& packages) const {
    (type == PackageType::cask ? manager.casks : manager.formulae).set(packages);
    QCoreApplication::processEvents();
}

void PackageListCase::show(PageWindow& window) const {
    if (type == PackageType::cask)
        window.show(new CaskListView(window.manager, window.selection));
    else
        window.show(new FormulaListView(window.manager, window.selection));
}
