#include "tests/simulator/FakeRawMIDI.h"

#include <alsa/asoundlib.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

struct _snd_rawmidi
{
};

namespace
{
struct State
{
    QByteArray toRead;
    QByteArray written;
    int room = -1;
    int readStatus = 0;
    int writeStatus = 0;
    int openPorts = 0;
};

State& state()
{
    static State the;
    return the;
}
} // namespace

void FakeRawMIDI::reset()
{
    state() = {};
}

void FakeRawMIDI::send(const QByteArray& bytes)
{
    state().toRead += bytes;
}

QByteArray FakeRawMIDI::taken()
{
    return std::exchange(state().written, {});
}

void FakeRawMIDI::setRoom(int bytes)
{
    state().room = bytes;
}

void FakeRawMIDI::failReading(int status)
{
    state().readStatus = status;
}

void FakeRawMIDI::failWriting(int status)
{
    state().writeStatus = status;
}

int FakeRawMIDI::openPorts()
{
    return state().openPorts;
}

extern "C" {

int snd_rawmidi_open(snd_rawmidi_t** in, snd_rawmidi_t** out, const char* name, int mode)
{
    if (std::strcmp(name, "hw:0,0,2") != 0)
        return -ENODEV;
    if (mode != SND_RAWMIDI_NONBLOCK)
        return -ENOTSUP; // the fake never waits
    *in = new _snd_rawmidi;
    *out = new _snd_rawmidi;
    state().openPorts += 2;
    return 0;
}

int snd_rawmidi_close(snd_rawmidi_t* port)
{
    delete port;
    --state().openPorts;
    return 0;
}

int snd_rawmidi_poll_descriptors_count(snd_rawmidi_t* /*port*/)
{
    return 1;
}

int snd_rawmidi_poll_descriptors(snd_rawmidi_t* /*port*/, struct pollfd* waits, unsigned int space)
{
    waits[0] = {-1, POLLIN, 0};
    return static_cast<int>(space);
}

ssize_t snd_rawmidi_read(snd_rawmidi_t* /*port*/, void* bytes, size_t size)
{
    if (state().readStatus < 0)
        return state().readStatus;
    if (state().toRead.isEmpty())
        return -EAGAIN;
    const qsizetype count = std::min(state().toRead.size(), static_cast<qsizetype>(size));
    std::memcpy(bytes, state().toRead.constData(), static_cast<size_t>(count));
    state().toRead.remove(0, count);
    return count;
}

ssize_t snd_rawmidi_write(snd_rawmidi_t* /*port*/, const void* bytes, size_t size)
{
    if (state().writeStatus < 0)
        return state().writeStatus;
    auto count = static_cast<qsizetype>(size);
    if (state().room >= 0) {
        count = std::min<qsizetype>(count, state().room);
        state().room -= static_cast<int>(count);
        if (count == 0)
            return -EAGAIN;
    }
    state().written.append(static_cast<const char*>(bytes), count);
    return count;
}

} // extern "C"
