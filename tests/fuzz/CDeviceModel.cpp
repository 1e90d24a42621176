#include "tests/fuzz/CDeviceModel.h"

#include <algorithm>
#include <array>

namespace
{
constexpr std::array<std::uint8_t, 7> k_header{0xF0, 0x43, 0x10, 0x3E, 0x18, 0x05, 0x02};
constexpr int k_knobs = 8;

enum Kind
{
    k_start,
    k_keep,
    k_end,
    k_change,
    k_notice,
    k_kinds
};
} // namespace

CDeviceModel::Outcome CDeviceModel::receive(std::span<const std::uint8_t> packet)
{
    if (packet.size() == 1 && packet.front() >= 0xF8)
        return {}; // clock and the like, wherever they come
    Said said;
    std::optional<int> kind; // of the last message
    for (const std::uint8_t byte : packet) {
        if (byte == k_header.front())
            m_message.clear();
        m_message.push_back(byte);
        if (byte == 0xF7)
            kind = read(&said);
    }

    if (!kind)
        return {};
    switch (*kind) {
    case k_start:
        return {.understood = hasStartObserver, .starts = hasStartObserver ? 1 : 0};
    case k_keep:
        return {.understood = hasKeepObserver, .keeps = hasKeepObserver ? 1 : 0};
    case k_change:
        return {.understood = true, .reports = change(said.changes)};
    case k_notice:
        return {.understood = true, .reports = notice(said.notices)};
    default:
        return {.understood = true};
    }
}

std::optional<int> CDeviceModel::read(Said* said) const
{
    if (m_message.size() <= k_header.size() || !std::equal(k_header.begin(), k_header.end(), m_message.begin()))
        return {};
    const int kind = m_message[7];
    if (kind >= k_kinds)
        return {};
    if (kind != k_change && kind != k_notice)
        return kind;
    // The knob, its values, the end; further bytes before the end say nothing.
    const std::size_t count = kind == k_change ? 5 : 1;
    if (m_message.size() < 9 + count + 1)
        return {};
    const auto first = m_message.begin() + 9;
    Data& data = kind == k_change ? said->changes : said->notices;
    data[m_message[8]] = std::vector<int>(first, first + static_cast<std::ptrdiff_t>(count));
    return kind;
}

std::vector<CDeviceModel::Report> CDeviceModel::change(const Data& changes)
{
    std::vector<Report> reports;
    for (const auto& [knob, given] : changes) {
        auto next = given.begin();
        for (auto& [id, value] : settings) {
            if (id % 100 != knob)
                continue;
            value = *next++;
            reports.push_back({id, value});
        }
    }
    return reports;
}

std::vector<CDeviceModel::Report> CDeviceModel::notice(const Data& notices)
{
    std::vector<Report> reports;
    for (const auto& [knob, given] : notices) {
        if (knob >= k_knobs)
            continue;
        values[1000 + knob] = given.front();
        reports.push_back({1000 + knob, given.front()});
    }
    return reports;
}
