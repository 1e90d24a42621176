#include "tests/fakes/coremidi/CFakeCoreMIDI.h"

#include <QElapsedTimer>
#include <QMap>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <map>
#include <vector>

struct FakeString
{
    QByteArray text;
    int references = 1;
};

namespace
{
constexpr MIDIObjectRef k_worthless = 0xDEAD;

auto g_layout = CFakeCoreMIDI::Layout::Packed;
} // namespace

struct FakeSystem
{
    struct Port
    {
        MIDIClientRef client = 0;
        MIDIReadProc readProc = nullptr;
        void* readRefCon = nullptr;
        QMap<MIDIEndpointRef, void*> connections; // source -> connection refcon
    };

    QStringList calls;
    QMap<QString, QMap<int, OSStatus>> failures; // call -> how many calls from now -> status
    std::vector<std::unique_ptr<FakeString>> strings;
    bool directPointers = true;

    QList<MIDIClientRef> clients;
    QMap<MIDIPortRef, Port> ports;
    QList<MIDIEndpointRef> sources;
    QList<MIDIEndpointRef> destinations;
    QMap<MIDIObjectRef, QByteArray> names;
    QMap<MIDIEndpointRef, MIDIEntityRef> entities;
    QMap<MIDIEntityRef, MIDIDeviceRef> devices;
    MIDIObjectRef nextClient = 101;
    MIDIObjectRef nextPort = 201;
    MIDIObjectRef nextSource = 301;
    MIDIObjectRef nextDestination = 401;
    MIDIObjectRef nextEntity = 501;
    MIDIObjectRef nextDevice = 601;

    QList<QByteArray> sentPackets;
    QList<qint64> sendTimes;
    QElapsedTimer clock;

    // The status of the call: noErr unless it is to fail.
    OSStatus outcome(const QString& name)
    {
        QMap<int, OSStatus> later;
        OSStatus status = noErr;
        const QMap<int, OSStatus> planned = failures.take(name);
        for (auto it = planned.cbegin(); it != planned.cend(); ++it) {
            if (it.key() == 1)
                status = it.value();
            else
                later.insert(it.key() - 1, it.value());
        }
        if (!later.isEmpty())
            failures.insert(name, later);
        return status;
    }

    OSStatus record(const QString& name, const QStringList& arguments)
    {
        calls.append(QStringLiteral("%1(%2)").arg(name, arguments.join(QStringLiteral(", "))));
        return outcome(name);
    }

    FakeString* createString(const QByteArray& text)
    {
        strings.push_back(std::make_unique<FakeString>(FakeString{text}));
        return strings.back().get();
    }

    MIDIEndpointRef addEndpoint(MIDIEndpointRef endpoint, const QByteArray& name, const QByteArray& device)
    {
        if (!name.isNull())
            names.insert(endpoint, name);
        if (!device.isNull()) {
            const MIDIEntityRef entity = nextEntity++;
            const MIDIDeviceRef deviceRef = nextDevice++;
            entities.insert(endpoint, entity);
            devices.insert(entity, deviceRef);
            names.insert(deviceRef, device);
        }
        return endpoint;
    }

    MIDIEndpointRef endpoint(const QString& call, const QList<MIDIEndpointRef>& list, ItemCount index)
    {
        const bool failed = record(call, {QString::number(index)}) != noErr;
        return failed || index >= static_cast<ItemCount>(list.size()) ? 0 : list.at(static_cast<qsizetype>(index));
    }
};

