// ktz-bench-drag X Y MOVES
//
// Presses the left button at a place of the largest window on an X display, moves the pointer up and down by turns, and
// releases. Prints the median and the 99th of a hundred of the milliseconds from a movement until pixels around that
// place have changed on the screen, and how many movements changed none within a second.

#include "bench/CScreenDamage.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>

namespace
{
using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr int k_step = 5;    // pixels: a value changes by several steps, and a handle moves
constexpr int k_around = 50; // pixels on each side of the place that are looked at
constexpr milliseconds k_patience(1000);

struct Place
{
    int x;
    int y;
};

/// The root's largest child, and its corner on the screen.
Place cornerOfLargestWindow(Display* display)
{
    Window root = 0;
    Window parent = 0;
    Window* children = nullptr;
    unsigned int count = 0;
    XQueryTree(display, DefaultRootWindow(display), &root, &parent, &children, &count);
    Place corner{0, 0};
    int largest = 0;
    for (unsigned int n = 0; n < count; ++n) {
        XWindowAttributes window;
        XGetWindowAttributes(display, children[n], &window);
        if (window.map_state != IsViewable || window.width * window.height <= largest)
            continue;
        largest = window.width * window.height;
        corner = {window.x, window.y};
    }
    XFree(children);
    return corner;
}

class CDrag
{
  public:
    CDrag(Display* display, const Place& place) : m_display(display), m_place(place), m_damage(display) {}

    void press()
    {
        XTestFakeMotionEvent(m_display, -1, m_place.x, m_place.y, CurrentTime);
        XTestFakeButtonEvent(m_display, 1, True, CurrentTime);
        XSync(m_display, False);
        std::this_thread::sleep_for(milliseconds(500));
    }

    void release()
    {
        XTestFakeButtonEvent(m_display, 1, False, CurrentTime);
        XSync(m_display, False);
    }

    /// Milliseconds until the pixels have changed; nothing when they do not.
    std::optional<double> move(int pixelsDown)
    {
        const std::string before = pixels();
        m_damage.take([](const XRectangle& /*area*/) {});
        const Clock::time_point moved = Clock::now();
        XTestFakeRelativeMotionEvent(m_display, 0, pixelsDown, CurrentTime);
        XFlush(m_display);
        while (Clock::now() - moved < k_patience) {
            m_damage.wait(static_cast<int>(k_patience.count()));
            const std::chrono::duration<double, std::milli> time = Clock::now() - moved;
            bool near = false;
            m_damage.take([&](const XRectangle& area) { near = near || isNear(area); });
            if (near && pixels() != before)
                return time.count();
        }
        return std::nullopt;
    }

  private:
    [[nodiscard]] bool isNear(const XRectangle& area) const
    {
        return area.x < m_place.x + k_around && area.x + area.width > m_place.x - k_around &&
               area.y < m_place.y + k_around && area.y + area.height > m_place.y - k_around;
    }

    [[nodiscard]] std::string pixels() const
    {
        XImage* image = XGetImage(m_display, DefaultRootWindow(m_display), std::max(0, m_place.x - k_around),
                                  std::max(0, m_place.y - k_around), 2 * k_around, 2 * k_around, AllPlanes, ZPixmap);
        std::string result(image->data, static_cast<std::size_t>(image->bytes_per_line * image->height));
        XDestroyImage(image);
        return result;
    }

    Display* m_display;
    const Place m_place;
    CScreenDamage m_damage;
};
} // namespace

int main(int argc, char** argv)
{
    Display* display = XOpenDisplay(nullptr);
    const int moves = argc == 4 ? std::atoi(argv[3]) : 0;
    if (moves < 1 || display == nullptr) {
        std::fprintf(stderr, "usage, on an X display: ktz-bench-drag X Y MOVES\n");
        return 2;
    }
    const Place corner = cornerOfLargestWindow(display);
    CDrag drag(display, {corner.x + std::atoi(argv[1]), corner.y + std::atoi(argv[2])});
    std::vector<double> times;
    int unchanged = 0;
    drag.press();
    for (int n = 0; n < moves; ++n) {
        const std::optional<double> time = drag.move(n % 2 == 0 ? k_step : -k_step);
        if (time)
            times.push_back(*time);
        else
            ++unchanged;
        // Not in step with anybody's frames.
        std::this_thread::sleep_for(milliseconds(25 + n % 17));
    }
    drag.release();
    XCloseDisplay(display);
    std::sort(times.begin(), times.end());
    const auto quantile = [&times](double part) {
        return times.empty() ? 0 : times[static_cast<std::size_t>(part * static_cast<double>(times.size() - 1))];
    };
    std::printf("%.3f %.3f %d\n", quantile(0.5), quantile(0.99), unchanged);
}
