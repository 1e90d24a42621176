#include "midi/CMIDITransportObserver.h"
#include "tests/fuzz/CFuzzInput.h"
#include "tests/fuzz/FuzzTarget.h"
#include "tests/midi/CMIDITestInput.h"

#include <array>
#include <deque>
#include <numeric>
#include <vector>

// Input: what to exercise (low bit), the size of the ring, and operations until the end, each with what it needs.

namespace
{
constexpr int k_patterns = 251; // a prime, so that no pattern repeats with a power of two

/// Bytes that go on like a running number; those of a pattern begin at its number.
const unsigned char* pattern(int number)
{
    static const auto bytes = [] {
        std::array<unsigned char, CMIDIInput::k_largestRecord + k_patterns> made{};
        for (std::size_t i = 0; i < made.size(); ++i)
            made[i] = static_cast<unsigned char>(i % k_patterns);
        return made;
    }();
    return bytes.data() + number % k_patterns;
}

/// Writes and reads of any size, against a plain queue.
void exerciseRing(CFuzzInput& input)
{
    const int size = 1 + input.byte();
    CCircularBuffer ring(true);
    ring.initialize(size);
    std::deque<unsigned char> model;
    int number = 0;
    while (!input.isEmpty()) {
        const int operation = input.byte();
        const int asked = input.byte() - 8; // now and then less than nothing
        const bool isNull = (operation & 2) != 0;
        if ((operation & 1) == 0) {
            const unsigned char* const source = pattern(++number);
            const int stored = isNull ? 0 : std::clamp(asked, 0, size - static_cast<int>(model.size()));
            require(ring.write(isNull ? nullptr : source, asked) == stored, "a write stores what fits");
            model.insert(model.end(), source, source + stored);
        } else {
            std::vector<unsigned char> taken(static_cast<std::size_t>(std::max(asked, 1)), 0xFF);
            const int count = isNull ? 0 : std::clamp(asked, 0, static_cast<int>(model.size()));
            require(ring.read(isNull ? nullptr : taken.data(), asked) == count, "a read takes what is there");
            require(std::equal(model.begin(), model.begin() + count, taken.begin()), "bytes come out in order");
            require(std::all_of(taken.begin() + count, taken.end(), [](int byte) { return byte == 0xFF; }),
                    "nothing is written beyond what was taken");
            model.erase(model.begin(), model.begin() + count);
        }
        require(ring.avail() == static_cast<int>(model.size()), "the unread bytes are counted");
        require(ring.space() == size - ring.avail() && ring.size() == size, "the free bytes are counted");
    }
}

/// A record that is still to come out.
struct Record
{
    int length = 0;
    int number = 0;
};

/// Records of any size through an input port and its drain, against a plain queue; the observer itself causes more.
class CRecordExercise : public CMIDITransportObserver
{
  public:
    explicit CRecordExercise(CFuzzInput& input) : m_input(input), m_size(1 + 2 * input.word()), m_port(m_size)
    {
        m_port.initialize();
        m_port.registerObserver(this);
    }

    void run()
    {
        while (!m_input.isEmpty()) {
            switch (m_input.byte() % 8) {
            case 0:
                readOne();
                break;
            case 1:
                drain();
                break;
            case 2:
                dropAll();
                break;
            case 3:
                readToNowhere();
                break;
            default:
                write();
            }
            require(m_port.ring()->avail() == m_used, "the ring holds whole records and nothing else");
        }
        drain();
    }

    bool messageReceived(const unsigned char* data, int size) override
    {
        require(!m_records.empty(), "no record comes out of nowhere");
        const Record record = take();
        require(size == record.length, "a record keeps its length");
        require(std::equal(data, data + size, pattern(record.number)), "a record keeps its bytes, in order");
        if (m_input.byte() % 4 == 1)
            write(); // comes in during the drain
        return true;
    }

  private:
    static int bytesInRing(int length)
    {
        return length + 2;
    }

    Record take()
    {
        const Record record = m_records.front();
        m_records.pop_front();
        m_used -= bytesInRing(record.length);
        return record;
    }

    void write()
    {
        const int length = m_input.word();
        ++m_number;
        const bool fits = length > 0 && bytesInRing(length) <= m_size - m_used;
        require(m_port.writeRecord(pattern(m_number), static_cast<quint16>(length)) == fits,
                "a record is stored whole or not at all");
        if (!fits)
            return;
        m_records.push_back({length, m_number});
        m_used += bytesInRing(length);
    }

    void readOne()
    {
        const int upperBits = m_input.byte() << 16;
        const bool isEmpty = m_records.empty();
        const Record record = isEmpty ? Record() : take();
        std::vector<unsigned char> taken(static_cast<std::size_t>(std::max(record.length, 1))); // not a byte too many
        int size = upperBits | 0x1234;
        m_port.readMessageFromBuffer(taken.data(), &size);
        require(size == (upperBits | record.length), "the length is the low half, the high half stays");
        require(std::equal(taken.begin(), taken.begin() + record.length, pattern(record.number)),
                "a record keeps its bytes, in order");
    }

    void drain()
    {
        m_port.messageReceived();
        require(m_records.empty(), "a drain hands everything out");
    }

    void dropAll()
    {
        m_port.unregisterObserver();
        m_port.messageReceived();
        m_port.registerObserver(this);
        m_records.clear();
        m_used = 0;
    }

    void readToNowhere()
    {
        std::vector<unsigned char> taken(1);
        int size = 0;
        m_port.readMessageFromBuffer(nullptr, &size);
        m_port.readMessageFromBuffer(taken.data(), nullptr);
        require(size == 0 && taken.front() == 0, "without a place to go to, nothing is read");
    }

    CFuzzInput& m_input;
    const int m_size;
    CMIDITestInput m_port;
    std::deque<Record> m_records;
    int m_used = 0; ///< bytes of the ring
    int m_number = 0;
};
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    CFuzzInput input(data, size);
    if ((input.byte() & 1) == 0)
        exerciseRing(input);
    else
        CRecordExercise(input).run();
    return 0;
}
