#include "widgets/COverlapView.h"

#include <QAction>

COverlapView::COverlapView(QWidget* parent, QWidget* window) : QWidget(parent)
{
    connect(this, SIGNAL(windowLocked()), window, SLOT(windowLock()));
    connect(this, SIGNAL(windowUnlocked()), window, SLOT(windowUnlock()));
    emit windowLocked(); // the window listens already; clazy:exclude=incorrect-emit
    setFocus(Qt::OtherFocusReason);
}

COverlapView::~COverlapView()
{
    emit windowUnlocked();
}

void COverlapView::installShortcut(const QString& key, const char* slot)
{
    if (slot == nullptr)
        return;
    auto* action = new QAction(this);
    action->setShortcut(QKeySequence(key));
    connect(action, SIGNAL(triggered()), this, slot);
    addAction(action);
    m_shortcuts.append(action);
}

void COverlapView::enableShortcut()
{
    setShortcutsEnabled(true);
}

void COverlapView::disableShortcut()
{
    setShortcutsEnabled(false);
}

void COverlapView::setShortcutsEnabled(bool enabled)
{
    for (QAction* action : std::as_const(m_shortcuts))
        action->setEnabled(enabled);
}
