#include "widgets/KnobLEDIndex.h"

#include "device/DeviceParams.h"

namespace
{
template <std::size_t rows>
int indexOf(int value, const std::array<int, rows>& min, const std::array<int, rows>& max,
            const std::array<int, rows>& index)
{
    for (std::size_t row = 0; row < rows; ++row) {
        if (value >= min[row] && value <= max[row])
            return index[row];
    }
    return 0;
}
} // namespace

int knobLEDIndex(int ledType, int value)
{
    switch (ledType) {
    case k_ledAscent:
        return indexOf(value, k_minAscentDescendParam, k_maxAscentDescendParam, k_ascentIndex);
    case k_ledDescend:
        return indexOf(value, k_minAscentDescendParam, k_maxAscentDescendParam, k_descendIndex);
    case k_ledConcave:
        return indexOf(value, k_minConcaveConvexParam, k_maxConcaveConvexParam, k_concaveIndex);
    case k_ledConvex:
        return indexOf(value, k_minConcaveConvexParam, k_maxConcaveConvexParam, k_convexIndex);
    default:
        return 0;
    }
}
