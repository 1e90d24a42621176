#pragma once

#include <QTest>
#include <QWidget>

/// Shows a window and gives it the keyboard, which without a window manager nobody else does.
/// false: it did not become active in time.
[[nodiscard]] inline bool showActive(QWidget& window)
{
    window.show();
    window.activateWindow();
    return QTest::qWaitForWindowActive(&window);
}
