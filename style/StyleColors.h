#pragma once

#include <QColor>

/// The style's colours by role, all opaque. The names are fixed, the two with "Backgorund" too.

inline constexpr QColor colorPaletteBase{204, 204, 204};
inline constexpr QColor colorPaletteText{55, 55, 55};
inline constexpr QColor colorPaletteHighlight{55, 55, 55};
inline constexpr QColor colorPaletteHighlightedText{255, 255, 255};
inline constexpr QColor colorPaletteFrame{255, 255, 255};

inline constexpr QColor colorScrollBarBackground{55, 55, 55};
inline constexpr QColor colorScrollBarForeground{138, 137, 137};

inline constexpr QColor colorListViewLine{153, 153, 153};

inline constexpr QColor colorMenuBarEnableBackgorund{255, 255, 255};
inline constexpr QColor colorMenuBarEnableText{0, 0, 0};
inline constexpr QColor colorMenuBarDisableBackgorund{255, 255, 255};
inline constexpr QColor colorMenuBarDisableText{102, 102, 102};
inline constexpr QColor colorMenuBarSelectBackground{255, 255, 255};
inline constexpr QColor colorMenuBarSelectText{0, 233, 241};

inline constexpr QColor colorMenuEnableBackground{204, 204, 204};
inline constexpr QColor colorMenuEnableText{55, 55, 55};
inline constexpr QColor colorMenuDisableBackground{204, 204, 204};
inline constexpr QColor colorMenuDisableText{153, 153, 153};
inline constexpr QColor colorMenuSunkenBackground{55, 55, 55};
inline constexpr QColor colorMenuSunkenText{0, 204, 0};
inline constexpr QColor colorMenuSelectBackground{55, 55, 55};
inline constexpr QColor colorMenuSelectText{255, 255, 255};
