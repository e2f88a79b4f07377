// SPDX-License-Identifier: MIT
#pragma once

#include "shell/OperationNotice.h"
#include "shell/SidebarCategory.h"
#include "views/PackageSelection.h"
#include "views/View.h"

#include <QPointer>

class DetailColumn;
class DetailSheet;
class LangManager;
class OperationOverlay;
class OutputSheet;
class QVBoxLayout;
class SidebarView;

/// The root view: sidebar and page, sheets, operation overlay and notice, or nothing but the
/// not-found page when there is no Homebrew.
class ContentView final : public View {
    Q_OBJECT

public:
    /// `aboutPicture` is the path of the application's picture, for the About page.
    ContentView(BrewManager& manager, LangManager& langManager, QString aboutPicture,
                QWidget* parent = nullptr);
    ~ContentView() override;

    [[nodiscard]] std::optional<SidebarCategory> selectedCategory() const {
        return m_selectedCategory;
    }

    void setSelectedCategory(std::optional<SidebarCategory> category);
    /// The user wants to go there and to begin: does nothing while a sheet is open that doesn't
    /// belong to the category, for what was typed there would be lost.
    void openCategory(SidebarCategory category);

    [[nodiscard]] PackageSelection& selection() { return m_selection; }

    [[nodiscard]] bool showsDetail() const { return m_selection.selectedPackageID().has_value(); }

    /// Null while there is no Homebrew.
    [[nodiscard]] DetailColumn* detailColumn() const { return m_detailColumn; }

    [[nodiscard]] SidebarView* sidebar() const { return m_sidebar; }

    [[nodiscard]] const OperationNotice& notice() const { return m_notice; }

    /// Opens the transcript of the last operation, if there is one.
    void showOutput();

    /// Keeps a widget in the lower leading corner, over the content and below the overlay.
    void setCornerWidget(QWidget* widget);

protected:
    void render() override;
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void rebuild();
    [[nodiscard]] QWidget* makeSplitView();
    void showSelectedPage();
    void orderFocus();
    void beginOnPage();
    void closeSheet();
    void updateSheet();
    void updateOverlay();
    void removeOverlay();
    void updateNotice();
    void openOutput(OperationSummary summary);
    void keepClearOfOverlay();

    LangManager& m_langManager;
    QString m_aboutPicture;
    std::optional<SidebarCategory> m_selectedCategory{SidebarCategory::formulae};
    PackageSelection m_selection;
    OperationNotice m_notice;
    bool m_wasShown{false};

    QVBoxLayout* m_layout;
    /// What fills the window; built anew for every language.
    QWidget* m_content{nullptr};
    SidebarView* m_sidebar{nullptr};
    DetailColumn* m_detailColumn{nullptr};
    QPointer<DetailSheet> m_sheet;
    QPointer<OutputSheet> m_outputSheet;
    OperationOverlay* m_overlay{nullptr};
    QWidget* m_cornerWidget{nullptr};
};
