#pragma once

#include <QtGlobal>

class QWindow;

/// What an X server has to be asked past the toolkit. GUI thread, while the application object lives; each waits for
/// the server's answer.
namespace XServer
{
/// Asks the window manager to give the window the focus because the user wants it. The toolkit itself tells the time of
/// the last event in its own windows, which is earlier than what the user did in others since, so that window managers
/// refuse.
///
/// time  the server's, in milliseconds, at which the user asked; 0 for now.
/// Nothing happens where the windows are not those of an X server.
void giveFocus(const QWindow& window, quint32 time);

/// Whether a program holds the clipboard; true where that is not an X server's. The toolkit tells nothing of it without
/// loading every plugin for pictures first.
[[nodiscard]] bool isClipboardHeld();
} // namespace XServer
