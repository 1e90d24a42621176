#include <alsa/asoundlib.h>

/// The least that a program of the sequencer does: opens it, if it is there, and ends.
int main()
{
    snd_seq_t* sequencer = nullptr;
    if (snd_seq_open(&sequencer, "default", SND_SEQ_OPEN_DUPLEX, SND_SEQ_NONBLOCK) == 0)
        snd_seq_close(sequencer);
    return 0;
}
