#pragma once

#include <QObject>

class QAction;
class QMenu;
class QMenuBar;

/// The small menu bar inside the editor's window, with its File, Edit and Help menus.
///
/// Threads    GUI thread only.
/// Ownership  the widgets and actions belong to the window's widget tree; the manager only points at them.
class CMenuManager : public QObject
{
    Q_OBJECT

  public:
    /// Items that are switched on and off by number.
    enum ItemID : int
    {
        k_copyItem = 0,
        k_pasteItem = 1,
        k_revertItem = 2,
        k_resetItem = 3,
    };

    CMenuManager() = default;

    /// Builds the bar on the main window, whose slots the items call. Nothing happens for null.
    void initialize(QWidget* parent);

    /// Each builds one menu whose actions call slots of the given window; the bar owns it.
    QMenu* createFileMenu(QWidget* window);
    QMenu* createEditMenu(QWidget* window);
    QMenu* createHelpMenu(QWidget* window);

    /// An unknown id, or an item that was not built, is ignored.
    void setMenuItemEnabledByID(int id, bool enabled);

    void setMenuBarEnabled(bool enabled);

    /// With its first item selected, as a key does. Nothing happens while the bar is disabled.
    void openFirstMenu();

  private:
    QMenuBar* m_menuBar = nullptr;
    QAction* m_copyAction = nullptr;
    QAction* m_pasteAction = nullptr;
    QAction* m_revertAction = nullptr;
    QAction* m_resetAction = nullptr;
};
