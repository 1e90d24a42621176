#pragma once

#include <QMap>
#include <QString>
#include <QVariant>

#include <algorithm>
#include <array>
#include <functional>

/// A knob's parameter list: the decimal text of its setting ids -> int.
/// A whole parameter list: the decimal text of the knob number -> that knob's parameter list.
using ParamList = QMap<QString, QVariant>;

/// Knobs are numbered 0 to 7, in ids, list keys, on the wire and on the screen.
inline constexpr int k_numOfKnobs = 8;

/// A parameter id is category + knob.
enum ParamCategory : int
{
    k_knobValueCategory = 1000, ///< current position, reported by the device, never sent: 0 to 127
    k_ccNumCategory = 1100,     ///< control change number
    k_midiChCategory = 1200,    ///< MIDI channel, 0 for the first
    k_maxCategory = 1300,       ///< value at the knob's top end
    k_minCategory = 1400,       ///< value at the knob's bottom end
    k_ledTypeCategory = 1500,   ///< how the LED ring shows the value: a LEDType
};

enum LEDType : int
{
    k_ledAscent = 0,
    k_ledDescend = 1,
    k_ledConcave = 2,
    k_ledConvex = 3,
};

/// A setting: the ids that it has, its range and the factory preset.
struct SettingParam
{
    ParamCategory category;
    int highest;                           ///< value; the lowest is 0
    std::array<int, k_numOfKnobs> factory; ///< a value for each knob
};

/// What a knob holds, one row a setting, in the order of the ids, which is also the order on the wire. Lists, messages
/// and the knob pages have as many settings as there are rows.
inline constexpr std::array k_settingParams{
    SettingParam{k_ccNumCategory, 127, {74, 71, 10, 7, 73, 72, 91, 93}},
    SettingParam{k_midiChCategory, 15, {0, 0, 0, 0, 0, 0, 0, 0}},
    SettingParam{k_maxCategory, 127, {127, 127, 127, 127, 127, 127, 127, 127}},
    SettingParam{k_minCategory, 127, {0, 0, 0, 0, 0, 0, 0, 0}},
    SettingParam{k_ledTypeCategory, k_ledConvex, {0, 0, k_ledConcave, 0, 0, 0, 0, 0}},
};
inline constexpr std::size_t k_numOfSettings = k_settingParams.size();

/// The highest byte that is no status byte, which would break a message off.
inline constexpr int k_highestByte = 127;

// Lists are moved by position in the order of their keys, which are text: ids that all have four digits sort as
// numbers.
static_assert(std::ranges::adjacent_find(k_settingParams, std::ranges::greater_equal(), &SettingParam::category) ==
              k_settingParams.end());
static_assert(std::ranges::all_of(k_settingParams, [](const SettingParam& setting) {
    return setting.category > k_knobValueCategory && setting.category < 10000 && setting.category % 100 == 0;
}));
static_assert(std::ranges::all_of(k_settingParams, [](const SettingParam& setting) {
    const auto isInRange = [&](int value) { return value >= 0 && value <= setting.highest; };
    return setting.highest <= k_highestByte && std::ranges::all_of(setting.factory, isInRange);
}));

[[nodiscard]] consteval std::array<int, k_numOfSettings> categoriesOfSettings()
{
    std::array<int, k_numOfSettings> categories{};
    std::ranges::transform(k_settingParams, categories.begin(), &SettingParam::category);
    return categories;
}

/// The settings' categories, in the order of the table.
inline constexpr auto k_settingCategories = categoriesOfSettings();

[[nodiscard]] consteval std::array<std::array<int, k_numOfSettings>, k_numOfKnobs> presetsOfKnobs()
{
    std::array<std::array<int, k_numOfSettings>, k_numOfKnobs> presets{};
    for (std::size_t knob = 0; knob < presets.size(); ++knob)
        std::ranges::transform(k_settingParams, presets[knob].begin(),
                               [&](const SettingParam& setting) { return setting.factory[knob]; });
    return presets;
}

/// The factory preset: one row a knob, in the order of the table.
inline constexpr auto k_defaultParamList = presetsOfKnobs();

[[nodiscard]] constexpr int knobOfParam(int id)
{
    return id % 100;
}

[[nodiscard]] constexpr bool isKnob(int knob)
{
    return knob >= 0 && knob < k_numOfKnobs;
}

/// The text under which a knob's number or a parameter's id stands in lists: its decimal digits. Those of the device
/// are made once, since every report looks some of them up. Any thread.
[[nodiscard]] QString paramKey(int number);

/// Whether the id names a setting of one of the eight knobs: the only ids of the settings table.
[[nodiscard]] bool isSettingParam(int id);

/// The list with nothing but settings of the device, each in its range: without other knobs, other ids and knobs that
/// have no settings. What is no number becomes 0, what is out of range the end that is nearer; the rest stays as it is.
[[nodiscard]] ParamList settingsOnly(const ParamList& wholeList);

/// The list with every entry of the other that it lacks, in its maps too; what it holds itself stays.
[[nodiscard]] ParamList completed(const ParamList& list, const ParamList& other);
