#pragma once

#include "app/common/Constants.h"
#include "device/CMemAPIProxy.h"
#include "device/CMemAPIWrapper.h"
#include "simulator/device/CSimulatedDevice.h"
#include "simulator/transports/CSimulatedSystem.h"

/// A device memory with the factory settings, and the device that it sends every edit to.
class ConnectedMemory
{
  public:
    ConnectedMemory()
    {
        CSimulatedSystem::instance().reset();
        CSimulatedSystem::instance().plug(device);
        memory.initialize();
        for (int knob = 0; knob < k_numOfKnobs; ++knob) {
            for (std::size_t i = 0; i < k_settingCategories.size(); ++i)
                memory.setParam(k_settingCategories[i] + knob, k_defaultParamList[static_cast<std::size_t>(knob)][i]);
        }
        memory.setConnected(true);
    }

    /// Binds a proxy as the main window does.
    void bind(CMemAPIProxy& proxy, int id)
    {
        proxy.setControllerID(id);
        proxy.initialize(&memory);
        proxy.setPortName(k_jxEditorPortName);
    }

    CSimulatedDevice device;
    CMemAPIWrapper memory;
};
