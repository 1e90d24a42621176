#include "app/common/WindowLevel.h"

#include <QWindow>

#import <AppKit/AppKit.h>

void setWindowLevel(QWindow* window, bool onTop)
{
    // The modal panel's level, above floating panels too.
    NSView* view = reinterpret_cast<NSView*>(window->winId());
    view.window.level = CGWindowLevelForKey(onTop ? kCGModalPanelWindowLevelKey : kCGNormalWindowLevelKey);
}
