#include "app/common/Constants.h"
#include "device/CMemAPIObserver.h"
#include "device/CMemAPIWrapper.h"
#include "device/CMessageManagerWrapper.h"
#include "simulator/device/DeviceMessages.h"
#include "tests/fuzz/CDeviceModel.h"
#include "tests/fuzz/CFuzzInput.h"
#include "tests/fuzz/FuzzTarget.h"

#include <algorithm>
#include <deque>

// Input: which knobs have settings (a bit each), which of the five settings they have and which reply observers there
// are (bits 0 to 4, 5, 6), how many piece lengths follow (its low three bits), that many lengths less one, the stream.

namespace
{
using Bytes = CFuzzInput::Bytes;

/// The stream cut into pieces whose lengths follow one another, over and over; without lengths it stays whole.
std::vector<Bytes> cut(Bytes stream, Bytes lengths)
{
    std::vector<Bytes> pieces;
    while (!stream.empty()) {
        const std::size_t length = lengths.empty() ? stream.size() : lengths[pieces.size() % lengths.size()] + 1u;
        pieces.push_back(stream.first(std::min(length, stream.size())));
        stream = stream.subspan(pieces.back().size());
    }
    return pieces;
}

struct Decoded
{
    bool result = false; ///< of the last piece in which a message ended
    int type = -1;
    ParamList data;

    bool operator==(const Decoded&) const = default;
};

Decoded decode(const std::vector<Bytes>& pieces)
{
    CMessageManagerWrapper codec;
    Decoded decoded;
    for (const Bytes piece : pieces) {
        const bool result =
            codec.parseMessageForMac(piece.data(), static_cast<int>(piece.size()), &decoded.type, &decoded.data);
        const bool ended = std::ranges::find(piece, 0xF7) != piece.end();
        require(ended || !result, "only the end of a message is understood");
        if (ended)
            decoded.result = result;
    }
    return decoded;
}

/// Hears of one parameter and reads it, as a widget does.
class CWatcher : public CMemAPIObserver
{
  public:
    CWatcher(CMemAPIWrapper& memory, int id, std::vector<CDeviceModel::Report>& reports)
        : m_memory(memory), m_id(id), m_reports(reports)
    {
        m_memory.registerObserver(m_id, this);
    }

    void paramChanged() override
    {
        const bool isSetting = isSettingParam(m_id);
        m_reports.push_back({m_id, isSetting ? m_memory.getParam(m_id) : m_memory.getKnob(m_id)});
    }

  private:
    CMemAPIWrapper& m_memory;
    const int m_id;
    std::vector<CDeviceModel::Report>& m_reports;
};

/// Counts replies.
class CCounter : public CMemAPIObserver
{
  public:
    void paramChanged() override
    {
        ++count;
    }

    int count = 0;
};

/// A memory filled as a model is, with an observer for every id of the device and some beside them.
class CWatchedMemory
{
  public:
    explicit CWatchedMemory(const CDeviceModel& model)
    {
        memory.initialize();
        for (const auto& [id, value] : model.settings)
            memory.setParam(id, value);
        if (model.hasStartObserver)
            memory.startReplyObserver().set(&m_starts);
        if (model.hasKeepObserver)
            memory.keepReplyObserver().set(&m_keeps);
        for (int category = k_knobValueCategory; category <= k_ledTypeCategory; category += 100) {
            for (int knob = 0; knob <= k_numOfKnobs; ++knob)
                m_watchers.emplace_back(memory, category + knob, m_reports);
        }
    }

    CDeviceModel::Outcome receive(Bytes packet)
    {
        m_starts.count = m_keeps.count = 0;
        m_reports.clear();
        const bool understood = memory.messageReceived(packet.data(), static_cast<int>(packet.size()));
        return {.understood = understood, .starts = m_starts.count, .keeps = m_keeps.count, .reports = m_reports};
    }

    CMemAPIWrapper memory;

  private:
    CCounter m_starts;
    CCounter m_keeps;
    std::vector<CDeviceModel::Report> m_reports;
    std::deque<CWatcher> m_watchers;
};

/// The settings table by id; of a knob without settings it may hold an empty list.
CDeviceModel::Table settingsOf(const CMemAPIWrapper& memory)
{
    CDeviceModel::Table table;
    const ParamList list = memory.getParamList();
    for (auto knob = list.cbegin(); knob != list.cend(); ++knob) {
        require(isKnob(knob.key().toInt()), "the table holds knobs of the device alone");
        const ParamList settings = knob.value().toMap();
        for (auto it = settings.cbegin(); it != settings.cend(); ++it) {
            const int id = it.key().toInt();
            require(isSettingParam(id) && QString::number(knobOfParam(id)) == knob.key(),
                    "an id is in its knob's list");
            table[id] = it.value().toInt();
        }
    }
    return table;
}

CDeviceModel::Table valuesOf(const CMemAPIWrapper& memory)
{
    CDeviceModel::Table table;
    for (int knob = 0; knob < k_numOfKnobs; ++knob)
        table[k_knobValueCategory + knob] = memory.getKnob(k_knobValueCategory + knob);
    return table;
}

/// What the editor would send of a knob is what its table holds, no byte above 127, to the device and to the editor
/// itself.
void checkSending(const CMemAPIWrapper& memory, int knob)
{
    const CMessageManagerWrapper codec;
    ParamList data;
    require(memory.collectMessageData(k_changeParamMessage, knob, &data), "a knob can be collected");
    QByteArray message(codec.getMessageLen(k_changeParamMessage), '\0');
    int length = static_cast<int>(message.size());
    require(codec.createMessage(k_changeParamMessage, data, reinterpret_cast<unsigned char*>(message.data()), &length),
            "a knob can be encoded");
    require(DeviceMessages::typeOf(message) == DeviceMessages::Type::ChangeParameter &&
                DeviceMessages::knobOf(message) == knob,
            "the device takes the message as one about this knob");
    const KnobSettings settings = DeviceMessages::settingsOf(message);
    for (std::size_t i = 0; i < k_settingCategories.size(); ++i)
        require(settings.*k_deviceSettings[i].member == std::min(memory.getParam(k_settingCategories[i] + knob), 127),
                "the device reads the values that the table holds");
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    CFuzzInput input(data, size);
    const int knobs = input.byte();
    const int presence = input.byte();
    const Bytes lengths = input.bytes(static_cast<std::size_t>(input.byte()) % 8);
    const Bytes stream = input.rest();
    const std::vector<Bytes> pieces = cut(stream, lengths);
    require(decode(pieces) == decode(cut(stream, {})), "cuts do not change what is decoded");

    CDeviceModel model;
    model.hasStartObserver = (presence >> 5 & 1) != 0;
    model.hasKeepObserver = (presence >> 6 & 1) != 0;
    for (int knob = 0; knob < k_numOfKnobs; ++knob) {
        model.values[k_knobValueCategory + knob] = 0;
        for (std::size_t i = 0; i < k_settingCategories.size(); ++i) {
            if ((knobs >> knob & 1) != 0 && (presence >> i & 1) != 0)
                model.settings[k_settingCategories[i] + knob] = k_defaultParamList[static_cast<std::size_t>(knob)][i];
        }
    }

    CWatchedMemory watched(model);
    for (const Bytes piece : pieces)
        require(watched.receive(piece) == model.receive(piece), "a packet is dealt with as the model says");
    require(settingsOf(watched.memory) == model.settings, "the settings are what the model says");
    require(valuesOf(watched.memory) == model.values, "the knob values are what the model says");
    for (int knob = 0; knob < k_numOfKnobs; ++knob)
        checkSending(watched.memory, knob);
    return 0;
}
