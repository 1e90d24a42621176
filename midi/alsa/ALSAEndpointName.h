#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QList>
#include <QString>
#include <QStringList>

/// Whether a name holds the device's. A sequencer client is the device when its own name does, or the long name of its
/// sound card, which the kernel makes up as "<maker> <product> at <place>": a product string may come without its
/// maker.
[[nodiscard]] bool holdsDeviceName(const QByteArray& name);

/// The endpoint names of the device's ports of one direction, in their order, so that the editor's port is found under
/// whatever names a kernel makes up.
///
/// Those forms have changed over the years: "<client> MIDI <n>", "<client> <jack>", or "<jack>" alone, each cut at 31
/// bytes, so that several ports can end up with one name; and devices differ in the number of their cables. What counts
/// is a port's own text, its name without leading repeats of the client's or the device's:
/// - one or two of the words "port", "midi", "in", "out", "input", "output" with a number say the port's number: it is
///   "Port<number>";
/// - a text that is cut off, or the text of another port of this direction too, says nothing: the port is "Port<n>", n
///   its place among all of the client's ports, counted from 1, unless another port has said that number;
/// - any other text is the name, and no text is the device's name;
/// - if all that makes no "Port3", the last port is it.
///
/// client      the client's name.
/// ports       the names of all of the client's ports, both directions, in port order.
/// direction   the places in ports of those to be named, ascending.
[[nodiscard]] QStringList deviceEndpointNames(const QByteArray& client, const QByteArrayList& ports,
                                              const QList<qsizetype>& direction);
