#pragma once

#include "app/common/Constants.h"
#include "device/CMemAPIProxy.h"
#include "device/CMemAPIWrapper.h"
#include "tests/support/SimulatedDeviceFixture.h"

/// A device memory with a simulated device. Its ports are open, but edits are only stored until it is connected.
struct MemoryRig : SimulatedDeviceFixture
{
    static constexpr int k_id = k_ccNumCategory; ///< of knob 0; its value is 0

    MemoryRig()
    {
        plug();
        memory.initialize();
        memory.setParam(k_id, 0);
    }

    void setFactorySettings()
    {
        for (int knob = 0; knob < k_numOfKnobs; ++knob) {
            for (const SettingParam& setting : k_settingParams)
                memory.setParam(setting.category + knob, setting.factory[static_cast<std::size_t>(knob)]);
        }
    }

    /// From now on edits go to the device.
    void connect()
    {
        memory.setConnected(true);
    }

    /// From now on edits are taken back: the device is thought to be there, but sends fail.
    void loseDevice()
    {
        connect();
        device.unplug();
    }

    /// Binds a proxy as the main window does.
    void bind(CMemAPIProxy& proxy, int id = k_id)
    {
        proxy.setControllerID(id);
        proxy.initialize(&memory);
        proxy.setPortName(k_jxEditorPortName);
    }

    [[nodiscard]] int value() const
    {
        return memory.getParam(k_id);
    }

    /// A change that the proxy does not make itself.
    void change(int value)
    {
        memory.setParam(k_id, value);
        memory.notifyParamChabgedById(k_id);
    }

    /// Stored without telling anyone.
    void setValue(int value)
    {
        memory.setParam(k_id, value);
    }

    [[nodiscard]] QList<QByteArray> received() const
    {
        return device.received();
    }

    CMemAPIWrapper memory;
};
