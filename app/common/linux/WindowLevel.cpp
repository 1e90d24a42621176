#include "app/common/WindowLevel.h"

#include <QWindow>

void setWindowLevel(QWindow* window, bool onTop)
{
    // On the native window, not the widget: a widget would be hidden and created anew for it.
    window->setFlag(Qt::WindowStaysOnTopHint, onTop);
}
