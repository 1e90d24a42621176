#pragma once

#include "device/DeviceParams.h"

#include <QList>

#include <array>
#include <optional>

/// The settings of eight knobs, in the order of k_settingParams, as the device counts them. Nothing: not given.
using KnobSettingsRow = std::array<std::optional<int>, k_numOfSettings>;
using SettingsTable = std::array<KnobSettingsRow, k_numOfKnobs>;

[[nodiscard]] constexpr int paramIdOf(std::size_t knob, std::size_t setting)
{
    return k_settingParams[setting].category + int(knob);
}

[[nodiscard]] SettingsTable factoryTable();

/// The first with what the second gives.
[[nodiscard]] KnobSettingsRow overlaid(const KnobSettingsRow& row, const KnobSettingsRow& given);

/// The knobs, counted from 0, of which a setting is given that is held otherwise.
[[nodiscard]] QList<int> knobsThatDiffer(const SettingsTable& given, const SettingsTable& held);

[[nodiscard]] SettingsTable tableOf(const ParamList& list);
