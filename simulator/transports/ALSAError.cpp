#include "simulator/transports/ALSAError.h"

#include <alsa/asoundlib.h>

QString alsaError(const QByteArray& what, int status)
{
    return QStringLiteral("%1: %2").arg(QString::fromLocal8Bit(what), QString::fromLocal8Bit(snd_strerror(status)));
}
