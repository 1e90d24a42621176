#pragma once

/// The ring of LEDs round a knob, as the device drives it.
///
/// The panel is the witness of the editor's rings, so it shares no table with them; a test holds the two together.
namespace LEDRing
{
inline constexpr int k_leds = 15;

/// How many of the LEDs are lit, from the left end on, always in threes.
/// ledType   0 ascent, 1 descend, 2 concave, 3 convex; 0 LEDs for any other.
/// value     the knob's, 0 to 127.
[[nodiscard]] int lit(int ledType, int value);
} // namespace LEDRing
