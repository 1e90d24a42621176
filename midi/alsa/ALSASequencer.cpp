#include "midi/alsa/ALSASequencer.h"

#include "app/common/Constants.h"

namespace
{
const char* g_clientName = k_editorProgramName;

void ignoreError(const char* /*file*/, int /*line*/, const char* /*function*/, int /*status*/, const char* /*format*/,
                 ...)
{
}
} // namespace

void ALSASequencerCloser::operator()(snd_seq_t* sequencer) const
{
    snd_seq_close(sequencer);
}

void silenceALSA()
{
    // Once: the handler is read without a lock by whichever thread meets an error.
    [[maybe_unused]] static const int silenced = snd_lib_error_set_handler(ignoreError);
}

void setClientName(const char* name)
{
    g_clientName = name;
}

int openSequencer(ALSASequencer* sequencer, int streams, const char* clientName)
{
    silenceALSA();
    snd_seq_t* opened = nullptr;
    int status = snd_seq_open(&opened, "default", streams, SND_SEQ_NONBLOCK);
    sequencer->reset(status < 0 ? nullptr : opened);
    if (status >= 0)
        status = snd_seq_set_client_name(opened, clientName != nullptr ? clientName : g_clientName);
    if (status >= 0 && (streams & SND_SEQ_OPEN_INPUT) != 0)
        status = snd_seq_set_client_pool_input(opened, k_queueCells);
    if (status < 0)
        sequencer->reset();
    return status;
}
