#pragma once

#include "midi/CMIDIInput.h"

#include <QByteArray>

/// Input port of the simulated system.
class CMIDIInput_Simulated : public CMIDIInput
{
  public:
    CMIDIInput_Simulated() = default;
    ~CMIDIInput_Simulated() override;

    int initialize() override;
    [[nodiscard]] bool openPort(int index) override;
    void closePort() override;
    void readMessageFromBuffer(unsigned char* data, int* size) override;

    /// Stores one packet as records and wakes the delivery thread; one thread at a time.
    void receive(const QByteArray& packet);

    /// Faults of the system, of which the observer is told on the delivery thread.
    void overrun();
    void endReception();
};
