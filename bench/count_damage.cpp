// ktz-bench-damage SECONDS
//
// Prints how many rectangles were drawn on an X display in so many seconds, and how many pixels they had together.

#include "bench/CScreenDamage.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>

int main(int argc, char** argv)
{
    using Clock = std::chrono::steady_clock;
    const int seconds = argc == 2 ? std::atoi(argv[1]) : 0;
    Display* display = XOpenDisplay(nullptr);
    if (seconds < 1 || display == nullptr) {
        std::fprintf(stderr, "usage, on an X display: ktz-bench-damage SECONDS\n");
        return 2;
    }
    CScreenDamage damage(display);
    const Clock::time_point end = Clock::now() + std::chrono::seconds(seconds);
    long rectangles = 0;
    long pixels = 0;
    while (Clock::now() < end) {
        damage.wait(100);
        damage.take([&](const XRectangle& area) {
            ++rectangles;
            pixels += static_cast<long>(area.width) * area.height;
        });
    }
    XCloseDisplay(display);
    std::printf("%ld %ld\n", rectangles, pixels);
}
