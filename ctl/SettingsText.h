#pragma once

#include "ctl/SettingsTable.h"

#include <QJsonArray>
#include <QList>
#include <QString>

class CConsole;

/// A setting that two tables have differently. Nothing: not given there.
struct SettingDifference
{
    std::size_t knob = 0; ///< counted from 0
    std::size_t setting = 0;
    std::optional<int> first;
    std::optional<int> second;
};

/// Tables and their differences for people and for programs. Both count knobs and channels from 1.
namespace SettingsText
{
/// In columns on a terminal, else with a tab between two values. "-" is a value that is not given.
void printTable(CConsole& console, const SettingsTable& table);

/// An object a knob; a value that is not given is missing.
[[nodiscard]] QJsonArray toJson(const SettingsTable& table);

[[nodiscard]] QList<SettingDifference> differences(const SettingsTable& first, const SettingsTable& second);

/// Such as "3.cc: 74, 10".
[[nodiscard]] QString toText(const SettingDifference& difference);
[[nodiscard]] QJsonArray toJson(const QList<SettingDifference>& differences);

/// "-" for a value that is not given.
[[nodiscard]] QString valueText(std::size_t setting, std::optional<int> value);

/// Knobs, counted from 0, as people count them: "1, 2, 5".
[[nodiscard]] QString knobsInWords(const QList<int>& knobs);
[[nodiscard]] QJsonArray knobsToJson(const QList<int>& knobs);

/// One document, with its line break.
[[nodiscard]] QString document(const QJsonObject& object);
[[nodiscard]] QString line(const QJsonObject& object);
} // namespace SettingsText
