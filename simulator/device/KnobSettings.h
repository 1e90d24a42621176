#pragma once

#include <array>
#include <span>

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

/// What the device knows of a setting. It shares no row with the editor's table, so that neither can hide a mistake of
/// the other.
struct DeviceSetting
{
    int KnobSettings::*member;
    const char* command; ///< as it is typed
    const char* name;    ///< in a message in words
    const char* label;   ///< on the panel
    int last;            ///< value; the first is 0
    std::array<int, 8> factory;
    std::span<const char* const> valueNames; ///< none: its values are mere numbers
};

inline constexpr std::array k_ledTypeNames{"ascent", "descend", "concave", "convex"};

/// One row a setting, in the order in which they travel.
inline constexpr std::array k_deviceSettings{
    DeviceSetting{&KnobSettings::cc, "cc", "cc", "CC", 127, {74, 71, 10, 7, 73, 72, 91, 93}, {}},
    DeviceSetting{&KnobSettings::channel, "ch", "channel", "channel", 15, {0, 0, 0, 0, 0, 0, 0, 0}, {}},
    DeviceSetting{&KnobSettings::max, "max", "max", "max", 127, {127, 127, 127, 127, 127, 127, 127, 127}, {}},
    DeviceSetting{&KnobSettings::min, "min", "min", "min", 127, {0, 0, 0, 0, 0, 0, 0, 0}, {}},
    DeviceSetting{&KnobSettings::led, "led", "led", "LED", 3, {0, 0, 2, 0, 0, 0, 0, 0}, k_ledTypeNames},
};
static_assert(sizeof(KnobSettings) == k_deviceSettings.size() * sizeof(int), "every member has a row");

[[nodiscard]] consteval std::array<KnobSettings, 8> factorySettings()
{
    std::array<KnobSettings, 8> knobs;
    for (std::size_t knob = 0; knob < knobs.size(); ++knob) {
        for (const DeviceSetting& setting : k_deviceSettings)
            knobs[knob].*setting.member = setting.factory[knob];
    }
    return knobs;
}

/// How the device leaves the factory.
inline constexpr auto k_factorySettings = factorySettings();
