#include "app/CAccessibleWindow.h"

#include "app/AccessibleEditor.h"
#include "app/CNotice.h"
#include "style/CInfoView.h"

CAccessibleWindow::CAccessibleWindow(QWidget* window) : CAccessibleGroup(window, QAccessible::Window) {}

QAccessibleInterface* CAccessibleWindow::focusChild() const
{
    QWidget* focus = widget()->focusWidget();
    return focus != nullptr ? QAccessible::queryAccessibleInterface(AccessibleEditor::told(focus)) : nullptr;
}

QObjectList CAccessibleWindow::members() const
{
    QObjectList members;
    const QWidgetList children = widget()->findChildren<QWidget*>(Qt::FindDirectChildrenOnly);
    for (QWidget* child : children) {
        if (child->isHidden() || child->isWindow())
            continue;
        // The view in the place of what it lies on.
        auto* view = child->findChild<CInfoView*>(QString(), Qt::FindDirectChildrenOnly);
        members.append(view != nullptr ? view : child);
    }
    if (auto* notice = widget()->findChild<CNotice*>(QString(), Qt::FindDirectChildrenOnly))
        members.append(notice);
    return members;
}
