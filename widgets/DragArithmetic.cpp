#include "widgets/DragArithmetic.h"

void DragArithmetic::reset()
{
    m_remainder = 0;
}

int DragArithmetic::steps(int travel, double factor)
{
    const double distance = static_cast<double>(travel) + m_remainder;
    const int steps = static_cast<int>(distance * factor);
    m_remainder = static_cast<int>(distance - steps / factor);
    return steps;
}

int DragArithmetic::remainder() const
{
    return m_remainder;
}
