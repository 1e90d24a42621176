#include "app/demo/MakePanel.h"

#include "simulator/device/CTrafficFile.h"
#include "simulator/panel/CDevicePanel.h"

#include <QScreen>
#include <QTimer>

#include <algorithm>
#include <chrono>

namespace
{
constexpr std::chrono::milliseconds k_logInterval{50};
constexpr QSize k_frame{8, 40}; // pixels, room for the panel's frame and title
} // namespace

std::unique_ptr<CDevicePanel> makePanel(CSimulatedDevice& device, CTrafficFile& log)
{
    auto panel = std::make_unique<CDevicePanel>(device);
    const QRect screen = panel->screen()->availableGeometry();
    panel->resize(panel->width(), std::min(panel->height(), screen.height() - 2 * k_frame.height()));
    panel->move(screen.right() - panel->width() - k_frame.width(), screen.top() + k_frame.height());
    panel->show();
    auto* timer = new QTimer(panel.get());
    QObject::connect(timer, &QTimer::timeout, panel.get(), [&log] { log.update(); });
    timer->start(k_logInterval);
    return panel;
}
