#include "simulator/device/CSimulatedDevice.h"

#include "simulator/device/CDeviceTransport.h"
#include "simulator/device/DeviceMessages.h"

#include <utility>

namespace
{
bool isKnob(int knob)
{
    return knob >= 0 && knob < CSimulatedDevice::k_knobs;
}

bool isValue(int value)
{
    return value >= 0 && value <= 127;
}

/// Counts one fault down; true while there is one.
bool useUp(int& remaining)
{
    if (remaining == 0)
        return false;
    if (remaining != CSimulatedDevice::k_always)
        --remaining;
    return true;
}
} // namespace

CSimulatedDevice::CSimulatedDevice() = default;

CSimulatedDevice::~CSimulatedDevice()
{
    unplug();
}

void CSimulatedDevice::plug(CDeviceTransport& transport)
{
    unplug();
    const std::scoped_lock lock(m_mutex);
    m_transport = &transport;
}

bool CSimulatedDevice::isPlugged() const
{
    const std::scoped_lock lock(m_mutex);
    return m_transport != nullptr;
}

bool CSimulatedDevice::receive(const QByteArray& packet)
{
    {
        const std::scoped_lock lock(m_mutex);
        if (!takeSend())
            return false;
        QList<QByteArray> answers;
        for (const QByteArray& piece : m_stream.feed(packet)) {
            m_log.add(m_now, Traffic::Direction::ToDevice, piece);
            answers += answersTo(piece);
        }
        queue(answers);
    }
    sendDue();
    return true;
}

KnobSettings CSimulatedDevice::settings(int knob) const
{
    Q_ASSERT(isKnob(knob));
    const std::scoped_lock lock(m_mutex);
    return m_settings.at(static_cast<size_t>(knob));
}

void CSimulatedDevice::setSettings(int knob, const KnobSettings& settings)
{
    Q_ASSERT(isKnob(knob));
    const std::scoped_lock lock(m_mutex);
    m_settings.at(static_cast<size_t>(knob)) = settings;
}

void CSimulatedDevice::setSetting(int knob, int KnobSettings::*setting, int value)
{
    Q_ASSERT(isKnob(knob) && isValue(value));
    const std::scoped_lock lock(m_mutex);
    m_settings.at(static_cast<size_t>(knob)).*setting = value;
}

int CSimulatedDevice::value(int knob) const
{
    Q_ASSERT(isKnob(knob));
    const std::scoped_lock lock(m_mutex);
    return m_values.at(static_cast<size_t>(knob));
}

void CSimulatedDevice::setValue(int knob, int value)
{
    Q_ASSERT(isKnob(knob) && isValue(value));
    const std::scoped_lock lock(m_mutex);
    m_values.at(static_cast<size_t>(knob)) = value;
}

void CSimulatedDevice::turn(int knob, int value)
{
    Q_ASSERT(isKnob(knob) && isValue(value));
    {
        const std::scoped_lock lock(m_mutex);
        m_values.at(static_cast<size_t>(knob)) = value;
        queue({DeviceMessages::noticeValue(knob, value)});
    }
    sendDue();
}

void CSimulatedDevice::reportSettings(int knob)
{
    Q_ASSERT(isKnob(knob));
    {
        const std::scoped_lock lock(m_mutex);
        queue({DeviceMessages::changeParameter(knob, m_settings.at(static_cast<size_t>(knob)))});
    }
    sendDue();
}

void CSimulatedDevice::send(const QByteArray& packet)
{
    Q_ASSERT(!packet.isEmpty());
    {
        const std::scoped_lock lock(m_mutex);
        if (m_transport && !m_silent)
            m_replyPath.addAsIs(packet, m_now);
    }
    sendDue();
}

qint64 CSimulatedDevice::now() const
{
    const std::scoped_lock lock(m_mutex);
    return m_now;
}

void CSimulatedDevice::advance(qint64 milliseconds)
{
    {
        const std::scoped_lock lock(m_mutex);
        m_now += milliseconds;
    }
    sendDue();
}

void CSimulatedDevice::ignoreStarts(int starts)
{
    const std::scoped_lock lock(m_mutex);
    m_startsToIgnore = starts;
}

void CSimulatedDevice::dropKeeps(int keeps)
{
    const std::scoped_lock lock(m_mutex);
    m_keepsToDrop = keeps;
}

void CSimulatedDevice::keepSettings(int changes)
{
    const std::scoped_lock lock(m_mutex);
    m_changesToIgnore = changes;
}

void CSimulatedDevice::leaveOutValues()
{
    const std::scoped_lock lock(m_mutex);
    m_saysValues = false;
}

void CSimulatedDevice::goSilent()
{
    const std::scoped_lock lock(m_mutex);
    m_silent = true;
    m_replyPath.clear();
}

void CSimulatedDevice::answer()
{
    const std::scoped_lock lock(m_mutex);
    m_silent = false;
}

