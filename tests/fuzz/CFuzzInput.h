#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

/// Takes a fuzzed input apart, front to back. What is missing at its end reads as 0.
class CFuzzInput
{
  public:
    using Bytes = std::span<const std::uint8_t>;

    /// data   borrowed; outlives this object and every piece taken from it.
    CFuzzInput(const std::uint8_t* data, std::size_t size) : m_rest(data, size) {}

    [[nodiscard]] bool isEmpty() const
    {
        return m_rest.empty();
    }

    /// 0 to 255.
    int byte()
    {
        const Bytes taken = bytes(1);
        return taken.empty() ? 0 : taken.front();
    }

    /// Two bytes, high one first: 0 to 65535.
    int word()
    {
        const int high = byte();
        return high << 8 | byte();
    }

    /// The next count bytes, or what is left.
    Bytes bytes(std::size_t count)
    {
        const Bytes taken = m_rest.first(std::min(count, m_rest.size()));
        m_rest = m_rest.subspan(taken.size());
        return taken;
    }

    /// Everything that is left.
    Bytes rest()
    {
        return bytes(m_rest.size());
    }

  private:
    Bytes m_rest;
};
