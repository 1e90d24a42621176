#pragma once

/// The style's small pictures, in XPM form: pass one to QImage. Logical pixels, two colours each.

/// Boxes of a tree's branches, 9 x 9.
extern const char* const list_close_image[];
extern const char* const list_open_image[];

/// Check indicators of a menu item, 5 x 5.
extern const char* const radio_image[];
extern const char* const radio_check_image[];

/// Arrows of a scroll bar: 10 x 7 up and down, 7 x 10 left and right; the twins are shown while pressed.
extern const char* const scrollbar_up_image[];
extern const char* const scrollbar_up_highlight_image[];
extern const char* const scrollbar_down_image[];
extern const char* const scrollbar_down_highlight_image[];
extern const char* const scrollbar_left_image[];
extern const char* const scrollbar_left_highlight_image[];
extern const char* const scrollbar_right_image[];
extern const char* const scrollbar_right_highlight_image[];
