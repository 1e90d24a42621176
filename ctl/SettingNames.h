#pragma once

#include "device/DeviceParams.h"

#include <QJsonValue>
#include <QStringList>

#include <array>
#include <optional>
#include <span>

/// How people write a setting and its values. A setting is named by its place in k_settingParams.
struct SettingName
{
    ParamCategory category;
    const char* name;
    int first;                               ///< what a value of 0 is called
    std::span<const char* const> valueNames; ///< none: its values are mere numbers
};

inline constexpr std::array k_ledNames{"ascent", "descend", "concave", "convex"};

inline constexpr std::array k_settingNames{
    SettingName{k_ccNumCategory, "cc", 0, {}},
    SettingName{k_midiChCategory, "channel", 1, {}}, // as the editor shows it
    SettingName{k_maxCategory, "max", 0, {}},
    SettingName{k_minCategory, "min", 0, {}},
    SettingName{k_ledTypeCategory, "led", 0, k_ledNames},
};
static_assert(std::ranges::equal(k_settingNames, k_settingParams, {}, &SettingName::category, &SettingParam::category));

namespace SettingNames
{
[[nodiscard]] QString nameOf(std::size_t setting);

/// As people read it: a name where there is one, else the number as it is counted.
[[nodiscard]] QString valueText(std::size_t setting, int value);
[[nodiscard]] QJsonValue valueJson(std::size_t setting, int value);

/// Nothing: no value of this setting.
[[nodiscard]] std::optional<int> valueOf(std::size_t setting, const QString& text);

/// What valueOf() takes, such as "1 to 16".
[[nodiscard]] QString valuesInWords(std::size_t setting);

/// All names, in their order.
[[nodiscard]] QStringList all();
} // namespace SettingNames

/// Of the names the one that was probably meant; empty when none is near.
[[nodiscard]] QString nearName(const QString& typed, const QStringList& names);

/// " Did you mean "NAME"?", or nothing.
[[nodiscard]] QString nearNameQuestion(const QString& typed, const QStringList& names);
