#pragma once

#include "midi/CCircularBuffer.h"
#include "midi/CMIDIInput.h"

#include <QByteArray>
#include <QByteArrayList>

/// An input port without a system: what a test hands to receive() comes in, on the test's own thread.
class CMIDITestInput : public CMIDIInput
{
  public:
    explicit CMIDITestInput(int ringSize = k_ringCapacity) : m_ringSize(ringSize) {}

    ~CMIDITestInput() override
    {
        CMIDITestInput::closePort();
    }

    int initialize() override
    {
        const int status = CMIDIInput::initialize();
        ring()->initialize(m_ringSize);
        return status;
    }

    bool openPort(int /*index*/) override
    {
        startDelivery();
        setConnected(true);
        return true;
    }

    void closePort() override
    {
        stopDelivery();
        setConnected(false);
    }

    void readMessageFromBuffer(unsigned char* data, int* size) override
    {
        readRecord(data, size);
    }

    /// One batch, as a system delivers it. The result is the number of records stored.
    int receive(const QByteArrayList& packets)
    {
        int stored = 0;
        for (const QByteArray& packet : packets)
            stored += write(packet) ? 1 : 0;
        wakeDelivery();
        return stored;
    }

    /// Stores a record without waking anybody.
    bool write(const QByteArray& packet)
    {
        return writeRecord(reinterpret_cast<const unsigned char*>(packet.constData()),
                           static_cast<quint16>(packet.size()));
    }

    using CMIDIInput::noteEnd;
    using CMIDIInput::noteOverrun;
    using CMIDIInput::ring;
    using CMIDIInput::wakeDelivery;
    using CMIDIInput::writeRecord;

  private:
    const int m_ringSize;
};
