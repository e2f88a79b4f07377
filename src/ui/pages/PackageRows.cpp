// SPDX-License-Identifier: MIT
#include "pages/PackageRows.h"

#include "L10n.h"

using namespace Qt::StringLiterals;

namespace {

Row installedRow(const BrewPackage& package, std::function<void()> onUninstall) {
    Row row{
        .id = package.id(),
        .title = package.name,
        .subtitle = package.desc,
        .version = package.version,
        .actions = {{.kind = RowAction::Kind::Trash,
                     .title = L10n::uninstall(),
                     .toolTip = L10n::uninstall(),
                     .onTrigger = std::move(onUninstall)}},
    };
    if (package.isOutdated)
        row.tags.append({L10n::outdated(), RowTag::Tone::Outdated});
    return row;
}

/// A row that begins with a picture of what the package is.
template <class Record>
Row rowWithSymbol(const Record& record) {
    const bool isCask = record.type == PackageType::cask;
    return {
        .id = record.id(),
        .title = record.name,
        .symbol = isCask ? u"macwindow"_s : u"shippingbox"_s,
        .symbolTone = isCask ? Row::Tone::Cask : Row::Tone::Formula,
    };
}

/// Who names it as a dependency.
QString dependents(const BrewPackage& package, const QList<BrewPackage>& installed) {
    QStringList names;
    for (const BrewPackage& other : installed) {
        if (package.isAmong(other.dependencies))
            names.append(other.name);
    }
    return names.join(u", "_s);
}

} // namespace

Row FormulaRow::toRow() const {
    Row row = installedRow(package, onUninstall);
    if (!package.installedOnRequest)
        row.tags.append(
            {L10n::dependency(), RowTag::Tone::Neutral, [package = package, installed = installed] {
                 return dependents(package, installed);
             }});
    return row;
}

Row CaskRow::toRow() const {
    return installedRow(package, onUninstall);
}

Row UpdateRow::toRow() const {
    Row row = rowWithSymbol(package);
    row.subtitle = package.currentVersion;
    row.newVersion = package.latestVersion;
    if (isUpgrading)
        row.actions = {{.kind = RowAction::Kind::Spinner, .title = L10n::update()}};
    else
        row.actions = {{.kind = RowAction::Kind::Button,
                        .title = L10n::update(),
                        .isEnabled = !isAnyUpgrading,
                        .onTrigger = onUpgrade}};
    return row;
}

Row SearchResultRow::toRow() const {
    Row row = rowWithSymbol(result);
    if (result.isInstalled)
        row.actions = {{.kind = RowAction::Kind::Badge, .title = L10n::installed()}};
    else if (installProgress == result.name)
        row.actions = {{.kind = RowAction::Kind::Spinner, .title = L10n::install()}};
    else
        row.actions = {
            {.kind = RowAction::Kind::Button, .title = L10n::install(), .onTrigger = onInstall}};
    return row;
}
