#include "app/CMenuManager.h"

#include "app/common/Constants.h"
#include "app/common/Utilities.h"

#include <QFrame>
#include <QMenu>
#include <QMenuBar>

namespace
{
QMenu* createMenu(QMenuBar* bar, const QString& title)
{
    auto* menu = new QMenu(title, bar);
    menu->setFont(QFont(k_fontGLT7Bold));
    Utilities::adjustFont(menu);
    return menu;
}

QAction* addItem(QMenu* menu, const QString& text, const QString& shortcut, QWidget* window, const char* slot)
{
    QAction* action = menu->addAction(text);
    action->setShortcut(QKeySequence(shortcut));
    QObject::connect(action, SIGNAL(triggered()), window, slot);
    return action;
}
} // namespace

void CMenuManager::initialize(QWidget* parent)
{
    if (parent == nullptr)
        return;
    auto* frame = new QFrame(parent);
    frame->setGeometry(k_menuRect);
    m_menuBar = new QMenuBar(frame);
    m_menuBar->setGeometry(QRect(QPoint(0, 0), k_menuRect.size()));
    m_menuBar->setFont(QFont(k_fontGLT7Bold));
    Utilities::adjustFont(m_menuBar);

    m_menuBar->addMenu(createFileMenu(parent));
    m_menuBar->addMenu(createEditMenu(parent));
    m_menuBar->addMenu(createHelpMenu(parent));
}

QMenu* CMenuManager::createFileMenu(QWidget* window)
{
    QMenu* menu = createMenu(m_menuBar, k_fileMenuString);
    addItem(menu, k_openString, k_openCommand, window, SLOT(open()));
    menu->addSeparator();
    addItem(menu, k_saveString, k_saveCommand, window, SLOT(save()));
    addItem(menu, k_saveAsString, k_saveAsCommand, window, SLOT(saveAs()));
    return menu;
}

QMenu* CMenuManager::createEditMenu(QWidget* window)
{
    QMenu* menu = createMenu(m_menuBar, k_editMenuString);
    m_copyAction = addItem(menu, k_copyString, k_copyCommand, window, SLOT(copy()));
    m_pasteAction = addItem(menu, k_pasteString, k_pasteCommand, window, SLOT(paste()));
    m_revertAction = addItem(menu, k_revrtString, k_revertCommand, window, SLOT(revert()));
    m_resetAction = addItem(menu, k_resetString, k_resetCommand, window, SLOT(factoryReset()));
    connect(menu, SIGNAL(aboutToShow()), window, SLOT(setEditMenuEnable()));
    return menu;
}

QMenu* CMenuManager::createHelpMenu(QWidget* window)
{
    QMenu* menu = createMenu(m_menuBar, k_helpMenuString);
    addItem(menu, k_manualString, k_manualCommand, window, SLOT(manual()));
    addItem(menu, k_aboutString, k_aboutCommand, window, SLOT(about()));
    return menu;
}

void CMenuManager::setMenuItemEnabledByID(int id, bool enabled)
{
    QAction* action = nullptr;
    switch (id) {
    case k_copyItem:
        action = m_copyAction;
        break;
    case k_pasteItem:
        action = m_pasteAction;
        break;
    case k_revertItem:
        action = m_revertAction;
        break;
    case k_resetItem:
        action = m_resetAction;
        break;
    default:
        break;
    }
    if (action != nullptr)
        action->setEnabled(enabled);
}

void CMenuManager::setMenuBarEnabled(bool enabled)
{
    if (m_menuBar != nullptr)
        m_menuBar->setEnabled(enabled);
}

void CMenuManager::openFirstMenu()
{
    if (m_menuBar == nullptr || !m_menuBar->isEnabled())
        return;
    QAction* first = m_menuBar->actions().constFirst();
    m_menuBar->setActiveAction(first);
    first->menu()->setActiveAction(first->menu()->actions().constFirst());
}
