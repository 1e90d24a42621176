#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

/// The entry of every fuzz target: runs one input, whatever it holds, and ends the process when something is wrong.
/// It keeps nothing from one call to the next, so that an input that failed fails again alone.
///
/// data   borrowed for the call; may be null when size is 0.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

/// Ends the process with a line that says what is wrong, unless it holds.
inline void require(bool holds, const char* what)
{
    if (holds)
        return;
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::abort();
}
