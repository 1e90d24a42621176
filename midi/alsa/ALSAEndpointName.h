#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QString>

/// The endpoint name of a sequencer port: the port's name, or "Port<n>" where that name tells nothing but a number.
///
/// A kernel makes a port's name up from its client's, in a form that has changed over the years: "<client> MIDI <n>",
/// "<client> <jack>", or "<jack>" alone, each cut at 31 bytes, so that several ports can end up with one name. The same
/// cable of the same device shall be found under all of them. What counts is therefore the port's own text, its name
/// without leading repeats of the client's: where that is "MIDI <n>" or "Port <n>", or is cut off, or is the text of
/// another of the client's ports too, the endpoint is "Port<n>", n counted from 1 in port order.
///
/// client      the client's name, as the sequencer gives it.
/// ports       the names of all of the client's ports, in port order.
/// index       the port's place in ports.
[[nodiscard]] QString alsaEndpointName(const QByteArray& client, const QByteArrayList& ports, qsizetype index);
