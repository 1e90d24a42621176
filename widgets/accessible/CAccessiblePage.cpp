#include "widgets/accessible/CAccessiblePage.h"

#include "widgets/CControlView.h"
#include "widgets/CKnobLED.h"
#include "widgets/CSlideEditor.h"

CAccessiblePage::CAccessiblePage(CControlView* page) : CAccessibleGroup(page, QAccessible::Grouping) {}

CControlView* CAccessiblePage::page() const
{
    return static_cast<CControlView*>(widget());
}

QString CAccessiblePage::text(QAccessible::Text which) const
{
    return which == QAccessible::Name ? page()->name() : CAccessibleGroup::text(which);
}

QAccessible::State CAccessiblePage::state() const
{
    QAccessible::State state = CAccessibleGroup::state();
    state.focusable = !page()->isCovered();
    state.offscreen = page()->isCovered();
    state.selectable = true;
    state.selected = page()->isMarked() && page()->selectedEditor() == nullptr;
    return state;
}

QStringList CAccessiblePage::actionNames() const
{
    return {setFocusAction()};
}

void CAccessiblePage::doAction(const QString& name)
{
    if (name == setFocusAction() && !page()->isCovered())
        page()->goTo();
}

QObjectList CAccessiblePage::members() const
{
    QObjectList members{page()->findChild<CKnobLED*>()};
    const QList<CSlideEditor*> editors = page()->editorsFromTheTop();
    for (CSlideEditor* editor : editors)
        members.append(editor);
    return members;
}