namespace
{
FakeSystem* s_system = nullptr;

// Constant strings live as long as the program and may be released at will.
std::map<QByteArray, FakeString>& constantStrings()
{
    static std::map<QByteArray, FakeString> strings;
    return strings;
}

QString text(CFStringRef string)
{
    return string == nullptr ? QStringLiteral("null") : QString::fromLatin1(string->text);
}

QString text(MIDIObjectRef object)
{
    return QString::number(object);
}

QString nullOrSet(const void* pointer)
{
    return pointer == nullptr ? QStringLiteral("null") : QStringLiteral("set");
}

OSStatus createPort(OSStatus status, const FakeSystem::Port& settings, MIDIPortRef* port)
{
    if (status == noErr && !s_system->clients.contains(settings.client))
        status = CFakeCoreMIDI::k_refused;
    *port = k_worthless;
    if (status == noErr) {
        *port = s_system->nextPort++;
        s_system->ports.insert(*port, settings);
    }
    return status;
}

// What is looked up belongs to the object, so nothing is created and a failure leaves a worthless reference.
OSStatus lookUp(OSStatus status, const QMap<MIDIObjectRef, MIDIObjectRef>& table, MIDIObjectRef key,
                MIDIObjectRef* found)
{
    if (status == noErr && !table.contains(key))
        status = CFakeCoreMIDI::k_refused;
    *found = status == noErr ? table.value(key) : k_worthless;
    return status;
}
} // namespace

CFakeCoreMIDI::CFakeCoreMIDI() : m_system(std::make_unique<FakeSystem>())
{
    m_system->clock.start();
    s_system = m_system.get();
    setLayout(Layout::Packed);
}

CFakeCoreMIDI::~CFakeCoreMIDI()
{
    s_system = nullptr;
}

MIDIEndpointRef CFakeCoreMIDI::addSource(const QByteArray& name, const QByteArray& device)
{
    m_system->sources.append(m_system->nextSource);
    return m_system->addEndpoint(m_system->nextSource++, name, device);
}

MIDIEndpointRef CFakeCoreMIDI::addDestination(const QByteArray& name, const QByteArray& device)
{
    m_system->destinations.append(m_system->nextDestination);
    return m_system->addEndpoint(m_system->nextDestination++, name, device);
}

void CFakeCoreMIDI::removeSource(int index)
{
    m_system->sources.removeAt(index);
}

void CFakeCoreMIDI::failCall(const QString& name, int n, OSStatus status)
{
    m_system->failures[name].insert(n, status);
}

void CFakeCoreMIDI::hideDirectPointers()
{
    m_system->directPointers = false;
}

QStringList CFakeCoreMIDI::takeCalls()
{
    return std::exchange(m_system->calls, {});
}

const QList<QByteArray>& CFakeCoreMIDI::sentPackets() const
{
    return m_system->sentPackets;
}

const QList<qint64>& CFakeCoreMIDI::sendTimes() const
{
    return m_system->sendTimes;
}

void CFakeCoreMIDI::receive(MIDIEndpointRef source, const QList<QByteArray>& packets) const
{
    const QByteArray list = packetList(packets);
    for (const FakeSystem::Port& port : std::as_const(m_system->ports)) {
        if (port.connections.contains(source))
            port.readProc(reinterpret_cast<const MIDIPacketList*>(list.constData()), port.readRefCon,
                          port.connections.value(source));
    }
}

void CFakeCoreMIDI::setLayout(Layout layout)
{
    g_layout = layout;
}

MIDIPacket* MIDIPacketNext(const MIDIPacket* packet)
{
    const auto* bytes = reinterpret_cast<const unsigned char*>(packet);
    UInt16 length = 0;
    std::memcpy(&length, bytes + offsetof(MIDIPacket, length), sizeof length);
    auto next = reinterpret_cast<std::uintptr_t>(bytes + offsetof(MIDIPacket, data) + length);
    if (g_layout == CFakeCoreMIDI::Layout::Aligned)
        next = (next + 3) & ~std::uintptr_t{3};
    return reinterpret_cast<MIDIPacket*>(next); // NOLINT(performance-no-int-to-ptr): as the system does it
}

