#pragma once

// The part of CoreMIDI that midi/mac uses, with the types that a Mac's compiler sees.

#include <CoreFoundation/CoreFoundation.h>

using MIDIObjectRef = UInt32;
using MIDIClientRef = MIDIObjectRef;
using MIDIPortRef = MIDIObjectRef;
using MIDIEndpointRef = MIDIObjectRef;
using MIDIEntityRef = MIDIObjectRef;
using MIDIDeviceRef = MIDIObjectRef;
using MIDITimeStamp = UInt64;

#pragma pack(push, 4)
struct MIDIPacket
{
    MIDITimeStamp timeStamp;
    UInt16 length;
    Byte data[256];
};

struct MIDIPacketList
{
    UInt32 numPackets;
    MIDIPacket packet[1];
};
#pragma pack(pop)

struct MIDINotification;
using MIDINotifyProc = void (*)(const MIDINotification* message, void* refCon);
using MIDIReadProc = void (*)(const MIDIPacketList* packets, void* readProcRefCon, void* srcConnRefCon);

extern "C" {
extern const CFStringRef kMIDIPropertyName;

OSStatus MIDIClientCreate(CFStringRef name, MIDINotifyProc notifyProc, void* notifyRefCon, MIDIClientRef* client);
OSStatus MIDIClientDispose(MIDIClientRef client);
OSStatus MIDIInputPortCreate(MIDIClientRef client, CFStringRef name, MIDIReadProc readProc, void* refCon,
                             MIDIPortRef* port);
OSStatus MIDIOutputPortCreate(MIDIClientRef client, CFStringRef name, MIDIPortRef* port);
OSStatus MIDIPortDispose(MIDIPortRef port);
OSStatus MIDIPortConnectSource(MIDIPortRef port, MIDIEndpointRef source, void* connRefCon);
OSStatus MIDIPortDisconnectSource(MIDIPortRef port, MIDIEndpointRef source);
OSStatus MIDISend(MIDIPortRef port, MIDIEndpointRef destination, const MIDIPacketList* packets);
MIDIPacket* MIDIPacketNext(const MIDIPacket* packet);

ItemCount MIDIGetNumberOfSources();
ItemCount MIDIGetNumberOfDestinations();
MIDIEndpointRef MIDIGetSource(ItemCount index);
MIDIEndpointRef MIDIGetDestination(ItemCount index);
OSStatus MIDIEndpointGetEntity(MIDIEndpointRef endpoint, MIDIEntityRef* entity);
OSStatus MIDIEntityGetDevice(MIDIEntityRef entity, MIDIDeviceRef* device);
OSStatus MIDIObjectGetStringProperty(MIDIObjectRef object, CFStringRef property, CFStringRef* value);
}
