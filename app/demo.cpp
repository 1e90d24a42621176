#include "app/RunEditor.h"
#include "simulator/CBenchPanel.h"
#include "simulator/CSimulatedDevice.h"
#include "simulator/CSimulatedSystem.h"

/// The editor with a simulated device inside the process: what a newcomer sees first, without MIDI or hardware.
int main(int argc, char** argv)
{
    CSimulatedDevice device;
    CSimulatedSystem::instance().plug(device);
    return runEditor(argc, argv, [&device] {
        auto panel = std::make_unique<CBenchPanel>(device);
        // Closing the editor ends the demo, whether or not the panel is still there.
        panel->setAttribute(Qt::WA_QuitOnClose, false);
        panel->show();
        return panel;
    });
}
