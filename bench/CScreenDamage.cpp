#include "bench/CScreenDamage.h"

#include <algorithm>

#include <poll.h>

#include <X11/extensions/Xdamage.h>

CScreenDamage::CScreenDamage(Display* display) : m_display(display)
{
    int firstError = 0;
    XDamageQueryExtension(display, &m_firstEvent, &firstError);
    XSelectInput(display, DefaultRootWindow(display), SubstructureNotifyMask);
    XDamageCreate(display, DefaultRootWindow(display), XDamageReportRawRectangles);
    XSync(display, False);
}

void CScreenDamage::wait(int timeout) const
{
    pollfd display{ConnectionNumber(m_display), POLLIN, 0};
    poll(&display, 1, timeout);
}

void CScreenDamage::take(const std::function<void(const XRectangle&)>& damaged)
{
    while (XPending(m_display) > 0) {
        XEvent event;
        XNextEvent(m_display, &event);
        if (event.type == ConfigureNotify)
            m_largestWindow = std::max(m_largestWindow, event.xconfigure.width * event.xconfigure.height);
        else if (event.type == CreateNotify)
            m_largestWindow = std::max(m_largestWindow, event.xcreatewindow.width * event.xcreatewindow.height);
        else if (event.type == m_firstEvent + XDamageNotify)
            damaged(reinterpret_cast<const XDamageNotifyEvent&>(event).area);
    }
}

int CScreenDamage::largestWindow() const
{
    return m_largestWindow;
}
