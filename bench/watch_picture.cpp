// ktz-bench-picture QUIET-MS PROGRAM [ARGUMENT...]
//
// Starts the program on an X display where nothing else draws, and prints two numbers: the milliseconds from its start
// to the last damage of at least a quarter of its window, and the processor milliseconds that it had used by then.
// The picture stands when no such damage came for QUIET-MS; the program is ended then.

#include "bench/CScreenDamage.h"

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace
{
using Clock = std::chrono::steady_clock;
constexpr int k_longestWait = 20'000; // ms without any picture

double milliseconds(Clock::duration duration)
{
    return std::chrono::duration<double, std::milli>(duration).count();
}

/// What the process's first thread has used of a processor.
double processorMilliseconds(pid_t process)
{
    std::ifstream file("/proc/" + std::to_string(process) + "/schedstat");
    double nanoseconds = 0;
    file >> nanoseconds;
    return nanoseconds / 1e6;
}
} // namespace

int main(int argc, char** argv)
{
    Display* display = XOpenDisplay(nullptr);
    if (argc < 3 || display == nullptr) {
        std::fprintf(stderr, "usage, on an X display: ktz-bench-picture QUIET-MS PROGRAM [ARGUMENT...]\n");
        return 2;
    }
    const int quiet = std::atoi(argv[1]);
    CScreenDamage damage(display);

    const Clock::time_point start = Clock::now();
    const pid_t process = fork();
    if (process == 0) {
        execvp(argv[2], argv + 2);
        _exit(127);
    }

    double picture = 0;
    double processor = 0;
    for (;;) {
        const double now = milliseconds(Clock::now() - start);
        const double left = picture > 0 ? picture + quiet - now : k_longestWait - now;
        if (left <= 0)
            break;
        damage.wait(static_cast<int>(left) + 1);
        bool large = false;
        damage.take(
            [&](const XRectangle& area) { large = large || 4 * area.width * area.height >= damage.largestWindow(); });
        if (large) {
            picture = milliseconds(Clock::now() - start);
            processor = processorMilliseconds(process);
        }
    }
    kill(process, SIGTERM);
    waitpid(process, nullptr, 0);
    XCloseDisplay(display);
    if (picture == 0) {
        std::fprintf(stderr, "ktz-bench-picture: %s showed nothing\n", argv[2]);
        return 1;
    }
    std::printf("%.1f %.1f\n", picture, processor);
}
