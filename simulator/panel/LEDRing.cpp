#include "simulator/panel/LEDRing.h"

#include <algorithm>
#include <array>

namespace
{
constexpr int k_together = 3; // LEDs that go on and off as one
constexpr int k_groups = LEDRing::k_leds / k_together;

using Steps = std::array<int, k_groups>; // the values with which one group more, or less, is lit

constexpr Steps k_risesToTheEnd{1, 33, 64, 95, 127};
constexpr Steps k_risesToTheMiddle{1, 17, 33, 49, 64};
constexpr Steps k_fallsFromTheMiddle{65, 79, 95, 111, 127};

int passed(const Steps& steps, int value)
{
    return static_cast<int>(std::ranges::count_if(steps, [value](int step) { return step <= value; }));
}

int litGroups(int ledType, int value)
{
    const int hill = passed(k_risesToTheMiddle, value) - passed(k_fallsFromTheMiddle, value);
    switch (ledType) {
    case 0:
        return passed(k_risesToTheEnd, value);
    case 1:
        return k_groups - passed(k_risesToTheEnd, value);
    case 2:
        return k_groups - hill;
    case 3:
        return hill;
    default:
        return 0;
    }
}
} // namespace

int LEDRing::lit(int ledType, int value)
{
    return k_together * litGroups(ledType, value);
}
