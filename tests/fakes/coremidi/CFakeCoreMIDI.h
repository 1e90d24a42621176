#pragma once

#include <CoreMIDI/CoreMIDI.h>

#include <QByteArray>
#include <QList>
#include <QStringList>

#include <memory>

struct FakeSystem;

/// The system that the faked CoreMIDI and CoreFoundation calls reach: the instance that lives now; exactly one may.
///
/// Objects  numbered in the order in which they come up: clients from 101, ports from 201, sources from 301,
///          destinations from 401, entities from 501, devices from 601.
/// Strings  counted: a string that nobody releases, or that is released too often, shows in the two counts.
/// Threads  one at a time, but for receive(), which runs beside anything that opens and closes nothing.
class CFakeCoreMIDI
{
  public:
    CFakeCoreMIDI();
    ~CFakeCoreMIDI();
    CFakeCoreMIDI(const CFakeCoreMIDI&) = delete;
    CFakeCoreMIDI& operator=(const CFakeCoreMIDI&) = delete;

    /// Adds an endpoint at the list's end. A null name: it has none. A null device name: it belongs to no entity.
    MIDIEndpointRef addSource(const QByteArray& name, const QByteArray& device = {});
    MIDIEndpointRef addDestination(const QByteArray& name, const QByteArray& device = {});

    /// Takes the endpoint at an index out of the list; those behind it move up.
    void removeSource(int index);

    /// Makes the n-th call of this name from now on fail, n counted from 1: with this status, or with 0, false or null
    /// where the call has none. A call that creates something then leaves a worthless reference behind.
    void failCall(const QString& name, int n = 1, OSStatus status = k_refused);

    /// Strings are served without a direct pointer from now on, as the system does with some.
    void hideDirectPointers();

    /// Calls since the last look, in order, as "MIDIPortDispose(201)"; those of CoreFoundation are not among them.
    QStringList takeCalls();

    /// The packets that were sent, without those of refused sends, and the time of each send in nanoseconds.
    [[nodiscard]] const QList<QByteArray>& sentPackets() const;
    [[nodiscard]] const QList<qint64>& sendTimes() const;

    /// The service's receive thread: hands one packet list to every port connected to the source.
    void receive(MIDIEndpointRef source, const QList<QByteArray>& packets) const;

    /// Where a packet of a list begins: where the one before it ends, as on Intel, or at the next address that can be
    /// divided by four, as on ARM. Packed until set, for each fake anew.
    enum class Layout
    {
        Packed,
        Aligned
    };
    static void setLayout(Layout layout);

    /// A packet list as the service lays it out.
    [[nodiscard]] static QByteArray packetList(const QList<QByteArray>& packets);

    /// A string that the caller owns.
    [[nodiscard]] CFStringRef createString(const QByteArray& text);

    [[nodiscard]] int heldStrings() const;
    [[nodiscard]] int overReleasedStrings() const;
    [[nodiscard]] int openClients() const;
    [[nodiscard]] int openPorts() const;

    static constexpr OSStatus k_refused = -10830;

  private:
    std::unique_ptr<FakeSystem> m_system;
};
