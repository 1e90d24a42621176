#include "simulator/transports/ALSAError.h"

#include <alsa/asoundlib.h>

namespace
{
void ignoreError(const char* /*file*/, int /*line*/, const char* /*function*/, int /*status*/, const char* /*format*/,
                 ...)
{
}
} // namespace

void silenceALSA()
{
    snd_lib_error_set_handler(ignoreError);
}

QString alsaError(const QByteArray& what, int status)
{
    return QStringLiteral("%1: %2").arg(QString::fromLocal8Bit(what), QString::fromLocal8Bit(snd_strerror(status)));
}
