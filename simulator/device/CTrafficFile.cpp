#include "simulator/device/CTrafficFile.h"

#include "simulator/device/CSimulatedDevice.h"
#include "simulator/device/TrafficText.h"

CTrafficFile::CTrafficFile(CSimulatedDevice& device) : m_device(device) {}

CTrafficFile::~CTrafficFile()
{
    update();
}

bool CTrafficFile::open(const QString& path)
{
    m_file.setFileName(path);
    return m_file.open(QIODevice::WriteOnly | QIODevice::Text);
}

void CTrafficFile::update()
{
    const QList<Traffic> traffic = m_device.trafficSince(m_nextTraffic);
    if (traffic.isEmpty() || !m_file.isOpen())
        return;
    m_nextTraffic = traffic.last().number + 1;
    for (const Traffic& message : traffic)
        m_file.write(trafficText(message).toUtf8() + '\n');
    m_file.flush();
}
