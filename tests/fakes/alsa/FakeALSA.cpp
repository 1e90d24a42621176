#include "tests/fakes/alsa/FakeALSA.h"

#include "tests/fakes/alsa/FakeSequencer.h"

#include <QtGlobal>

#include <unistd.h>

namespace
{
/// The fake with its lock held, for one statement.
class CLockedSequencer
{
  public:
    FakeSequencer* operator->()
    {
        return &FakeSequencer::instance();
    }

  private:
    const std::scoped_lock<std::recursive_mutex> m_lock{FakeSequencer::instance().lock};
};

CLockedSequencer sequencer()
{
    return {};
}

snd_seq_t* handleOf(int client)
{
    return sequencer()->clients.at(client).handle;
}
} // namespace

void FakeALSA::reset()
{
    if (newestOpenClient() != -1)
        qFatal("the test before has left a client open");
    FakeSequencer& fake = FakeSequencer::instance();
    const std::scoped_lock lock(fake.lock);
    fake.available = true;
    fake.holding = false;
    fake.fetches = 0;
    fake.clients.clear();
    fake.cards.clear();
    fake.clients[SND_SEQ_CLIENT_SYSTEM] = {"System", {{0, {"Timer", k_both, {}}}, {1, {"Announce", k_source, {}}}}};
    fake.subscriptions.clear();
    fake.nextFailure.clear();
    fake.lastingFailure.clear();
    fake.calls.clear();
    fake.printedMessages = 0;
}

void FakeALSA::setAvailable(bool available)
{
    sequencer()->available = available;
}

int FakeALSA::addClient(const QByteArray& name)
{
    return sequencer()->addClient(name, nullptr);
}

int FakeALSA::addCardClient(const QByteArray& name, const QByteArray& card)
{
    FakeSequencer& fake = FakeSequencer::instance();
    const std::scoped_lock lock(fake.lock);
    const int id = fake.addClient(name, nullptr);
    fake.clients[id].card = static_cast<int>(fake.cards.size());
    fake.cards.push_back(card);
    return id;
}

int FakeALSA::addPort(int client, const QByteArray& name, unsigned int capabilities)
{
    FakeSequencer& fake = FakeSequencer::instance();
    const std::scoped_lock lock(fake.lock);
    int id = 0;
    while (fake.port({client, id}) != nullptr)
        ++id;
    fake.clients.at(client).ports[id] = {name, capabilities, {}};
    return id;
}

void FakeALSA::removePort(int client, int port)
{
    sequencer()->removePort({client, port});
}

void FakeALSA::removeClient(int client)
{
    sequencer()->removeClient(client);
}

void FakeALSA::send(int client, int port, const QByteArray& sysex)
{
    snd_seq_event_t event;
    snd_seq_ev_clear(&event);
    snd_seq_ev_set_sysex(&event, static_cast<unsigned int>(sysex.size()), const_cast<char*>(sysex.constData()));
    send(client, port, event);
}

void FakeALSA::send(int client, int port, const snd_seq_event_t& event)
{
    snd_seq_event_t sent = event;
    sent.source = {static_cast<unsigned char>(client), static_cast<unsigned char>(port)};
    sequencer()->deliver(sent);
}

QByteArrayList FakeALSA::received(int client, int port)
{
    return sequencer()->clients.at(client).ports.at(port).received;
}

void FakeALSA::failNext(const char* function, int status)
{
    sequencer()->nextFailure[function] = status;
}

void FakeALSA::failAlways(const char* function, int status)
{
    sequencer()->lastingFailure[function] = status;
}

int FakeALSA::calls(const char* function)
{
    return sequencer()->calls[function];
}

void FakeALSA::hangUp(int client)
{
    close(handleOf(client)->writeEnd);
    handleOf(client)->writeEnd = -1;
}

void FakeALSA::holdReading()
{
    sequencer()->holding = true;
}

void FakeALSA::continueReading()
{
    FakeSequencer& fake = FakeSequencer::instance();
    const std::scoped_lock lock(fake.lock);
    fake.holding = false;
    for (const auto& [id, client] : fake.clients) {
        if (client.handle != nullptr && !client.handle->queue.empty())
            client.handle->markReadable();
    }
}

int FakeALSA::fetches()
{
    return sequencer()->fetches;
}

int FakeALSA::queueCells(int client)
{
    return handleOf(client)->queueCells;
}

int FakeALSA::queuedCells(int client)
{
    FakeSequencer& fake = FakeSequencer::instance();
    const std::scoped_lock lock(fake.lock);
    int cells = 0;
    for (const FakeEvent& event : fake.clients.at(client).handle->queue)
        cells += event.cells();
    return cells;
}

size_t FakeALSA::inputBufferSize(int client)
{
    return handleOf(client)->bufferSize;
}

void FakeALSA::enlargeQueue(int client, int cells)
{
    FakeSequencer& fake = FakeSequencer::instance();
    const std::scoped_lock lock(fake.lock);
    snd_seq_t* handle = fake.clients.at(client).handle;
    handle->queueCells = cells;
    handle->bufferSize = static_cast<size_t>(cells) * sizeof(snd_seq_event_t);
}

int FakeALSA::newestOpenClient()
{
    FakeSequencer& fake = FakeSequencer::instance();
    const std::scoped_lock lock(fake.lock);
    int newest = -1;
    for (const auto& [id, client] : fake.clients)
        newest = client.handle != nullptr ? id : newest;
    return newest;
}

QByteArray FakeALSA::clientName(int client)
{
    return sequencer()->clients.at(client).name;
}

QByteArray FakeALSA::portName(int client, int port)
{
    return sequencer()->clients.at(client).ports.at(port).name;
}

int FakeALSA::subscriptions()
{
    return static_cast<int>(sequencer()->subscriptions.size());
}

int FakeALSA::printedMessages()
{
    return sequencer()->printedMessages;
}
