#include "midi/MIDIPlatform.h"

#include "midi/mac/CMIDIInput_Mac.h"
#include "midi/mac/CMIDIOutput_Mac.h"
#include "midi/mac/CPortList_Mac.h"

namespace
{
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
    return CPortList_Mac::sources().refresh();
}

int MIDIPlatform::listDestinations()
{
    return CPortList_Mac::destinations().refresh();
}

int MIDIPlatform::sourceCount()
{
    return CPortList_Mac::sources().count();
}

int MIDIPlatform::destinationCount()
{
    return CPortList_Mac::destinations().count();
}

MIDIEndpoint MIDIPlatform::source(int index)
{
    return CPortList_Mac::sources().at(index);
}

MIDIEndpoint MIDIPlatform::destination(int index)
{
    return CPortList_Mac::destinations().at(index);
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

QStringList MIDIPlatform::otherPrograms()
{
    return {}; // CoreMIDI tells nobody who else is there
}

void MIDIPlatform::setProgramName(const char* /*name*/) {}

std::unique_ptr<CMIDIInput> MIDIPlatform::createInput()
{
    return std::make_unique<CMIDIInput_Mac>();
}

std::unique_ptr<CMIDIOutput> MIDIPlatform::createOutput()
{
    return std::make_unique<CMIDIOutput_Mac>();
}
