#pragma once

#include <QByteArray>
#include <QList>
#include <QQueue>

#include <optional>

/// The way from the device to the wire, with all that can go wrong on it: messages go in, packets come out when their
/// time has come, in the order in which they went in.
///
/// Units    times are milliseconds of the device's clock.
/// Threads  none of its own; the device's lock guards it.
class CReplyPath
{
  public:
    struct Packet
    {
        qint64 due = 0;
        QByteArray bytes;
    };

    /// Puts messages that belong together on their way.
    void add(const QList<QByteArray>& messages, qint64 now);

    /// Puts one packet on its way exactly as it is, faults or not.
    void addAsIs(const QByteArray& packet, qint64 now);

    /// The oldest packet whose time has come.
    [[nodiscard]] std::optional<Packet> takeDue(qint64 now);

    /// Drops what is on its way.
    void clear();

    QByteArray strayBytes;         ///< ahead of every message, in the same packet
    QList<QByteArray> otherEvents; ///< ahead of every message, each in a packet of its own
    QByteArray interruption;       ///< inside every message, behind its first interruptAfter bytes
    int interruptAfter = 0;
    int glued = 1;    ///< messages a packet, at least 1
    int cutInto = 0;  ///< bytes a packet, 0 for uncut
    qint64 delay = 0; ///< milliseconds between a message and its packets

  private:
    [[nodiscard]] QByteArray onTheWire(QByteArray message) const;
    void addCut(const QByteArray& bytes, qint64 now);

    QQueue<Packet> m_packets;
};
