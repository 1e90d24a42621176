#pragma once

#include "tests/app/EditorFixture.h"

#include <functional>

/// The editor under a fault: what its user sees, what went over the wire and what both sides hold.
struct FaultFixture : EditorFixture
{
    /// Starts the editor on the plugged device until the device has confirmed the connection; nothing is on record yet.
    void startConnected();

    /// The same with settings that are neither those at the start nor the factory preset's, and without keep messages
    /// but those at the start.
    void startEdited();

    /// Sends a keep message as the editor's thread does.
    void sendKeep() const;

    /// What the editor sent besides keep messages, as hexadecimal text, oldest first; with what was refused.
    [[nodiscard]] static QStringList commands();

    /// Whether the online mark is lit, or on its way to it.
    [[nodiscard]] bool isMarkLit() const;

    /// Turns knob 0 and waits until the editor shows it: everything that the device sent before has been dealt with.
    void waitForReports();

    /// What a user sees of a lost connection that had been confirmed.
    void verifyLost() const;

    /// Settings of which no knob has the factory preset's, different for each knob.
    [[nodiscard]] static KnobSettings stageSettings(int knob);
};

/// Messages as the device sends them and expects them, as hexadecimal text.
inline const QString k_startText = QStringLiteral("f043103e18050200f7");
inline const QString k_endText = QStringLiteral("f043103e18050202f7");
inline const QString k_requestAllText = QStringLiteral("f043303e180502007ff7");

/// The change-parameter message of a knob.
[[nodiscard]] QString changeText(int knob, const KnobSettings& settings);
