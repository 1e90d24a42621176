// ktz-bench-source device|synthesizer
//
// A sequencer client that reports values of eight knobs, as the editor's device, or a synthesizer's volume. Each line
// on standard input, MESSAGES PER-SECOND, has so many sent, evenly; the answer is a line with how many the sequencer
// refused. Ends with its input.

#include "bench/CKnobSource.h"

#include <cstdio>
#include <string>

int main(int argc, char** argv)
{
    const std::string kind = argc == 2 ? argv[1] : "";
    if (kind != "device" && kind != "synthesizer") {
        std::fprintf(stderr, "usage: ktz-bench-source device|synthesizer\n");
        return 2;
    }
    const bool isDevice = kind == "device";
    const CKnobSource source(isDevice ? 8 : 1, isDevice ? CKnobSource::editorsDevice() : CKnobSource::synthesizer());
    std::puts("ready");
    std::fflush(stdout);
    int messages = 0;
    int perSecond = 0;
    while (std::scanf("%d %d", &messages, &perSecond) == 2) {
        source.send(messages, perSecond);
        std::printf("%d\n", source.wait());
        std::fflush(stdout);
    }
}