QByteArray CFakeCoreMIDI::packetList(const QList<QByteArray>& packets)
{
    const auto count = static_cast<UInt32>(packets.size());
    QByteArray list(reinterpret_cast<const char*>(&count), sizeof count);
    for (const QByteArray& packet : packets) {
        if (g_layout == Layout::Aligned)
            list.append((4 - list.size() % 4) % 4, '\x55'); // the list itself begins at such an address
        const MIDITimeStamp time = 0x0102030405060708;
        const auto length = static_cast<UInt16>(packet.size());
        list.append(reinterpret_cast<const char*>(&time), sizeof time);
        list.append(reinterpret_cast<const char*>(&length), sizeof length);
        list.append(packet);
    }
    return list;
}

CFStringRef CFakeCoreMIDI::createString(const QByteArray& text)
{
    return m_system->createString(text);
}

int CFakeCoreMIDI::heldStrings() const
{
    return static_cast<int>(
        std::ranges::count_if(m_system->strings, [](const auto& string) { return string->references > 0; }));
}

int CFakeCoreMIDI::overReleasedStrings() const
{
    return static_cast<int>(
        std::ranges::count_if(m_system->strings, [](const auto& string) { return string->references < 0; }));
}

int CFakeCoreMIDI::openClients() const
{
    return static_cast<int>(m_system->clients.size());
}

int CFakeCoreMIDI::openPorts() const
{
    return static_cast<int>(m_system->ports.size());
}

CFStringRef fakeConstantString(const char* text)
{
    return &constantStrings().try_emplace(text, FakeString{text}).first->second;
}

void CFRelease(CFTypeRef object)
{
    for (const auto& string : s_system->strings) {
        if (string.get() == object)
            --string->references;
    }
}

const char* CFStringGetCStringPtr(CFStringRef string, CFStringEncoding encoding)
{
    const bool failed = s_system->outcome(QStringLiteral("CFStringGetCStringPtr")) != noErr;
    const bool direct = s_system->directPointers && encoding == kCFStringEncodingMacRoman && !failed;
    return direct ? string->text.constData() : nullptr;
}

Boolean CFStringGetCString(CFStringRef string, char* buffer, CFIndex bufferSize, CFStringEncoding encoding)
{
    const bool failed = s_system->outcome(QStringLiteral("CFStringGetCString")) != noErr;
    const CFIndex needed = string->text.size() + 1;
    if (failed || encoding != kCFStringEncodingMacRoman || needed > bufferSize)
        return false;
    std::memcpy(buffer, string->text.constData(), static_cast<std::size_t>(needed));
    return true;
}

const CFStringRef kMIDIPropertyName = fakeConstantString("name");

OSStatus MIDIClientCreate(CFStringRef name, MIDINotifyProc notifyProc, void* notifyRefCon, MIDIClientRef* client)
{
    const OSStatus status =
        s_system->record(QStringLiteral("MIDIClientCreate"),
                         {text(name), nullOrSet(reinterpret_cast<const void*>(notifyProc)), nullOrSet(notifyRefCon)});
    *client = k_worthless;
    if (status == noErr) {
        *client = s_system->nextClient++;
        s_system->clients.append(*client);
    }
    return status;
}

OSStatus MIDIClientDispose(MIDIClientRef client)
{
    const OSStatus status = s_system->record(QStringLiteral("MIDIClientDispose"), {text(client)});
    s_system->ports.removeIf([client](const auto& entry) { return entry.value().client == client; });
    return s_system->clients.removeOne(client) ? status : CFakeCoreMIDI::k_refused;
}

OSStatus MIDIInputPortCreate(MIDIClientRef client, CFStringRef name, MIDIReadProc readProc, void* refCon,
                             MIDIPortRef* port)
{
    const OSStatus status = s_system->record(
        QStringLiteral("MIDIInputPortCreate"),
        {text(client), text(name), nullOrSet(reinterpret_cast<const void*>(readProc)), nullOrSet(refCon)});
    return createPort(status, FakeSystem::Port{client, readProc, refCon, {}}, port);
}

