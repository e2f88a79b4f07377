// SPDX-License-Identifier: MIT
#pragma once

#include "views/Page.h"
#include "widgets/RowModel.h"
#include "widgets/StateView.h"

class PackageSelection;
class QStackedLayout;
class RowListView;

/// A page that consists of a list, or of a word on why there is none.
class ListPage : public Page {
    Q_OBJECT

public:
    void setCoveredHeight(int height) override;

protected:
    /// The list's rows are packages for the user to select from, or none without a selection.
    ListPage(BrewManager& manager, PackageSelection* selection, const QString& name, int rowHeight,
             QWidget* parent);

    /// Shows the list.
    void showList();
    /// Show the state instead.
    void showBusy(const QString& text);
    void showSymbol(const QString& symbol, ThemeColor color, const QString& text,
                    StateView::TextSize size = StateView::TextSize::Body,
                    StateView::Voice voice = StateView::Voice::Aloud);

    [[nodiscard]] RowListView& list() const { return *m_list; }

    void enterContent() override;

    [[nodiscard]] static QString counted(const QString& title, qsizetype count);

    /// A row for each record, as `describe` sees it at that moment.
    template <class Record, class Describe>
    [[nodiscard]] static RowSection section(const QList<Record>& records, Describe describe) {
        return {.count = static_cast<int>(records.size()),
                .describe = [=](int place) { return describe(records.at(place)); },
                .records = records.constData()};
    }

    /// The same below a heading that counts them.
    template <class Record, class Describe>
    [[nodiscard]] static RowSection section(const QString& title, const QList<Record>& records,
                                            Describe describe) {
        RowSection counted = section(records, describe);
        counted.heading = ListPage::counted(title, records.size());
        return counted;
    }

private:
    QStackedLayout* m_stack;
    StateView* m_state;
    RowListView* m_list;
};
