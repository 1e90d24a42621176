#pragma once

#include <QByteArray>
#include <QString>

/// What a user typed, fit to be quoted in one line: anything but printable ASCII becomes "?", and what is longer than
/// 40 characters is cut off with "...".
[[nodiscard]] QString printableText(const QByteArray& typed);
