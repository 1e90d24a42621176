#include "app/CListening.h"

#include "app/AccessibleEditor.h"
#include "app/CMainWindow.h"
#include "widgets/CKnobLED.h"
#include "widgets/accessible/CRingWatch.h"

CListening::CListening(CMainWindow* window) : QObject(window), m_window(window)
{
    QAccessible::installActivationObserver(this);
    CListening::accessibilityActiveChanged(QAccessible::isActive());
}

CListening::~CListening()
{
    QAccessible::removeActivationObserver(this);
}

void CListening::say(QWidget* control, const QString& what)
{
    if (!QAccessible::isActive())
        return;
    if (m_described && m_described != control)
        m_described->setAccessibleDescription({});
    m_described = control;
    m_described->setAccessibleDescription(what);
}

void CListening::accessibilityActiveChanged(bool isActive)
{
    qDeleteAll(m_window->findChildren<CRingWatch*>());
    if (!isActive)
        return;
    const QList<CKnobLED*> rings = m_window->findChildren<CKnobLED*>();
    for (CKnobLED* ring : rings) {
        auto* watch = new CRingWatch(ring);
        connect(watch, &CRingWatch::valueReported, &AccessibleEditor::tellValue);
        m_window->initializeSubController(ring);
        watch->registerObserverToMemAPI();
    }
}
