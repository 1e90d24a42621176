#pragma once

#include <QLatin1StringView>

/// What the running editor is called on the session bus, and what it offers there besides the desktop's own interface:
/// the device that it is connected with, for programs that must not shake hands beside it.
///
/// A knob is 0 to 7; its settings are a byte each, 0 to 127, as on the wire and in its order.
///
///     Read() -> ay                 all settings as the editor shows them, knob by knob
///     Ask() -> ay                  the same, after the device has said them anew
///     Write(i knob, ay settings)   an edit; k_unchanged leaves a setting as it is
///     Watch()                      from now on, until it leaves the bus, the caller gets the signals
///
///     Turned(i knob, i value)      the knob stands there now
///     Changed(i knob, ay settings) the knob has these settings now
///     Lost()                       the device does not answer any more
///
/// Arguments that are no knob or no value give the bus's own InvalidArgs, and change nothing.
namespace EditorBus
{
inline constexpr QLatin1StringView k_name("org.ktzjx.Editor");
inline constexpr QLatin1StringView k_path("/org/ktzjx/Editor");
inline constexpr QLatin1StringView k_devicePath("/org/ktzjx/Editor/Device");
inline constexpr QLatin1StringView k_deviceInterface("org.ktzjx.Editor.Device");

inline constexpr unsigned char k_unchanged = 255;

inline constexpr QLatin1StringView k_busyError("org.ktzjx.Editor.Error.Busy"); ///< with a question, dialog or menu
inline constexpr QLatin1StringView k_noDeviceError("org.ktzjx.Editor.Error.NoDevice"); ///< not connected, or not yet
inline constexpr QLatin1StringView k_lostError("org.ktzjx.Editor.Error.Lost");         ///< just now
inline constexpr QLatin1StringView k_silentError("org.ktzjx.Editor.Error.Silent");     ///< a device, when it was asked

/// The bus's own, for one who does not answer in time.
inline constexpr QLatin1StringView k_noReplyError("org.freedesktop.DBus.Error.NoReply");
} // namespace EditorBus
