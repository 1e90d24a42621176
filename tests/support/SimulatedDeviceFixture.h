#pragma once

#include "simulator/device/CSimulatedDevice.h"
#include "simulator/transports/CSimulatedSystem.h"

/// An empty simulated MIDI system for one test, with a device that may be plugged in; empty again afterwards.
struct SimulatedDeviceFixture
{
    SimulatedDeviceFixture()
    {
        CSimulatedSystem::instance().reset();
    }

    ~SimulatedDeviceFixture()
    {
        CSimulatedSystem::instance().reset();
    }

    SimulatedDeviceFixture(const SimulatedDeviceFixture&) = delete;
    SimulatedDeviceFixture& operator=(const SimulatedDeviceFixture&) = delete;

    void plug()
    {
        CSimulatedSystem::instance().plug(device);
    }

    /// What the editor sent, as hexadecimal text, oldest first.
    [[nodiscard]] static QStringList sent()
    {
        QStringList texts;
        const QList<SentPacket> packets = CSimulatedSystem::instance().packets();
        for (const SentPacket& packet : packets)
            texts.append(QString::fromLatin1(packet.bytes.toHex()));
        return texts;
    }

    static void forgetSent()
    {
        CSimulatedSystem::instance().clearPackets();
    }

    CSimulatedDevice device;
};
