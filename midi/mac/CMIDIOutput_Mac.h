#pragma once

#include "midi/CMIDIOutput.h"

#include <CoreMIDI/CoreMIDI.h>

/// An output port on CoreMIDI. Every object has a MIDI client of its own, from initialize() to its destruction.
class CMIDIOutput_Mac : public CMIDIOutput
{
  public:
    CMIDIOutput_Mac() = default;
    ~CMIDIOutput_Mac() override;

    /// Creates the client. The result is CoreMIDI's status; without a client no port can be opened.
    int initialize() override;

    /// The index is CoreMIDI's at the time of the call, so it is used in the same go in which the destinations were
    /// listed.
    [[nodiscard]] bool openPort(int index) override;
    void closePort() override;
    [[nodiscard]] bool sendMessage(const unsigned char* data, int size) override;

  private:
    MIDIClientRef m_client = 0;
    MIDIPortRef m_port = 0;
    MIDIEndpointRef m_destination = 0;
};
