#pragma once

#include <QByteArray>

/// One raw MIDI device, "hw:0,0,2", behind the snd_rawmidi_* functions that the command-line device calls. A program
/// that links it has none of the system's.
namespace FakeRawMIDI
{
/// Nothing waits in either direction, nothing fails, all is taken.
void reset();

/// What the other side sends, and takes out of what was written.
void send(const QByteArray& bytes);
[[nodiscard]] QByteArray taken();

/// Bytes that the next writes take before there is no more room; a negative number for no limit.
void setRoom(int bytes);

/// Every read, or every write, gives this negative status from now on.
void failReading(int status);
void failWriting(int status);

/// Ports that are open now, an input and an output counted each.
[[nodiscard]] int openPorts();
} // namespace FakeRawMIDI
