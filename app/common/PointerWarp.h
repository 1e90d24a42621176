#pragma once

class QPoint;
class QString;

/// Placing the pointer by program. GUI thread only, while the application object lives.
namespace PointerWarp
{
/// Whether a window system lets a program place the pointer.
/// platform   Qt's name for it, as in QGuiApplication::platformName().
[[nodiscard]] bool isPossibleOn(const QString& platform);

/// Whether the present one does.
[[nodiscard]] bool isPossible();

/// Places the pointer, in global logical pixels, and has the next movement reported at once.
void moveTo(const QPoint& position);

/// Joins mouse and pointer (true) where a window system keeps them apart for a moment after a program has placed the
/// pointer, so that movements are reported at once. Without effect elsewhere.
void associateMouseAndMouseCursorPosition(bool joined);
} // namespace PointerWarp
