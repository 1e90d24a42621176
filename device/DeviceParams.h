#pragma once

#include <QMap>
#include <QString>
#include <QVariant>

#include <array>

/// A knob's parameter list: the decimal text of its five setting ids -> int.
/// A whole parameter list: the decimal text of the knob number -> that knob's parameter list.
using ParamList = QMap<QString, QVariant>;

/// Knobs are numbered 0 to 7, in ids, list keys, on the wire and on the screen.
inline constexpr int k_numOfKnobs = 8;

/// A parameter id is category + knob.
enum ParamCategory : int
{
    k_knobValueCategory = 1000, ///< current position, reported by the device, never sent: 0 to 127
    k_ccNumCategory = 1100,     ///< control change number: 0 to 127
    k_midiChCategory = 1200,    ///< MIDI channel, 0 for the first: 0 to 15
    k_maxCategory = 1300,       ///< value at the knob's top end: 0 to 127
    k_minCategory = 1400,       ///< value at the knob's bottom end: 0 to 127
    k_ledTypeCategory = 1500,   ///< how the LED ring shows the value: a LEDType
};

enum LEDType : int
{
    k_ledAscent = 0,
    k_ledDescend = 1,
    k_ledConcave = 2,
    k_ledConvex = 3,
};

/// The five settings of a knob in the order of their ids, which is also their order on the wire.
inline constexpr std::array<int, 5> k_settingCategories{k_ccNumCategory, k_midiChCategory, k_maxCategory, k_minCategory,
                                                        k_ledTypeCategory};

/// The highest value of each setting, in the same order; the lowest is 0.
inline constexpr std::array<int, 5> k_highestSettings{127, 15, 127, 127, k_ledConvex};

/// The factory preset: one row a knob, in the order of k_settingCategories.
inline constexpr std::array<std::array<int, 5>, k_numOfKnobs> k_defaultParamList{{
    {74, 0, 127, 0, k_ledAscent},
    {71, 0, 127, 0, k_ledAscent},
    {10, 0, 127, 0, k_ledConcave},
    {7, 0, 127, 0, k_ledAscent},
    {73, 0, 127, 0, k_ledAscent},
    {72, 0, 127, 0, k_ledAscent},
    {91, 0, 127, 0, k_ledAscent},
    {93, 0, 127, 0, k_ledAscent},
}};

[[nodiscard]] constexpr int knobOfParam(int id)
{
    return id % 100;
}

[[nodiscard]] constexpr bool isKnob(int knob)
{
    return knob >= 0 && knob < k_numOfKnobs;
}

/// Whether the id names one of the five settings of one of the eight knobs: the only ids of the settings table.
[[nodiscard]] bool isSettingParam(int id);

/// The list with nothing but settings of the device, each in its range: without other knobs, other ids and knobs that
/// have no settings. What is no number becomes 0, what is out of range the end that is nearer; the rest stays as it is.
[[nodiscard]] ParamList settingsOnly(const ParamList& wholeList);

/// The list with every entry of the other that it lacks, in its maps too; what it holds itself stays.
[[nodiscard]] ParamList completed(const ParamList& list, const ParamList& other);
