#include "midi/alsa/ALSASequencer.h"

namespace
{
void ignoreError(const char* /*file*/, int /*line*/, const char* /*function*/, int /*status*/, const char* /*format*/,
                 ...)
{
}
} // namespace

void ALSASequencerCloser::operator()(snd_seq_t* sequencer) const
{
    snd_seq_close(sequencer);
}

int openSequencer(ALSASequencer* sequencer, int streams)
{
    // Once: the handler is read without a lock by whichever thread meets an error.
    [[maybe_unused]] static const int silenced = snd_lib_error_set_handler(ignoreError);

    snd_seq_t* opened = nullptr;
    int status = snd_seq_open(&opened, "default", streams, SND_SEQ_NONBLOCK);
    if (status < 0) {
        sequencer->reset();
        return status;
    }
    sequencer->reset(opened);
    status = snd_seq_set_client_name(opened, "KTZ-JX Editor");
    if (status < 0)
        sequencer->reset();
    return status;
}
