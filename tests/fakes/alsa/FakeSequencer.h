#pragma once

#include "tests/fakes/alsa/FakeALSA.h"

#include <deque>
#include <map>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

/// An event and the bytes that it points to.
struct FakeEvent
{
    snd_seq_event_t event;
    std::vector<unsigned char> bytes;

    [[nodiscard]] int cells() const;
};

struct FakePortState
{
    QByteArray name;
    unsigned int capabilities = 0;
    QByteArrayList received;
};

/// A client that was opened through the library.
struct _snd_seq
{
    int id = 0;
    std::deque<FakeEvent> queue; // the kernel's
    bool overrun = false;
    int queueCells = 200;
    std::deque<FakeEvent> buffer; // the library's
    size_t bufferSize = 500 * sizeof(snd_seq_event_t);
    FakeEvent current; // what the last snd_seq_event_input() gave out
    int readEnd = -1;  // readable while the queue holds something
    int writeEnd = -1;

    void markReadable() const;
    void markUnreadable() const;

    /// Moves what fits from the queue into the buffer.
    void fetch();
};

struct FakeClientState
{
    QByteArray name;
    std::map<int, FakePortState> ports;
    snd_seq_t* handle = nullptr; // null: another program's
    int card = -1;               // its number, or -1 for a program's client
};

using FakeAddress = std::pair<int, int>; // client, port

/// All that the fake sequencer knows; every member is used with the lock held.
struct FakeSequencer
{
    static FakeSequencer& instance();

    int addClient(const QByteArray& name, snd_seq_t* handle);
    void removePort(FakeAddress address);
    void removeClient(int client);
    [[nodiscard]] FakePortState* port(FakeAddress address);

    /// 0, or the status with which the sequencer refuses.
    [[nodiscard]] int subscribe(FakeAddress sender, FakeAddress destination, int subscriber);

    /// Delivers to every subscriber of the event's source. The result is 0, or -EAGAIN when one of them had no room.
    int deliver(const snd_seq_event_t& event);

    /// Puts an event into a client's queue; where it has no room, all that the queue holds is going to be lost, and the
    /// result is -EAGAIN.
    [[nodiscard]] int enqueue(snd_seq_t* handle, const FakeEvent& event) const;

    /// Counts the call. The result is the negative status that it has to give, or 0.
    [[nodiscard]] int enter(const char* function);

    std::recursive_mutex lock;
    bool available = true;
    bool holding = false;
    int fetches = 0;
    std::map<int, FakeClientState> clients;
    std::vector<QByteArray> cards; // long name by number
    std::vector<std::pair<FakeAddress, FakeAddress>> subscriptions;
    std::map<std::string, int> nextFailure;
    std::map<std::string, int> lastingFailure;
    std::map<std::string, int> calls;
    snd_lib_error_handler_t errorHandler = nullptr;
    int printedMessages = 0;
};
