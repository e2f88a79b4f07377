// SPDX-License-Identifier: MIT
#pragma once

#include "BrewPackage.h"
#include "views/View.h"

#include <QCoroTask>
#include <QHash>

#include <optional>

class OutputSection;
class QStackedLayout;
class QVBoxLayout;
class ScrollPane;
class StateView;

/// Everything that is known of one installed package, and what `brew info` says of it.
class PackageDetailView final : public View {
    Q_OBJECT

public:
    PackageDetailView(QString packageID, BrewManager& manager, QWidget* parent = nullptr);

    /// Shows another package; the report of the one before stays until the new one is there.
    void setPackageID(const QString& packageID);

Q_SIGNALS:
    /// What is shown has another name.
    void titleChanged(const QString& title);
    /// The user wants to see another one.
    void packageRequested(const QString& packageID);

protected:
    void render() override;

private:
    void showPackage(const BrewPackage& package);
    [[nodiscard]] QWidget* makeFacts(const BrewPackage& package);
    [[nodiscard]] QLayout* dependenciesOf(const BrewPackage& package);
    void orderFocus();
    QCoro::Task<> loadInfo(BrewPackage package);

    QString m_packageID;
    QString m_infoText;
    bool m_isLoadingInfo{false};
    /// The identifier that a report has been asked for.
    std::optional<QString> m_reportedID;
    std::optional<BrewPackage> m_shown;
    /// Those of its dependencies that are installed: identifiers by names.
    QHash<QString, QString> m_openable;
    QStackedLayout* m_stack;
    StateView* m_notFound;
    ScrollPane* m_found;
    /// Rebuilt whenever the package changes.
    QWidget* m_facts{nullptr};
    QVBoxLayout* m_layout;
    QWidget* m_loadingRow;
    OutputSection* m_report;
};
