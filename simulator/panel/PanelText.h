#pragma once

#include "simulator/device/KnobSettings.h"

#include <QByteArray>
#include <QString>

/// What the panel says, in the editor's way of counting: knobs and channels from 1.
namespace PanelText
{
/// Such as "CC 10, channel 1, max 127, min 0, LED concave".
[[nodiscard]] QString settings(const KnobSettings& settings);

/// Such as "Knob 3: CC 10, channel 1, value 64".
/// knob   0 to 7.
[[nodiscard]] QString turned(int knob, const KnobSettings& settings, int value);

/// What a message says by itself, such as "Knob 3: value 64".
[[nodiscard]] QString meaning(const QByteArray& message);
} // namespace PanelText
