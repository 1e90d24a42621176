#include "midi/PortName.h"

#include "app/common/Constants.h"

QString getPortName(MIDIEndpoint endpoint, int index)
{
    if (endpoint == 0)
        return {};
    QString name = MIDIPlatform::endpointName(endpoint);
    if (name.isNull())
        name = QStringLiteral("Port #%1").arg(index);
    QString device = MIDIPlatform::deviceName(endpoint);
    if (device.isNull())
        device = QStringLiteral("Unknown Device");
    return name.contains(device, Qt::CaseSensitive) ? name : device + k_space + name;
}
