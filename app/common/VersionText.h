#pragma once

#include "app/common/Constants.h"

/// What a program says of itself when it is asked for its version, with a line break at the end.
inline QString versionText(const QString& program)
{
    return QStringLiteral("%1 (KTZ-JX Editor) %2\n%3\nMIT licence; there is no warranty.\n")
        .arg(program, QStringLiteral(KTZ_VERSION), k_copyright);
}
