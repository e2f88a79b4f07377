// SPDX-License-Identifier: MIT
#include "shell/MainWindow.h"

#include "BrewManager.h"
#include "L10n.h"
#include "LangManager.h"
#include "shell/ContentView.h"
#include "shell/DetailColumn.h"
#include "style/Metrics.h"
#include "views/Page.h"
#include "widgets/Accessible.h"
#include "widgets/AlertCard.h"
#include "widgets/DisplayText.h"
#include "widgets/IconButton.h"
#include "widgets/Sheet.h"

#include <QMenu>
#include <QMenuBar>
#include <QShortcut>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

MainWindow::MainWindow(BrewManager& manager, LangManager& langManager, const QString& aboutPicture)
    : m_content(new ContentView(manager, langManager, aboutPicture, this)),
      m_menu(new QMenu(u"Lumora"_s, this)) {
    Accessible::setRole(this, QAccessible::Window);
    setWindowTitle(u"Lumora"_s);
    m_menu->setAccessibleName(u"Lumora"_s);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_content);
    resize(Metrics::windowWidth, Metrics::windowHeight);

#ifdef Q_OS_MACOS
    auto* const bar = new QMenuBar(nullptr);
    connect(this, &QObject::destroyed, bar, &QObject::deleteLater);
    bar->addMenu(m_menu);
#else
    // Desktops without a menu bar of their own: a quiet button below the sidebar.
    m_menuButton = new IconButton(u"line.3.horizontal"_s, u"Lumora"_s);
    m_menuButton->setObjectName(u"applicationMenuButton"_s);
    connect(m_menuButton, &IconButton::clicked, this, [this] {
        const QPoint above = m_menuButton->mapToGlobal(QPoint(0, 0));
        m_menu->popup(above - QPoint(0, m_menu->sizeHint().height()));
    });
    m_content->setCornerWidget(m_menuButton);
#endif
    fillMenu();
    langManager.current().subscribe(this, [this](Lang) { fillMenu(); });
    addShortcuts();
}

void MainWindow::fillMenu() {
    // Not clear(), which spares actions that the window has as well.
    qDeleteAll(m_menu->actions());
    QAction* const about = m_menu->addAction(DisplayText::label(L10n::about()), this, [this] {
        m_content->openCategory(SidebarCategory::about);
    });
    about->setMenuRole(QAction::AboutRole);
    // Without Homebrew there are no pages.
    about->setEnabled(m_content->detailColumn() != nullptr);
    QAction* const check = m_menu->addAction(DisplayText::label(L10n::checkForUpdatesMenu()), this,
                                             &MainWindow::updateCheckRequested);
    check->setObjectName(u"checkForUpdatesAction"_s);
    check->setMenuRole(QAction::ApplicationSpecificRole);
    m_menu->addSeparator();
    QAction* const output =
        m_menu->addAction(DisplayText::label(L10n::output()), m_content, &ContentView::showOutput);
    output->setObjectName(u"outputAction"_s);
    // On macOS the application's own menu takes in whatever has such a role, and a menu that is
    // left without entries isn't shown.
    output->setMenuRole(QAction::ApplicationSpecificRole);
    const auto enableOutput = [this, output] {
        output->setEnabled(m_content->notice().last().has_value());
    };
    connect(&m_content->notice(), &OperationNotice::changed, output, enableOutput);
    enableOutput();
    m_menu->addSeparator();
    QAction* const close =
        m_menu->addAction(DisplayText::label(L10n::close()), this, &QWidget::close);
    close->setMenuRole(QAction::QuitRole);
    close->setShortcuts({QKeySequence(u"Ctrl+Q"_s), QKeySequence(u"Ctrl+W"_s)});
    // The menu alone would not listen to them while it is closed.
    addAction(close);
}

void MainWindow::addShortcuts() {
    const auto add = [this](const QKeySequence& keys, auto action) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, action);
    };
    for (const SidebarCategory category : allSidebarCategories) {
        const int number = static_cast<int>(category) + 1;
        add(QKeySequence(u"Ctrl+%1"_s.arg(number)),
            [this, category] { m_content->openCategory(category); });
    }
    const auto onPage = [this](void (Page::*action)() const) {
        return [this, action] {
            const DetailColumn* const column = m_content->detailColumn();
            const bool isInReach = Sheet::openOver(this) == nullptr;
            if (isInReach && column != nullptr && column->page() != nullptr)
                (column->page()->*action)();
        };
    };
    add(QKeySequence::Find, onPage(&Page::focusSearch));
    add(QKeySequence(u"Ctrl+R"_s), onPage(&Page::refresh));
    add(QKeySequence(u"F5"_s), onPage(&Page::refresh));
    if (m_menuButton != nullptr)
        add(QKeySequence(u"F10"_s), [this] {
            // A question has to be answered first.
            if (qobject_cast<AlertCard*>(Sheet::openOver(this)) == nullptr)
                m_menuButton->click();
        });
}
