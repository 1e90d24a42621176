#pragma once

#include "device/CMemAPIProxy.h"
#include "device/CMemAPIWrapper.h"
#include "simulator/device/CSimulatedDevice.h"
#include "simulator/transports/CSimulatedSystem.h"

/// A device memory with a simulated device for the widgets under test. Its input and output are open, but edits are
/// only stored until the memory is connected.
class BoundMemory
{
  public:
    static constexpr int k_id = 1100; ///< the CC number of knob 0

    BoundMemory()
    {
        CSimulatedSystem::instance().plug(m_device);
        m_memory.initialize();
        m_memory.setParam(k_id, 0);
    }

    ~BoundMemory()
    {
        CSimulatedSystem::instance().reset();
    }

    BoundMemory(const BoundMemory&) = delete;
    BoundMemory& operator=(const BoundMemory&) = delete;

    void bind(CMemAPIProxy& widget)
    {
        widget.setControllerID(k_id);
        widget.initialize(&m_memory);
        widget.setPortName(k_jxEditorPortName);
    }

    /// From now on edits go to the device.
    void connect()
    {
        m_memory.setConnected(true);
    }

    /// From now on edits are taken back: the device is thought to be there, but sends fail.
    void loseDevice()
    {
        connect();
        m_device.unplug();
    }

    [[nodiscard]] int value() const
    {
        return m_memory.getParam(k_id);
    }

    /// A change that the widget does not make itself.
    void change(int value)
    {
        m_memory.setParam(k_id, value);
        m_memory.notifyParamChabgedById(k_id);
    }

    /// Stored without telling anyone.
    void setValue(int value)
    {
        m_memory.setParam(k_id, value);
    }

    [[nodiscard]] QList<QByteArray> received() const
    {
        return m_device.received();
    }

  private:
    CSimulatedDevice m_device;
    CMemAPIWrapper m_memory;
};
