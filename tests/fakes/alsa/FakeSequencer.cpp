#include "tests/fakes/alsa/FakeSequencer.h"

#include <algorithm>
#include <cerrno>
#include <unistd.h>

namespace
{
constexpr int k_firstClient = 16;

bool allows(unsigned int capabilities, unsigned int wanted)
{
    return (capabilities & wanted) == wanted;
}

int cellsOf(const std::deque<FakeEvent>& events)
{
    int cells = 0;
    for (const FakeEvent& event : events)
        cells += event.cells();
    return cells;
}
} // namespace

void _snd_seq::markReadable() const
{
    const char readable = 1;
    [[maybe_unused]] const ssize_t written = write(writeEnd, &readable, 1);
}

void _snd_seq::markUnreadable() const
{
    char readable = 0;
    [[maybe_unused]] const ssize_t taken = read(readEnd, &readable, 1);
}

void _snd_seq::fetch()
{
    size_t room = bufferSize / sizeof(snd_seq_event_t);
    while (!queue.empty() && static_cast<size_t>(queue.front().cells()) <= room) {
        room -= static_cast<size_t>(queue.front().cells());
        buffer.push_back(std::move(queue.front()));
        queue.pop_front();
    }
    if (queue.empty())
        markUnreadable();
}

int FakeEvent::cells() const
{
    constexpr size_t cell = sizeof(snd_seq_event_t);
    return static_cast<int>(1 + (bytes.size() + cell - 1) / cell);
}

FakeSequencer& FakeSequencer::instance()
{
    static FakeSequencer sequencer;
    return sequencer;
}

int FakeSequencer::addClient(const QByteArray& name, snd_seq_t* handle)
{
    int id = k_firstClient;
    while (clients.contains(id))
        ++id;
    clients[id] = {name, {}, handle};
    return id;
}

void FakeSequencer::removePort(FakeAddress address)
{
    clients[address.first].ports.erase(address.second);
    std::erase_if(subscriptions, [&](const auto& one) { return one.first == address || one.second == address; });
}

void FakeSequencer::removeClient(int client)
{
    while (!clients[client].ports.empty())
        removePort({client, clients[client].ports.begin()->first});
    clients.erase(client);
}

FakePortState* FakeSequencer::port(FakeAddress address)
{
    const auto client = clients.find(address.first);
    if (client == clients.end())
        return nullptr;
    const auto found = client->second.ports.find(address.second);
    return found != client->second.ports.end() ? &found->second : nullptr;
}

int FakeSequencer::subscribe(FakeAddress sender, FakeAddress destination, int subscriber)
{
    const FakePortState* from = port(sender);
    const FakePortState* to = port(destination);
    if (from == nullptr || to == nullptr)
        return -EINVAL;
    // A client needs no permission for its own end.
    if (sender.first != subscriber && !allows(from->capabilities, FakeALSA::k_source))
        return -EPERM;
    if (destination.first != subscriber && !allows(to->capabilities, FakeALSA::k_destination))
        return -EPERM;
    if (std::ranges::find(subscriptions, std::pair(sender, destination)) != subscriptions.end())
        return -EBUSY;
    subscriptions.emplace_back(sender, destination);
    return 0;
}

int FakeSequencer::deliver(const snd_seq_event_t& event)
{
    FakeEvent copy{event, {}};
    if (snd_seq_ev_is_variable(&event)) {
        const auto* bytes = static_cast<const unsigned char*>(event.data.ext.ptr);
        copy.bytes.assign(bytes, bytes + event.data.ext.len);
    }
    const FakeAddress source(event.source.client, event.source.port);
    int status = 0;
    for (const auto& [sender, destination] : subscriptions) {
        FakePortState* to = port(destination);
        if (sender != source || !allows(to->capabilities, SND_SEQ_PORT_CAP_WRITE))
            continue;
        copy.event.dest = {static_cast<unsigned char>(destination.first),
                           static_cast<unsigned char>(destination.second)};
        snd_seq_t* handle = clients[destination.first].handle;
        if (const int taken = handle != nullptr ? enqueue(handle, copy) : 0; taken < 0) {
            status = taken;
            continue;
        }
        to->received.append(
            QByteArray(reinterpret_cast<const char*>(copy.bytes.data()), static_cast<qsizetype>(copy.bytes.size())));
    }
    return status;
}

int FakeSequencer::enqueue(snd_seq_t* handle, const FakeEvent& event) const
{
    if (cellsOf(handle->queue) + event.cells() > handle->queueCells) {
        handle->overrun = true;
        return -EAGAIN;
    }
    handle->queue.push_back(event);
    if (handle->queue.size() == 1 && !holding)
        handle->markReadable();
    return 0;
}

int FakeSequencer::enter(const char* function)
{
    ++calls[function];
    if (const auto lasting = lastingFailure.find(function); lasting != lastingFailure.end())
        return lasting->second;
    const auto next = nextFailure.find(function);
    return next != nextFailure.end() ? nextFailure.extract(next).mapped() : 0;
}
