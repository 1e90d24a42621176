#pragma once

class QWidget;

/// Font and window-level operations that every window of the editor uses. GUI thread only, while the application object
/// lives.
namespace Utilities
{
/// Makes the skin's three font families (k_fontGLT7Bold, k_fontGLT8, k_fontGLT10Bold) known to the application, from
/// the resource bundle `common_images`, which has to be registered before. A second call changes nothing.
/// false   a font file is missing or unreadable; the others are registered all the same.
[[nodiscard]] bool registerSkinFonts();

/// Gives the skin's fonts their exact sizes, without antialiasing, in the widget and everything below it.
///
/// The skin is laid out for 72 dots an inch, where a point is a pixel: the sizes are asked for in pixels, so that the
/// desktop's own resolution does not reach them.
///
/// A widget with a skin font of its own gets that font at its fixed size; one with any other font of its own is left
/// alone; one without a font of its own gets its parent's explicitly, if the parent has one, so that later changes of
/// the application's font do not reach it.
void adjustFont(QWidget* widget);

/// Keeps the widget's native window in front of all others, or lets it go. Nothing happens for a null widget or one
/// that has no native window yet.
void windowStaysOnTop(QWidget* widget, bool onTop);

/// Disables a widget whose skin has no picture for that, and fades it.
void disableVisibly(QWidget* widget);

/// Lets a dialog's native window be made on the screen of the window from which it is asked for. Left to itself the
/// toolkit makes it on the first screen, for that one's ratio, and takes it over to another only when it is shown; of
/// what was laid out and drawn by then, a part may stay as it was.
/// To be called before the dialog has a native window. The dialog counts as moved from then on, and the toolkit would
/// choose no place for it: WA_Moved is to be cleared once there is a native window, before the dialog is shown.
///
/// window   null: nothing happens.
void beginOnScreenOf(const QWidget* window, QWidget* dialog);

/// Has a dialog without a parent stand in front of the window from which it is asked for, also of one that is kept in
/// front, and stay there when that window is clicked. To be called before the dialog is shown; holds for a dialog of
/// the desktop's own that takes its place, too.
/// window   borrowed, and outlives the dialog. Nothing happens for null or one that has no native window yet.
void standInFrontOf(const QWidget* window, QWidget* dialog);
} // namespace Utilities
