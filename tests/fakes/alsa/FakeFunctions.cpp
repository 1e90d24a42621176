// The library's functions, on the fake sequencer.

#include "tests/fakes/alsa/FakeSequencer.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

struct _snd_seq_client_info
{
    int client;
    int card;
    int process;
    int ports;
    char name[64];
};

struct _snd_seq_port_info
{
    snd_seq_addr_t address;
    int next; // where snd_seq_query_next_port() goes on
    unsigned int capabilities;
    char name[64];
};

struct _snd_seq_port_subscribe
{
    snd_seq_addr_t sender;
    snd_seq_addr_t destination;
};

namespace
{
FakeSequencer& fake()
{
    return FakeSequencer::instance();
}

unsigned char narrow(int number)
{
    return static_cast<unsigned char>(number);
}

/// A client's process: this one for its own, none for the kernel's.
int processOf(const std::pair<const int, FakeClientState>& client)
{
    const auto& [id, state] = client;
    if (state.handle != nullptr)
        return getpid();
    return id == SND_SEQ_CLIENT_SYSTEM || state.card >= 0 ? -1 : 1;
}

/// As the library does it, the message of a failure goes to the handler, or else to the standard error stream.
void reportError(const char* function, int status)
{
    if (fake().errorHandler != nullptr)
        fake().errorHandler("fake", 0, function, -status, "failed");
    else
        ++fake().printedMessages;
}

/// Makes the bytes of the event given out last useless, as the library's next read does.
void invalidateCurrent(snd_seq_t* handle)
{
    std::fill(handle->current.bytes.begin(), handle->current.bytes.end(), static_cast<unsigned char>(0xEE));
}
} // namespace

