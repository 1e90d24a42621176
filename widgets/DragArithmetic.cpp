#include "widgets/DragArithmetic.h"

#include <cmath>

namespace
{
// Five times four fifths of a pixel are four: what adding them up rounded away must not cost a step.
constexpr double k_tolerance = 1e-6;
} // namespace

void DragArithmetic::reset()
{
    m_remainder = 0;
    m_fraction = 0.0;
}

int DragArithmetic::steps(double travel, double factor)
{
    m_fraction += travel;
    const double pixels = std::trunc(m_fraction + std::copysign(k_tolerance, m_fraction));
    m_fraction -= pixels;
    const double distance = pixels + m_remainder;
    const int steps = static_cast<int>(distance * factor);
    m_remainder = static_cast<int>(distance - steps / factor);
    return steps;
}

int DragArithmetic::remainder() const
{
    return m_remainder;
}
