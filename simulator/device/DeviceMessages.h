#pragma once

#include "simulator/device/KnobSettings.h"

#include <QByteArray>
#include <QString>

/// The device's own idea of its messages. It shares no code with the editor's, so that neither can hide a mistake of
/// the other.
namespace DeviceMessages
{
enum class Type
{
    Start,
    Keep,
    End,
    ChangeParameter,
    NoticeValue,
    RequestAll,
    Other
};

/// What a message is; Other when any byte of it, or its length, is not as it should be.
[[nodiscard]] Type typeOf(const QByteArray& message);

[[nodiscard]] QByteArray start();
[[nodiscard]] QByteArray keep();
[[nodiscard]] QByteArray end();
[[nodiscard]] QByteArray requestAll();
[[nodiscard]] QByteArray changeParameter(int knob, const KnobSettings& settings);
[[nodiscard]] QByteArray noticeValue(int knob, int value);

/// Knob of a change-parameter or notice-value message, and what it says of the knob.
[[nodiscard]] int knobOf(const QByteArray& message);
[[nodiscard]] KnobSettings settingsOf(const QByteArray& changeParameter);
[[nodiscard]] int valueOf(const QByteArray& noticeValue);

/// A value by its name, "unknown" beyond the last one; a number where the setting's values have no names.
[[nodiscard]] QString valueInWords(const DeviceSetting& setting, int value);

/// A knob's settings, such as "cc 10, channel 0, max 127, min 0, led 2 (concave)".
[[nodiscard]] QString settingsInWords(const KnobSettings& settings);

/// The message in words, such as "notice value: knob 3, value 64".
[[nodiscard]] QString inWords(const QByteArray& message);
} // namespace DeviceMessages
