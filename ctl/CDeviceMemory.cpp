#include "ctl/CDeviceMemory.h"

#include "ctl/CWireListener.h"
#include "device/CMessageManagerWrapper.h"
#include "midi/CMIDIPort.h"

namespace
{
const unsigned char* bytesOf(const QByteArray& message)
{
    return reinterpret_cast<const unsigned char*>(message.constData());
}

/// The type that a message says it has, or -1, and its data.
int typeOf(const QByteArray& message, ParamList* data)
{
    int type = -1;
    return CMessageManagerWrapper().parseMessage(bytesOf(message), int(message.size()), &type, data) ? type : -1;
}

bool isRequestAll(const QByteArray& message)
{
    const CMessageManagerWrapper codec;
    int len = codec.getMessageLen(k_requestAllParamMessage);
    QByteArray request(len, '\0');
    return codec.createRequestAllParamMessage(reinterpret_cast<unsigned char*>(request.data()), &len) &&
           request == message;
}

/// Tells of each message that it decodes.
class CListenedCodec : public CMessageManagerWrapper
{
  public:
    explicit CListenedCodec(CWireListener& listener) : m_listener(listener) {}

    bool parseMessage(const unsigned char* msg, int len, int* type, ParamList* data) const override
    {
        int own = -1;
        ParamList said;
        const bool parsed = CMessageManagerWrapper::parseMessage(msg, len, &own, &said);
        m_listener.messageReceived(QByteArray(reinterpret_cast<const char*>(msg), len), parsed ? own : -1, said);
        return CMessageManagerWrapper::parseMessage(msg, len, type, data);
    }

  private:
    CWireListener& m_listener;
};
} // namespace

CDeviceMemory::CDeviceMemory()
{
    createTables();
}

CDeviceMemory::CDeviceMemory(const QString& portName, CWireListener& listener)
    : CMemAPIWrapper(portName), m_listener(&listener)
{
    createTables();
    m_codec = std::make_unique<CListenedCodec>(listener);
    // Reports fall on settings that are there.
    take(factoryTable());
    // Whatever name was asked for, the device's or another.
    openPorts(std::make_unique<CMIDIPort>());
}

CDeviceMemory::~CDeviceMemory()
{
    // Joins the delivery thread, which calls this object's virtual functions.
    closePorts();
}

bool CDeviceMemory::developMessageData(int type, const ParamList& data)
{
    const bool known = CMemAPIWrapper::developMessageData(type, data);
    if (m_listener != nullptr)
        m_listener->messageTaken(data);
    return known;
}

bool CDeviceMemory::sendBytes(CMIDIOutput& output, const QByteArray& message)
{
    m_listener->messageSent(message);
    return CMemAPIWrapper::sendBytes(output, message);
}

void CDeviceMemory::take(const SettingsTable& table)
{
    for (std::size_t knob = 0; knob < table.size(); ++knob) {
        for (std::size_t setting = 0; setting < k_numOfSettings; ++setting) {
            if (table[knob][setting])
                setParam(paramIdOf(knob, setting), *table[knob][setting]);
        }
    }
}

QByteArray CDeviceMemory::changeMessage(std::size_t knob, const KnobSettingsRow& settings)
{
    CDeviceMemory memory;
    SettingsTable table;
    table[knob] = settings;
    memory.take(table);
    ParamList data;
    int len = memory.m_codec->getMessageLen(k_changeParamMessage);
    QByteArray message(len, '\0');
    const bool isMade = memory.collectMessageData(k_changeParamMessage, int(knob), &data) &&
                        memory.m_codec->createMessage(k_changeParamMessage, data,
                                                      reinterpret_cast<unsigned char*>(message.data()), &len);
    return isMade ? message : QByteArray();
}

QString CDeviceMemory::nameOf(const QByteArray& message)
{
    ParamList data;
    switch (typeOf(message, &data)) {
    case k_startMessage:
        return QStringLiteral("start");
    case k_keepMessage:
        return QStringLiteral("keep");
    case k_endMessage:
        return QStringLiteral("end");
    case k_changeParamMessage:
        return QStringLiteral("change parameter, knob %1").arg(data.firstKey().toInt() + 1);
    case k_noticeValueMessage:
        return QStringLiteral("notice value, knob %1").arg(data.firstKey().toInt() - k_knobValueCategory + 1);
    default:
        return isRequestAll(message) ? QStringLiteral("request all") : QStringLiteral("unknown");
    }
}
