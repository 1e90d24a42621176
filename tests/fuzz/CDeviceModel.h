#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <vector>

/// What a stream of the device's bytes does to an editor, told a second time for comparison: with numbers instead of
/// lists under text keys, and without any limit on a message. It shares no code with device/.
class CDeviceModel
{
  public:
    using Table = std::map<int, int>; ///< value by id

    /// One call of an observer.
    struct Report
    {
        int id = 0;
        int value = 0; ///< what the observer reads when it is called

        bool operator==(const Report&) const = default;
    };

    /// What a packet leads to.
    struct Outcome
    {
        bool understood = false; ///< what messageReceived() returns
        int starts = 0;          ///< calls of the start-reply observer
        int keeps = 0;           ///< calls of the keep-reply observer
        std::vector<Report> reports{};

        bool operator==(const Outcome&) const = default;
    };

    /// Takes one packet: all its messages count as of the kind of its last one, and none does if that is broken.
    Outcome receive(std::span<const std::uint8_t> packet);

    Table settings; ///< a knob's values arrive at the ids that it has here, lowest first
    Table values;
    bool hasStartObserver = false;
    bool hasKeepObserver = false;

  private:
    using Data = std::map<int, std::vector<int>>; ///< a knob's values, by knob

    /// What the messages of one packet say.
    struct Said
    {
        Data changes;
        Data notices;
    };

    /// Reads the message received so far. Nothing: it is no message.
    std::optional<int> read(Said* said) const;
    [[nodiscard]] std::vector<Report> change(const Data& changes);
    [[nodiscard]] std::vector<Report> notice(const Data& notices);

    std::vector<std::uint8_t> m_message;
};
