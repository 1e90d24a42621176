#include "app/CListening.h"

#include "app/AccessibleEditor.h"
#include "app/CMainWindow.h"
#include "app/CNotice.h"
#include "widgets/CKnobLED.h"
#include "widgets/accessible/CRingWatch.h"

#include <QTimer>

#include <chrono>

namespace
{
/// In which a menu's end is told: the focus goes back, and the window becomes the active one again. Either cuts off
/// what a screen reader is saying.
constexpr std::chrono::milliseconds k_menuEnd{200};
} // namespace

CListening::CListening(CMainWindow* window) : QObject(window), m_window(window)
{
    QAccessible::installActivationObserver(this);
    CListening::accessibilityActiveChanged(QAccessible::isActive());
}

CListening::~CListening()
{
    QAccessible::removeActivationObserver(this);
}

void CListening::say(const QString& sentence)
{
    if (!m_isActive)
        return;
    delete m_notice;
    m_notice = new CNotice(m_window, sentence);
    QTimer::singleShot(k_menuEnd, m_notice.data(), &CNotice::tell);
}

void CListening::accessibilityActiveChanged(bool isActive)
{
    m_isActive = isActive;
    qDeleteAll(m_window->findChildren<CRingWatch*>());
    delete m_notice;
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
