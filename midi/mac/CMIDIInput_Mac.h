#pragma once

#include "midi/CMIDIInput.h"

#include <CoreMIDI/CoreMIDI.h>

/// An input port on CoreMIDI. Every object has a MIDI client of its own, from initialize() to its destruction.
class CMIDIInput_Mac : public CMIDIInput
{
  public:
    CMIDIInput_Mac();

    /// Waits for a read procedure that is still running.
    ~CMIDIInput_Mac() override;

    /// Creates ring, thread and client. The result is CoreMIDI's status; without a client no port can be opened.
    int initialize() override;

    /// The index is CoreMIDI's at the time of the call, so it is used in the same go in which the sources were listed.
    [[nodiscard]] bool openPort(int index) override;
    void closePort() override;
    void readMessageFromBuffer(unsigned char* data, int* size) override;

    /// CoreMIDI's receive thread calls this with what arrived: one record a packet, then one wake-up.
    /// srcConnRefCon is the input object; nothing happens when that has gone, since the system may still be calling, or
    /// about to, when a port has been disposed. Copies and returns; never allocates.
    static void midiReadProc(const MIDIPacketList* packets, void* readProcRefCon, void* srcConnRefCon);

  private:
    void receive(const MIDIPacketList& packets);

    MIDIClientRef m_client = 0;
    MIDIPortRef m_port = 0;
    MIDIEndpointRef m_source = 0; ///< 0 unless connected to the port
};
