#pragma once

#include <QByteArray>
#include <QList>

/// Cuts an incoming stream of MIDI bytes into System Exclusive messages and everything else.
///
/// Every byte comes out exactly once, in order, but for real-time bytes (F8 to FF) inside a message, which come out
/// ahead of it. A message that is broken off by another status byte, or is longer than any of the device's, comes out
/// as it is, without an end, so that whoever looks at it sees that it is none.
class CByteStream
{
  public:
    /// The pieces that these bytes complete: whole messages (F0 to F7), broken ones, and runs of other bytes.
    /// An unfinished message is kept for the next call.
    [[nodiscard]] QList<QByteArray> feed(const QByteArray& bytes);

    /// Forgets an unfinished message.
    void clear();

    /// Bytes after which a message without an end is given up.
    static constexpr int k_longest = 64;

  private:
    void feedByte(char byte);
    void addToMessage(char byte);
    void addOther(char byte);
    void endMessage();
    void endOther();

    QByteArray m_message;
    QByteArray m_other;
    QList<QByteArray> m_pieces;
};
