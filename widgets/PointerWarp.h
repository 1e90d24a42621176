#pragma once

class QPoint;

/// Placing the pointer by program. GUI thread only, while the application object lives.
namespace PointerWarp
{
/// Whether the present window system lets a program place the pointer.
[[nodiscard]] bool isPossible();

/// Places the pointer, in global logical pixels, and has the next movement reported at once.
void moveTo(const QPoint& position);

/// Joins mouse and pointer (true) where a window system keeps them apart for a moment after a program has placed the
/// pointer, so that movements are reported at once. Without effect elsewhere.
void associateMouseAndMouseCursorPosition(bool joined);
} // namespace PointerWarp
