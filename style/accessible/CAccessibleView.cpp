#include "style/accessible/CAccessibleView.h"

#include "style/CInfoView.h"

CAccessibleView::CAccessibleView(CInfoView* view) : CAccessibleGroup(view, QAccessible::Dialog) {}

QAccessibleInterface* CAccessibleView::parent() const
{
    return QAccessible::queryAccessibleInterface(widget()->window());
}

QString CAccessibleView::text(QAccessible::Text which) const
{
    const QStringList lines = static_cast<CInfoView*>(widget())->lines();
    switch (which) {
    case QAccessible::Name:
        return lines.first();
    case QAccessible::Description:
        return lines.mid(1).join(QLatin1Char('\n'));
    default:
        return CAccessibleGroup::text(which);
    }
}

QObjectList CAccessibleView::members() const
{
    const QWidgetList children = widget()->findChildren<QWidget*>(Qt::FindDirectChildrenOnly);
    return {children.cbegin(), children.cend()};
}
