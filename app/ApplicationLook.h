#pragma once

/// Has all windows of this program look like the editor's: style, the skin's fonts, icon. Once, when the application
/// object exists and no window does. GUI thread only.
void applyApplicationLook();
