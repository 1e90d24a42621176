#pragma once

#include "tests/faults/FaultFixture.h"

class CMessageBoxAnswer;

/// What a user can do that sends messages: how many, one a knob from the first one on.
struct EditorCommand
{
    const char* name;
    int firstKnob;
    int messages;
    /// boxes   answers the question that may come.      file   a settings file to open.
    void (*run)(FaultFixture& fixture, CMessageBoxAnswer& boxes, const QString& file);
};

extern const std::array<EditorCommand, 5> k_editorCommands;

/// A row for each message of each command: "command", the index above, and "n", the message's number from 1 on.
void addCommandRows();
