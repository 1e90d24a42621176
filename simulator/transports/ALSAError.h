#pragma once

#include <QByteArray>
#include <QString>

/// Keeps libasound from printing errors of its own; every failure is told once, by whoever met it.
void silenceALSA();

/// "what: reason of the status", in one line.
[[nodiscard]] QString alsaError(const QByteArray& what, int status);
