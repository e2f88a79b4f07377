// SPDX-License-Identifier: MIT
#pragma once

#include "views/View.h"

class IconButton;
class QScrollArea;
class SearchField;

/// What the detail column shows for one category: a title, controls for the header and the
/// content. The header itself belongs to the shell.
class Page : public View {
    Q_OBJECT

public:
    explicit Page(BrewManager& manager, QWidget* parent = nullptr);

    [[nodiscard]] const QString& title() const { return m_title; }

    /// The widget with the page's controls; it may be given another parent.
    [[nodiscard]] QWidget* headerControls() const { return m_headerControls; }

    /// The user has come here to do something: the caret goes to the field that all begins with, if
    /// there is one.
    virtual void begin() {}

    /// The keyboard goes on to what the page has found or lists, if there is any of it.
    virtual void enterContent() {}

    /// So much of the page, from below, is covered by something that lies over the window: what can
    /// be scrolled is to be kept clear of it.
    virtual void setCoveredHeight(int height);

    /// Puts the focus on the search field, if there is one to be seen.
    void focusSearch() const;
    /// Presses the refresh button, if there is one and it can be pressed.
    void refresh() const;

Q_SIGNALS:
    void titleChanged(const QString& title);

protected:
    /// Called once, when the page is displayed for the first time.
    virtual void firstShown() {}

    void showEvent(QShowEvent* event) override;

    void setTitle(const QString& title);
    /// Fills the page with what is scrolled where there is no room for it, centred where there is
    /// more than it takes.
    void setScrolledContent(QWidget* content);
    /// Adds a control to the header, behind those that are there.
    void addHeaderControl(QWidget* control);
    SearchField* addSearchField(const QString& placeholder);
    /// What is typed in the search field, which the page must have.
    [[nodiscard]] QString searchText() const;
    IconButton* addRefreshButton(const QString& toolTip);

private:
    QString m_title;
    bool m_wasShown{false};
    QScrollArea* m_scroll{nullptr};
    QWidget* m_headerControls;
    SearchField* m_searchField{nullptr};
    IconButton* m_refreshButton{nullptr};
};
