#pragma once

/// Turns the vertical travel of a drag into value steps, and keeps the travel that has not made a step yet.
///
/// Units    travel and remainder are in logical pixels, positive downwards; factors are value steps per pixel. Travel
///          comes in parts of a pixel where the screen's ratio is not 1; steps are made of whole pixels alone.
/// Ranges   a range is maximum - minimum of the value.
/// Threads  that of the object.
class DragArithmetic
{
  public:
    /// fine   the user asks for finer steps.
    [[nodiscard]] static constexpr double factor(int range, bool fine)
    {
        if (range >= 1000)
            return fine ? 0.25 : 10.0;
        const double base = range <= 8 ? 0.125 : range <= 16 ? 0.25 : range <= 32 ? 0.5 : 1.0;
        return fine ? base * 0.25 : base;
    }

    /// Forgets the travel kept.
    void reset();

    /// The whole steps that the kept travel and this one make; positive for a drag downwards.
    [[nodiscard]] int steps(double travel, double factor);

    /// The whole pixels that are kept.
    [[nodiscard]] int remainder() const;

  private:
    int m_remainder = 0;
    double m_fraction = 0.0; ///< kept beside it, less than a pixel
};
