#pragma once

#include <QStringList>

#include <memory>

class CMIDIInput;
class CMIDIOutput;

/// One MIDI source or destination of the system; 0 names none.
using MIDIEndpoint = quint32;

/// The platform contract: all that the editor asks of the system's MIDI service. Each program links exactly one
/// implementation, so that no caller knows which one it is.
///
/// Threads  GUI thread only.
/// Failure  a system without MIDI has no sources and no destinations, and prints nothing.
namespace MIDIPlatform
{
/// Lists the sources (ports that the editor can read from) anew and gives their number.
/// source() answers from this list until the next call, whatever comes or goes in the system meanwhile.
[[nodiscard]] int listSources();

/// Lists the destinations (ports that the editor can write to) anew and gives their number; see listSources().
[[nodiscard]] int listDestinations();

/// The system's sources or destinations of now. Counting lists nothing: every index goes on to mean the port that it
/// meant, though the count may be another one than the list's.
[[nodiscard]] int sourceCount();
[[nodiscard]] int destinationCount();

/// The source or destination at an index of the last list; 0 outside it, or before the first list.
[[nodiscard]] MIDIEndpoint source(int index);
[[nodiscard]] MIDIEndpoint destination(int index);

/// The endpoint's own name, without its device's; a null string when it has none.
[[nodiscard]] QString endpointName(MIDIEndpoint endpoint);

/// The name of the device that the endpoint belongs to; a null string when there is none.
[[nodiscard]] QString deviceName(MIDIEndpoint endpoint);

/// The names of the programs that have ports of their own just now, each once, without this one. Empty where the system
/// does not tell.
[[nodiscard]] QStringList otherPrograms();

/// What otherPrograms() calls this program elsewhere, where the system tells: the editor, until this says otherwise.
/// Called before anything else.
void setProgramName(const char* name);

/// A closed port object of this platform, never null; the caller calls initialize() next.
[[nodiscard]] std::unique_ptr<CMIDIInput> createInput();
[[nodiscard]] std::unique_ptr<CMIDIOutput> createOutput();
} // namespace MIDIPlatform