OSStatus MIDIOutputPortCreate(MIDIClientRef client, CFStringRef name, MIDIPortRef* port)
{
    const OSStatus status = s_system->record(QStringLiteral("MIDIOutputPortCreate"), {text(client), text(name)});
    return createPort(status, FakeSystem::Port{client, nullptr, nullptr, {}}, port);
}

OSStatus MIDIPortDispose(MIDIPortRef port)
{
    const OSStatus status = s_system->record(QStringLiteral("MIDIPortDispose"), {text(port)});
    return s_system->ports.remove(port) == 1 ? status : CFakeCoreMIDI::k_refused;
}

OSStatus MIDIPortConnectSource(MIDIPortRef port, MIDIEndpointRef source, void* connRefCon)
{
    const OSStatus status =
        s_system->record(QStringLiteral("MIDIPortConnectSource"), {text(port), text(source), nullOrSet(connRefCon)});
    if (status != noErr || !s_system->ports.contains(port))
        return CFakeCoreMIDI::k_refused;
    s_system->ports[port].connections.insert(source, connRefCon);
    return noErr;
}

OSStatus MIDIPortDisconnectSource(MIDIPortRef port, MIDIEndpointRef source)
{
    const OSStatus status = s_system->record(QStringLiteral("MIDIPortDisconnectSource"), {text(port), text(source)});
    if (!s_system->ports.contains(port) || s_system->ports[port].connections.remove(source) == 0)
        return CFakeCoreMIDI::k_refused;
    return status;
}

OSStatus MIDISend(MIDIPortRef port, MIDIEndpointRef destination, const MIDIPacketList* packets)
{
    const MIDIPacket& packet = packets->packet[0];
    const OSStatus status = s_system->record(QStringLiteral("MIDISend"),
                                             {text(port), text(destination), QString::number(packets->numPackets),
                                              QString::number(packet.timeStamp), QString::number(packet.length)});
    s_system->sendTimes.append(s_system->clock.nsecsElapsed());
    if (status == noErr)
        s_system->sentPackets.append(QByteArray(reinterpret_cast<const char*>(packet.data), packet.length));
    return status;
}

ItemCount MIDIGetNumberOfSources()
{
    const bool failed = s_system->record(QStringLiteral("MIDIGetNumberOfSources"), {}) != noErr;
    return failed ? 0 : static_cast<ItemCount>(s_system->sources.size());
}

ItemCount MIDIGetNumberOfDestinations()
{
    const bool failed = s_system->record(QStringLiteral("MIDIGetNumberOfDestinations"), {}) != noErr;
    return failed ? 0 : static_cast<ItemCount>(s_system->destinations.size());
}

MIDIEndpointRef MIDIGetSource(ItemCount index)
{
    return s_system->endpoint(QStringLiteral("MIDIGetSource"), s_system->sources, index);
}

MIDIEndpointRef MIDIGetDestination(ItemCount index)
{
    return s_system->endpoint(QStringLiteral("MIDIGetDestination"), s_system->destinations, index);
}

OSStatus MIDIEndpointGetEntity(MIDIEndpointRef endpoint, MIDIEntityRef* entity)
{
    const OSStatus status = s_system->record(QStringLiteral("MIDIEndpointGetEntity"), {text(endpoint)});
    return lookUp(status, s_system->entities, endpoint, entity);
}

OSStatus MIDIEntityGetDevice(MIDIEntityRef entity, MIDIDeviceRef* device)
{
    const OSStatus status = s_system->record(QStringLiteral("MIDIEntityGetDevice"), {text(entity)});
    return lookUp(status, s_system->devices, entity, device);
}

OSStatus MIDIObjectGetStringProperty(MIDIObjectRef object, CFStringRef property, CFStringRef* value)
{
    const OSStatus status =
        s_system->record(QStringLiteral("MIDIObjectGetStringProperty"), {text(object), text(property)});
    *value = nullptr;
    if (status != noErr || property != kMIDIPropertyName || !s_system->names.contains(object))
        return CFakeCoreMIDI::k_refused;
    *value = s_system->createString(s_system->names.value(object));
    return noErr;
}