extern "C" {

int snd_lib_error_set_handler(snd_lib_error_handler_t handler)
{
    const std::scoped_lock lock(fake().lock);
    fake().errorHandler = handler;
    return 0;
}

int snd_midi_event_new(size_t bufsize, snd_midi_event_t** rdev)
{
    {
        const std::scoped_lock lock(fake().lock);
        if (const int status = fake().enter(__func__); status < 0)
            return status;
    }
    using Function = int (*)(size_t, snd_midi_event_t**);
    static const auto real = reinterpret_cast<Function>(dlsym(RTLD_NEXT, __func__));
    return real(bufsize, rdev);
}

int snd_seq_open(snd_seq_t** handle, const char* /*name*/, int /*streams*/, int mode)
{
    const std::scoped_lock lock(fake().lock);
    int status = fake().enter(__func__);
    if (!fake().available)
        status = -ENOENT;
    int ends[2];
    if (status == 0 && pipe2(ends, O_NONBLOCK | O_CLOEXEC) < 0)
        status = -errno;
    if (status == 0 && mode != SND_SEQ_NONBLOCK)
        status = -ENOTSUP; // the fake never waits
    if (status < 0) {
        reportError(__func__, status);
        return status;
    }
    *handle = new snd_seq_t;
    (*handle)->readEnd = ends[0];
    (*handle)->writeEnd = ends[1];
    (*handle)->id = fake().addClient("Client", *handle);
    return 0;
}

int snd_seq_close(snd_seq_t* handle)
{
    const std::scoped_lock lock(fake().lock);
    fake().removeClient(handle->id);
    close(handle->readEnd);
    if (handle->writeEnd >= 0)
        close(handle->writeEnd);
    delete handle;
    return 0;
}

int snd_seq_client_id(snd_seq_t* handle)
{
    return handle->id;
}

int snd_seq_set_client_name(snd_seq_t* handle, const char* name)
{
    const std::scoped_lock lock(fake().lock);
    if (const int status = fake().enter(__func__); status < 0)
        return status;
    fake().clients.at(handle->id).name = name;
    return 0;
}

int snd_seq_set_client_pool_input(snd_seq_t* handle, size_t size)
{
    const std::scoped_lock lock(fake().lock);
    if (const int status = fake().enter(__func__); status < 0)
        return status;
    constexpr size_t largest = 2000;
    if (size > largest)
        return -EINVAL;
    handle->queueCells = static_cast<int>(size);
    return 0;
}

int snd_seq_set_input_buffer_size(snd_seq_t* handle, size_t size)
{
    const std::scoped_lock lock(fake().lock);
    if (const int status = fake().enter(__func__); status < 0)
        return status;
    handle->bufferSize = size;
    return 0;
}

int snd_seq_poll_descriptors(snd_seq_t* handle, struct pollfd* pfds, unsigned int /*space*/, short events)
{
    pfds[0] = {handle->readEnd, events, 0};
    return 1;
}

size_t snd_seq_client_info_sizeof(void)
{
    return sizeof(snd_seq_client_info_t);
}

void snd_seq_client_info_set_client(snd_seq_client_info_t* info, int client)
{
    info->client = client;
}

int snd_seq_client_info_get_client(const snd_seq_client_info_t* info)
{
    return info->client;
}

int snd_seq_client_info_get_card(const snd_seq_client_info_t* info)
{
    return info->card;
}

int snd_seq_client_info_get_pid(const snd_seq_client_info_t* info)
{
    return info->process;
}

int snd_seq_client_info_get_num_ports(const snd_seq_client_info_t* info)
{
    return info->ports;
}

int snd_card_get_longname(int card, char** name)
{
    const std::scoped_lock lock(fake().lock);
    if (const int status = fake().enter(__func__); status < 0)
        return status;
    *name = strdup(fake().cards.at(static_cast<size_t>(card)).constData()); // the caller frees it
    return 0;
}

const char* snd_seq_client_info_get_name(snd_seq_client_info_t* info)
{
    return info->name;
}

int snd_seq_query_next_client(snd_seq_t* /*handle*/, snd_seq_client_info_t* info)
{
    const std::scoped_lock lock(fake().lock);
    if (const int status = fake().enter(__func__); status < 0)
        return status;
    const auto next = fake().clients.upper_bound(info->client);
    if (next == fake().clients.end())
        return -ENOENT;
    info->client = next->first;
    info->card = next->second.card;
    info->process = processOf(*next);
    info->ports = static_cast<int>(next->second.ports.size());
    qstrncpy(info->name, next->second.name.constData(), sizeof info->name);
    return 0;
}

size_t snd_seq_port_info_sizeof(void)
{
    return sizeof(snd_seq_port_info_t);
}

void snd_seq_port_info_set_client(snd_seq_port_info_t* info, int client)
{
    info->address.client = narrow(client);
}

void snd_seq_port_info_set_port(snd_seq_port_info_t* info, int port)
{
    info->next = port + 1;
}

const snd_seq_addr_t* snd_seq_port_info_get_addr(const snd_seq_port_info_t* info)
{
    return &info->address;
}

const char* snd_seq_port_info_get_name(const snd_seq_port_info_t* info)
{
    return info->name;
}

unsigned int snd_seq_port_info_get_capability(const snd_seq_port_info_t* info)
{
    return info->capabilities;
}

int snd_seq_query_next_port(snd_seq_t* /*handle*/, snd_seq_port_info_t* info)
{
    const std::scoped_lock lock(fake().lock);
    if (const int status = fake().enter(__func__); status < 0)
        return status;
    const auto client = fake().clients.find(info->address.client);
    if (client == fake().clients.end())
        return -ENOENT;
    const auto next = client->second.ports.lower_bound(info->next);
    if (next == client->second.ports.end())
        return -ENOENT;
    info->address.port = narrow(next->first);
    info->next = next->first + 1;
    info->capabilities = next->second.capabilities;
    qstrncpy(info->name, next->second.name.constData(), sizeof info->name);
    return 0;
}

int snd_seq_create_simple_port(snd_seq_t* handle, const char* name, unsigned int caps, unsigned int /*type*/)
{
    const std::scoped_lock lock(fake().lock);
    if (const int status = fake().enter(__func__); status < 0)
        return status;
    return FakeALSA::addPort(handle->id, name, caps);
}

int snd_seq_delete_simple_port(snd_seq_t* handle, int port)
{
    const std::scoped_lock lock(fake().lock);
    if (const int status = fake().enter(__func__); status < 0)
        return status;
    fake().removePort({handle->id, port});
    return 0;
}

int snd_seq_connect_from(snd_seq_t* handle, int myPort, int client, int port)
{
    const std::scoped_lock lock(fake().lock);
    if (const int status = fake().enter(__func__); status < 0)
        return status;
    return fake().subscribe({client, port}, {handle->id, myPort}, handle->id);
}

int snd_seq_connect_to(snd_seq_t* handle, int myPort, int client, int port)
{
    const std::scoped_lock lock(fake().lock);
    if (const int status = fake().enter(__func__); status < 0)
        return status;
    return fake().subscribe({handle->id, myPort}, {client, port}, handle->id);
}

size_t snd_seq_port_subscribe_sizeof(void)
{
    return sizeof(snd_seq_port_subscribe_t);
}

void snd_seq_port_subscribe_set_sender(snd_seq_port_subscribe_t* info, const snd_seq_addr_t* address)
{
    info->sender = *address;
}

void snd_seq_port_subscribe_set_dest(snd_seq_port_subscribe_t* info, const snd_seq_addr_t* address)
{
    info->destination = *address;
}

int snd_seq_get_port_subscription(snd_seq_t* /*handle*/, snd_seq_port_subscribe_t* info)
{
    const std::scoped_lock lock(fake().lock);
    if (const int status = fake().enter(__func__); status < 0)
        return status;
    const std::pair wanted(FakeAddress(info->sender.client, info->sender.port),
                           FakeAddress(info->destination.client, info->destination.port));
    return std::ranges::find(fake().subscriptions, wanted) != fake().subscriptions.end() ? 0 : -ENOENT;
}

int snd_seq_event_output_direct(snd_seq_t* handle, snd_seq_event_t* event)
{
    const std::scoped_lock lock(fake().lock);
    if (const int status = fake().enter(__func__); status < 0)
        return status;
    if (event->dest.client != SND_SEQ_ADDRESS_SUBSCRIBERS || event->queue != SND_SEQ_QUEUE_DIRECT)
        return -ENOTSUP; // all that the fake knows
    event->source.client = narrow(handle->id);
    const int status = fake().deliver(*event);
    return status < 0 ? status : static_cast<int>(sizeof *event); // success also when nobody has subscribed
}

int snd_seq_event_input(snd_seq_t* handle, snd_seq_event_t** event)
{
    const std::scoped_lock lock(fake().lock);
    *event = nullptr;
    if (const int status = fake().enter(__func__); status < 0)
        return status;
    invalidateCurrent(handle);
    if (handle->buffer.empty()) {
        if (handle->overrun) {
            handle->overrun = false;
            handle->queue.clear();
            handle->markUnreadable();
            return -ENOSPC;
        }
        if (handle->queue.empty())
            return -EAGAIN;
        handle->fetch();
        ++fake().fetches;
    }
    handle->current = std::move(handle->buffer.front());
    handle->buffer.pop_front();
    if (snd_seq_ev_is_variable(&handle->current.event))
        handle->current.event.data.ext.ptr = handle->current.bytes.data();
    *event = &handle->current.event;
    return 1;
}

int snd_seq_event_input_pending(snd_seq_t* handle, int fetchSequencer)
{
    const std::scoped_lock lock(fake().lock);
    ++fake().calls[__func__];
    invalidateCurrent(handle);
    if (handle->buffer.empty() && fetchSequencer != 0)
        handle->fetch();
    return static_cast<int>(handle->buffer.size());
}

} // extern "C"
