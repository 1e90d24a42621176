#pragma once

#include "app/common/CMutex.h"
#include "simulator/device/CDeviceTransport.h"

#include <QList>

/// Keeps what a device sent.
class CRecordingTransport : public CDeviceTransport
{
  public:
    void deviceSent(CSimulatedDevice&, const QByteArray& packet) override
    {
        const std::scoped_lock lock(m_mutex);
        m_packets += packet;
    }

    void deviceUnplugged(CSimulatedDevice&) override
    {
        const std::scoped_lock lock(m_mutex);
        ++m_unplugged;
    }

    /// What was sent since the last call, in packets.
    [[nodiscard]] QList<QByteArray> take()
    {
        const std::scoped_lock lock(m_mutex);
        return std::exchange(m_packets, {});
    }

    [[nodiscard]] int unplugged() const
    {
        const std::scoped_lock lock(m_mutex);
        return m_unplugged;
    }

  private:
    mutable CMutex m_mutex;
    QList<QByteArray> m_packets;
    int m_unplugged = 0;
};
