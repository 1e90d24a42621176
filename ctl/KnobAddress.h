#pragma once

#include "ctl/SettingsTable.h"

#include <QString>

#include <vector>

/// Settings as people name them on a command line: "3", "3.cc", "1-4.channel", "all.max". Knobs count from 1.
struct KnobAddress
{
    std::size_t firstKnob = 0; ///< counted from 0, as everywhere else
    std::size_t lastKnob = 0;
    std::vector<std::size_t> settings; ///< all of them where none was named
    bool isWholeKnob = true;
};

namespace KnobAddresses
{
/// Why a text could not be understood, in one line without the program's name; empty for success.
using Error = QString;

[[nodiscard]] Error parse(const QString& text, KnobAddress* address);

/// "ADDRESS.SETTING=VALUE", put into the table; a later one replaces an earlier one.
[[nodiscard]] Error parseAssignment(const QString& text, SettingsTable* table);
} // namespace KnobAddresses
