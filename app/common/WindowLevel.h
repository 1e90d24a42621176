#pragma once

class QWindow;

/// Puts a native window in front of all others, or back among them, without hiding or re-creating it.
/// One implementation for each window system; the build chooses. GUI thread only.
void setWindowLevel(QWindow* window, bool onTop);
