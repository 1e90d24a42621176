#pragma once

#include <array>

/// What the device keeps for one knob. Every value travels as one byte, 0 to 127.
struct KnobSettings
{
    int cc = 0;      ///< control change number that the knob sends
    int channel = 0; ///< MIDI channel, 0 for the first
    int max = 127;   ///< value at the knob's top end
    int min = 0;     ///< value at the knob's bottom end
    int led = 0;     ///< 0 ascent, 1 descend, 2 concave, 3 convex

    bool operator==(const KnobSettings&) const = default;
};

/// The five settings, named by their members, in the order in which they travel.
inline constexpr std::array<int KnobSettings::*, 5> k_settingOrder = {
    &KnobSettings::cc, &KnobSettings::channel, &KnobSettings::max, &KnobSettings::min, &KnobSettings::led};

/// How the device leaves the factory.
inline constexpr std::array<KnobSettings, 8> k_factorySettings = {{
    {74, 0, 127, 0, 0},
    {71, 0, 127, 0, 0},
    {10, 0, 127, 0, 2},
    {7, 0, 127, 0, 0},
    {73, 0, 127, 0, 0},
    {72, 0, 127, 0, 0},
    {91, 0, 127, 0, 0},
    {93, 0, 127, 0, 0},
}};
