#pragma once

#include <array>

/// Which of the six states of a knob's LED ring stands for a value: one row a value range, both ends included.
/// The ranges are uneven: the ends and, for concave and convex, the middle have states of their own.

inline constexpr int k_numOfLEDStates = 6;

inline constexpr std::array<int, 6> k_minAscentDescendParam{0, 1, 33, 64, 95, 127};
inline constexpr std::array<int, 6> k_maxAscentDescendParam{0, 32, 63, 94, 126, 127};
inline constexpr std::array<int, 6> k_ascentIndex{0, 1, 2, 3, 4, 5};
inline constexpr std::array<int, 6> k_descendIndex{5, 4, 3, 2, 1, 0};

inline constexpr std::array<int, 11> k_minConcaveConvexParam{0, 1, 17, 33, 49, 64, 65, 79, 95, 111, 127};
inline constexpr std::array<int, 11> k_maxConcaveConvexParam{0, 16, 32, 48, 63, 64, 78, 94, 110, 126, 127};
inline constexpr std::array<int, 11> k_concaveIndex{5, 4, 3, 2, 1, 0, 1, 2, 3, 4, 5};
inline constexpr std::array<int, 11> k_convexIndex{0, 1, 2, 3, 4, 5, 4, 3, 2, 1, 0};

/// ledType   a LEDType.      value   the knob's, 0 to 127.
/// 0 for any other type or value.
[[nodiscard]] int knobLEDIndex(int ledType, int value);
