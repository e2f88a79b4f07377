// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class BrewManager;
class ContentView;
class IconButton;
class LangManager;
class QMenu;

/// The application's one window: the root view, the application menu and the keyboard shortcuts.
class MainWindow final : public QWidget {
    Q_OBJECT

public:
    MainWindow(BrewManager& manager, LangManager& langManager, const QString& aboutPicture);

    [[nodiscard]] ContentView* content() const { return m_content; }

    /// The menu of the application itself; on macOS it is part of the system's menu bar.
    [[nodiscard]] QMenu* applicationMenu() const { return m_menu; }

Q_SIGNALS:
    void updateCheckRequested();

private:
    void addShortcuts();
    void fillMenu();

    ContentView* m_content;
    QMenu* m_menu;
    IconButton* m_menuButton{nullptr};
};
