#pragma once

#include <QByteArray>
#include <QString>

/// "what: reason of the status", in one line.
[[nodiscard]] QString alsaError(const QByteArray& what, int status);
