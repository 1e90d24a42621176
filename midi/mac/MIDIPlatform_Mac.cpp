#include "midi/MIDIPlatform.h"

#include "midi/mac/CFStringToQString.h"
#include "midi/mac/CMIDIInput_Mac.h"
#include "midi/mac/CMIDIOutput_Mac.h"

#include <CoreMIDI/CoreMIDI.h>

#include <QList>

namespace
{
QList<MIDIEndpoint>& sources()
{
    static QList<MIDIEndpoint> endpoints{};
    return endpoints;
}

QList<MIDIEndpoint>& destinations()
{
    static QList<MIDIEndpoint> endpoints{};
    return endpoints;
}

int list(QList<MIDIEndpoint>* endpoints, ItemCount count, MIDIEndpointRef (*endpoint)(ItemCount))
{
    endpoints->clear();
    for (ItemCount i = 0; i < count; ++i)
        endpoints->append(endpoint(i));
    return static_cast<int>(count);
}

// The object's kMIDIPropertyName; a null string when it has none.
QString nameOf(MIDIObjectRef object)
{
    CFStringRef name = nullptr;
    if (MIDIObjectGetStringProperty(object, kMIDIPropertyName, &name) != noErr || name == nullptr)
        return QString();
    QString text = CFStringToQString(name);
    CFRelease(name);
    return text;
}
} // namespace

int MIDIPlatform::listSources()
{
    return list(&sources(), MIDIGetNumberOfSources(), MIDIGetSource);
}

int MIDIPlatform::listDestinations()
{
    return list(&destinations(), MIDIGetNumberOfDestinations(), MIDIGetDestination);
}

int MIDIPlatform::sourceCount()
{
    return static_cast<int>(MIDIGetNumberOfSources());
}

int MIDIPlatform::destinationCount()
{
    return static_cast<int>(MIDIGetNumberOfDestinations());
}

MIDIEndpoint MIDIPlatform::source(int index)
{
    return sources().value(index);
}

MIDIEndpoint MIDIPlatform::destination(int index)
{
    return destinations().value(index);
}

QString MIDIPlatform::endpointName(MIDIEndpoint endpoint)
{
    return nameOf(endpoint);
}

QString MIDIPlatform::deviceName(MIDIEndpoint endpoint)
{
    MIDIEntityRef entity = 0;
    if (MIDIEndpointGetEntity(endpoint, &entity) != noErr || entity == 0)
        return QString();
    MIDIDeviceRef device = 0;
    if (MIDIEntityGetDevice(entity, &device) != noErr || device == 0)
        return QString();
    return nameOf(device);
}

std::unique_ptr<CMIDIInput> MIDIPlatform::createInput()
{
    return std::make_unique<CMIDIInput_Mac>();
}

std::unique_ptr<CMIDIOutput> MIDIPlatform::createOutput()
{
    return std::make_unique<CMIDIOutput_Mac>();
}
