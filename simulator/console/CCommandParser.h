#pragma once

#include "simulator/device/KnobSettings.h"

#include <QByteArray>
#include <QString>

/// What a line typed for the simulated device asks for.
struct DeviceCommand
{
    enum class Action
    {
        Nothing,
        Turn,
        Set,
        Send,
        Show,
        Silent,
        Answer,
        Unplug,
        Help,
        Quit
    };

    Action action = Action::Nothing;
    int knob = 0;                         ///< of Turn and Set, 0 to 7
    int KnobSettings::*setting = nullptr; ///< of Set
    int value = 0;                        ///< of Turn and Set, in its range
    QByteArray bytes = {};                ///< of Send, at least one
};

/// Reads the commands of the command-line device. Whatever the line holds, the result is a command that can be
/// carried out as it stands, or one line that says what is wrong with it.
class CCommandParser
{
  public:
    struct Result
    {
        DeviceCommand command; ///< Nothing when there is an error
        QString error;         ///< empty when the line was understood; printable, without a line break
    };

    /// line   one line, with or without its line break; an empty one asks for nothing.
    [[nodiscard]] static Result parse(const QByteArray& line);

    /// All commands with a word on each, for the user.
    [[nodiscard]] static QString help();
};
