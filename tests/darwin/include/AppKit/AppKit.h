#pragma once

// The part of AppKit that app/common uses.

#include <cstdint>

using NSInteger = long;
using CGWindowLevel = std::int32_t;
using CGWindowLevelKey = std::int32_t;

inline constexpr CGWindowLevelKey kCGNormalWindowLevelKey = 4;
inline constexpr CGWindowLevelKey kCGModalPanelWindowLevelKey = 10;

extern "C" CGWindowLevel CGWindowLevelForKey(CGWindowLevelKey key);

__attribute__((objc_root_class))
@interface NSWindow
@property NSInteger level;
@end

__attribute__((objc_root_class))
@interface NSView
@property(readonly) NSWindow* window;
@end
