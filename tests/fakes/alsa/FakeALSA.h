#pragma once

#include <alsa/asoundlib.h>

#include <QByteArrayList>

/// A sequencer in the process, behind the snd_seq_* functions that midi/alsa calls, with what it is known to do:
/// permissions, subscriptions, a bounded queue for each client that is emptied when it runs over, event bytes that
/// another read invalidates, sends that succeed though nobody is left to hear them. A program that links it has none of
/// the system's sequencer. (snd_midi_event_* are the library's own, since they only calculate.)
///
/// Threads  any; a test may send while a port object reads.
namespace FakeALSA
{
constexpr unsigned int k_source = SND_SEQ_PORT_CAP_READ | SND_SEQ_PORT_CAP_SUBS_READ;
constexpr unsigned int k_destination = SND_SEQ_PORT_CAP_WRITE | SND_SEQ_PORT_CAP_SUBS_WRITE;
constexpr unsigned int k_both = k_source | k_destination;

/// Only the System client is left; no failures, no counts. No handle may be open.
void reset();

/// Takes the sequencer away, as where /dev/snd/seq is missing, or gives it back.
void setAvailable(bool available);

/// Clients and ports of others. A new client has the lowest free id from 16 on, a new port the client's lowest. A
/// client with a card belongs to a sound card with this long name, one without is a program's.
int addClient(const QByteArray& name);
int addCardClient(const QByteArray& name, const QByteArray& card);
int addPort(int client, const QByteArray& name, unsigned int capabilities = k_both);

/// What happens to ports whose cable is pulled: they are gone, and their subscriptions with them.
void removePort(int client, int port);
void removeClient(int client);

/// Sends to all who have subscribed to this port. SysEx bytes go as one event, however many.
void send(int client, int port, const QByteArray& sysex);
void send(int client, int port, const snd_seq_event_t& event);

/// The bytes of each event that has come to this port, oldest first.
[[nodiscard]] QByteArrayList received(int client, int port);

/// The next call of this function gives this negative status and has no effect.
void failNext(const char* function, int status);

/// Every call of this function does.
void failAlways(const char* function, int status);

/// Calls of this function so far.
[[nodiscard]] int calls(const char* function);

/// Breaks the reading end of a client: poll() returns with an error instead of something to read.
void hangUp(int client);

/// Between these two calls no client learns that its queue holds something, as if the process were stopped.
void holdReading();
void continueReading();

/// How often something was moved out of a queue.
[[nodiscard]] int fetches();

/// Cells of the queue of a client, and how many of them are in use.
[[nodiscard]] int queueCells(int client);
[[nodiscard]] int queuedCells(int client);

/// Bytes of its library's read buffer.
[[nodiscard]] size_t inputBufferSize(int client);

/// Gives a client more than any sequencer does: a queue of so many cells, and a read buffer for all of them.
void enlargeQueue(int client, int cells);

/// The id of the newest client that was opened by snd_seq_open and not yet closed; -1 for none.
[[nodiscard]] int newestOpenClient();

[[nodiscard]] QByteArray clientName(int client);
[[nodiscard]] QByteArray portName(int client, int port);

/// The subscriptions of the whole system.
[[nodiscard]] int subscriptions();

/// Messages that the library would have printed.
[[nodiscard]] int printedMessages();
} // namespace FakeALSA
