#pragma once

#include <QString>

/// A number as text, by a printf-style format with exactly one conversion of a floating-point number, as "%.0f" or
/// "ch %02.0f %%". Any other format would read what was never passed; it counts as "%.0f".
[[nodiscard]] QString numberText(const QString& format, double number);
