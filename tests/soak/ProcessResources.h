#pragma once

#include <QtGlobal>

/// What this process holds of the system just now (Linux), without the threads on which Qt converts large pictures:
/// they come and go as it likes.
struct ProcessResources
{
    qint64 residentKilobytes = 0;
    int threads = 0;
    int descriptors = 0;

    [[nodiscard]] static ProcessResources now();
};
