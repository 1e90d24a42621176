#pragma once

#include <QtGlobal>

class QWindow;

namespace XWindowActivation
{
/// Asks the X window manager to give the window the focus because the user wants it. The toolkit itself tells the time
/// of the last event in its own windows, which is earlier than what the user did in others since, so that window
/// managers refuse.
///
/// time  the X server's, in milliseconds, at which the user asked; 0 for now.
/// Nothing happens where the windows are not those of an X server.
void ask(const QWindow& window, quint32 time);
} // namespace XWindowActivation
