#pragma once

#include <QString>

/// A number as text, as printf() makes it of a format with at most one conversion of a double: "%.0f", "ch %02.1lf %%".
/// The decimal point is a point in every language.
///
/// A long double's "L" counts as nothing, since the number is a double. A format that printf() would read anything else
/// for, such as a second number, counts as "%.0f". Any thread, while none sets the locale.
[[nodiscard]] QString numberText(const QString& format, double number);
