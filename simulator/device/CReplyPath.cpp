#include "simulator/device/CReplyPath.h"

#include <algorithm>

void CReplyPath::add(const QList<QByteArray>& messages, qint64 now)
{
    QByteArray packet;
    int count = 0;
    for (const QByteArray& message : messages) {
        if (count == 0) {
            for (const QByteArray& event : otherEvents)
                addAsIs(event, now);
        }
        packet += onTheWire(message);
        if (++count == glued) {
            addCut(packet, now);
            packet.clear();
            count = 0;
        }
    }
    addCut(packet, now);
}

void CReplyPath::addAsIs(const QByteArray& packet, qint64 now)
{
    // A delay that was made shorter must not let a later message overtake an earlier one.
    const qint64 earliest = m_packets.isEmpty() ? 0 : m_packets.last().due;
    m_packets.enqueue({std::max(earliest, now + delay), packet});
}

std::optional<CReplyPath::Packet> CReplyPath::takeDue(qint64 now)
{
    if (m_packets.isEmpty() || m_packets.first().due > now)
        return std::nullopt;
    return m_packets.dequeue();
}

void CReplyPath::clear()
{
    m_packets.clear();
}

QByteArray CReplyPath::onTheWire(QByteArray message) const
{
    return strayBytes + message.insert(std::min<qsizetype>(interruptAfter, message.size()), interruption);
}

void CReplyPath::addCut(const QByteArray& bytes, qint64 now)
{
    const qsizetype step = cutInto > 0 ? cutInto : std::max<qsizetype>(bytes.size(), 1);
    for (qsizetype position = 0; position < bytes.size(); position += step)
        addAsIs(bytes.mid(position, step), now);
}
