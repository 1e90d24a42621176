#pragma once

#include <QtGlobal>

/// What this process holds of the system just now (Linux).
struct ProcessResources
{
    qint64 residentKilobytes = 0;
    int threads = 0;
    int descriptors = 0;

    [[nodiscard]] static ProcessResources now();
};