bool CSimulatedDevice::isSilent() const
{
    const std::scoped_lock lock(m_mutex);
    return m_silent;
}

void CSimulatedDevice::cutRepliesInto(int bytes)
{
    const std::scoped_lock lock(m_mutex);
    m_replyPath.cutInto = bytes;
}

void CSimulatedDevice::glueReplies(int messages)
{
    Q_ASSERT(messages >= 1);
    const std::scoped_lock lock(m_mutex);
    m_replyPath.glued = messages;
}

void CSimulatedDevice::strayBytes(const QByteArray& bytes)
{
    const std::scoped_lock lock(m_mutex);
    m_replyPath.strayBytes = bytes;
}

void CSimulatedDevice::otherEvents(const QList<QByteArray>& events)
{
    const std::scoped_lock lock(m_mutex);
    m_replyPath.otherEvents = events;
}

void CSimulatedDevice::interruptReplies(const QByteArray& bytes, int after)
{
    const std::scoped_lock lock(m_mutex);
    m_replyPath.interruption = bytes;
    m_replyPath.interruptAfter = after;
}

void CSimulatedDevice::delayReplies(qint64 milliseconds)
{
    const std::scoped_lock lock(m_mutex);
    m_replyPath.delay = milliseconds;
}

void CSimulatedDevice::refuseSend(int n, int count)
{
    Q_ASSERT(n >= 1);
    const std::scoped_lock lock(m_mutex);
    m_sendsBeforeRefusal = n - 1;
    m_sendsToRefuse = count;
}

void CSimulatedDevice::unplug()
{
    CDeviceTransport* transport = nullptr;
    {
        const std::scoped_lock lock(m_mutex);
        transport = std::exchange(m_transport, nullptr);
        m_replyPath.clear();
        m_stream.clear();
    }
    if (transport)
        transport->deviceUnplugged(*this);
}

QList<QByteArray> CSimulatedDevice::received() const
{
    QList<QByteArray> messages;
    for (const Traffic& traffic : trafficSince(0)) {
        if (traffic.direction == Traffic::Direction::ToDevice)
            messages += traffic.bytes;
    }
    return messages;
}

QList<Traffic> CSimulatedDevice::trafficSince(qint64 number) const
{
    const std::scoped_lock lock(m_mutex);
    return m_log.since(number);
}

void CSimulatedDevice::clearTraffic()
{
    const std::scoped_lock lock(m_mutex);
    m_log.clear();
}

bool CSimulatedDevice::takeSend()
{
    if (!m_transport)
        return false;
    if (m_sendsBeforeRefusal > 0) {
        --m_sendsBeforeRefusal;
        return true;
    }
    return !useUp(m_sendsToRefuse);
}

QList<QByteArray> CSimulatedDevice::answersTo(const QByteArray& message)
{
    switch (DeviceMessages::typeOf(message)) {
    case DeviceMessages::Type::Start:
        return useUp(m_startsToIgnore) ? QList<QByteArray>() : QList{DeviceMessages::start()};
    case DeviceMessages::Type::Keep:
        return useUp(m_keepsToDrop) ? QList<QByteArray>() : QList{DeviceMessages::keep()};
    case DeviceMessages::Type::RequestAll:
        return everything();
    case DeviceMessages::Type::ChangeParameter:
        takeChange(message);
        return {};
    default:
        return {};
    }
}

QList<QByteArray> CSimulatedDevice::everything() const
{
    QList<QByteArray> messages;
    for (int knob = 0; knob < k_knobs; ++knob) {
        messages += DeviceMessages::changeParameter(knob, m_settings.at(static_cast<size_t>(knob)));
        if (m_saysValues)
            messages += DeviceMessages::noticeValue(knob, m_values.at(static_cast<size_t>(knob)));
    }
    return messages;
}

void CSimulatedDevice::takeChange(const QByteArray& message)
{
    const int knob = DeviceMessages::knobOf(message);
    if (isKnob(knob) && !useUp(m_changesToIgnore))
        m_settings.at(static_cast<size_t>(knob)) = DeviceMessages::settingsOf(message);
}

void CSimulatedDevice::queue(const QList<QByteArray>& messages)
{
    if (m_transport && !m_silent)
        m_replyPath.add(messages, m_now);
}

/// One thread at a time sends, so that packets keep their order; another thread leaves its packets to that one.
void CSimulatedDevice::sendDue()
{
    std::unique_lock lock(m_mutex);
    if (m_sending)
        return;
    m_sending = true;
    while (const std::optional<CReplyPath::Packet> packet = m_replyPath.takeDue(m_now)) {
        CDeviceTransport* const transport = m_transport;
        m_log.add(packet->due, Traffic::Direction::FromDevice, packet->bytes);
        lock.unlock();
        transport->deviceSent(*this, packet->bytes);
        lock.lock();
    }
    m_sending = false;
}
