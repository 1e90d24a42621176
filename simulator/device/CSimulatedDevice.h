#pragma once

#include "app/common/CMutex.h"
#include "simulator/device/CByteStream.h"
#include "simulator/device/CReplyPath.h"
#include "simulator/device/CTrafficLog.h"
#include "simulator/device/KnobSettings.h"

#include <QList>

#include <array>
#include <limits>

class CDeviceTransport;

/// The KTZ-JX as software: eight knobs, answers, reports and faults. Bytes in, bytes out, no port of its own.
///
/// Clock    milliseconds from 0, moved by advance() alone: a device that nobody advances still answers at once, but
///          delayed packets stay with it.
/// Threads  every operation may be called on any thread. Packets leave on the thread that caused them, or on one that
///          is sending just then, always in order.
/// Knobs    0 to 7; values 0 to 127. Others are refused by assertion.
/// Faults   are calls, count from the call on, and stay until they are used up or changed.
class CSimulatedDevice
{
  public:
    static constexpr int k_knobs = 8;
    static constexpr int k_always = std::numeric_limits<int>::max(); ///< for faults that never end

    CSimulatedDevice();
    ~CSimulatedDevice(); ///< unplugs
    CSimulatedDevice(const CSimulatedDevice&) = delete;
    CSimulatedDevice& operator=(const CSimulatedDevice&) = delete;

    /// Connects the device; an earlier transport loses it first. The transport outlives the connection.
    void plug(CDeviceTransport& transport);
    [[nodiscard]] bool isPlugged() const;

    /// Bytes from the editor: a whole message, several, or a piece of one. Answers go out before this returns.
    /// false, nothing taken: unplugged, or a refused send.
    bool receive(const QByteArray& packet);

    // What the device holds. Setting something here is like turning the device's own menu: nobody is told.
    [[nodiscard]] KnobSettings settings(int knob) const;
    void setSettings(int knob, const KnobSettings& settings);
    void setSetting(int knob, int KnobSettings::*setting, int value);
    [[nodiscard]] int value(int knob) const;
    void setValue(int knob, int value);

    /// Turns a knob: its value changes and is reported.
    void turn(int knob, int value);

    /// Reports a knob's settings unasked.
    void reportSettings(int knob);

    /// Sends one packet exactly as given, well-formed or not, faults or not; silence holds it back.
    void send(const QByteArray& packet);

    [[nodiscard]] qint64 now() const;
    void advance(qint64 milliseconds);

    // Faults on what the device answers and reports.
    void ignoreStarts(int starts);  ///< start messages left unanswered
    void dropKeeps(int keeps);      ///< keep messages left unanswered
    void keepSettings(int changes); ///< change-parameter messages that change nothing
    void leaveOutValues();          ///< says its settings alone when it is asked for everything
    void goSilent();                ///< sends nothing any more, nor what was delayed, but goes on to listen
    void answer();                  ///< ends the silence
    [[nodiscard]] bool isSilent() const;
    void cutRepliesInto(int bytes);                            ///< bytes a packet; 0 for uncut
    void glueReplies(int messages);                            ///< messages of one answer a packet; 1 for each its own
    void strayBytes(const QByteArray& bytes);                  ///< ahead of every message, in the same packet
    void otherEvents(const QList<QByteArray>& events);         ///< ahead of every packet, in packets of their own
    void interruptReplies(const QByteArray& bytes, int after); ///< inside each message, behind so many of its bytes
    void delayReplies(qint64 milliseconds);                    ///< what is sent from now on leaves so much later

    // Faults of the connection.
    void refuseSend(int n,
                    int count = 1); ///< from the n-th packet to the device on (1 is the next), so many are refused
    void unplug();                  ///< the ports vanish, sends fail; settings and faults stay

    /// Messages received, whole, broken or junk, each its own, oldest first; see CTrafficLog for how many are known.
    [[nodiscard]] QList<QByteArray> received() const;

    /// Both directions; see CTrafficLog.
    [[nodiscard]] QList<Traffic> trafficSince(qint64 number) const;
    void clearTraffic();

  private:
    bool takeSend();
    [[nodiscard]] QList<QByteArray> answersTo(const QByteArray& message);
    [[nodiscard]] QList<QByteArray> everything() const;
    void takeChange(const QByteArray& message);
    void queue(const QList<QByteArray>& messages);
    void sendDue();

    mutable CMutex m_mutex;
    CDeviceTransport* m_transport = nullptr;
    bool m_sending = false;
    qint64 m_now = 0;
    std::array<KnobSettings, k_knobs> m_settings = k_factorySettings;
    std::array<int, k_knobs> m_values = {};
    CByteStream m_stream;
    CReplyPath m_replyPath;
    CTrafficLog m_log;
    int m_startsToIgnore = 0;
    int m_keepsToDrop = 0;
    int m_changesToIgnore = 0;
    bool m_saysValues = true;
    bool m_silent = false;
    int m_sendsBeforeRefusal = 0;
    int m_sendsToRefuse = 0;
};
