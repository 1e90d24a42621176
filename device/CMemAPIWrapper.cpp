#include "device/CMemAPIWrapper.h"

#include "device/CMessageManagerWrapper.h"
#include "device/CParamManagerWrapper.h"
#include "midi/CMIDIOutput.h"
#include "midi/CMIDIPortWrapper.h"

#include <algorithm>

CMemAPIWrapper::CMemAPIWrapper(const QString& portName) : m_portName(portName) {}

CMemAPIWrapper::~CMemAPIWrapper()
{
    // Joins the delivery thread while the tables that it writes are still there.
    closePorts();
}

void CMemAPIWrapper::initialize()
{
    createTables();
    openPorts(std::make_unique<CMIDIPortWrapper>());
}

void CMemAPIWrapper::createTables()
{
    m_codec = std::make_unique<CMessageManagerWrapper>();
    m_store = std::make_unique<CParamManagerWrapper>();
    m_copyBuffer = std::make_unique<CParamManager>();
    m_knobValues = std::make_unique<CParamManager>();
}

void CMemAPIWrapper::openPorts(std::unique_ptr<CMIDIPort> directory)
{
    // After the tables, since a device may report as soon as its port is open.
    createPortDirectory(std::move(directory));
    // An absent device is no error here: isConnectOutput() tells.
    const bool hears = openInput(m_portName);
    openOutput(m_portName);
    // Another program may hold the input: a device that cannot be heard is as good as none.
    if (!hears)
        closeOutput(m_portName);
}

CParamManagerWrapper* CMemAPIWrapper::settings() const
{
    return static_cast<CParamManagerWrapper*>(m_store.get());
}

int CMemAPIWrapper::getParam(int id) const
{
    return id != 0 && settings() ? settings()->getParam(knobOfParam(id), id) : 0;
}

void CMemAPIWrapper::setParam(int id, int value)
{
    setParam(knobOfParam(id), id, value);
}

void CMemAPIWrapper::setParam(int knob, int id, int value)
{
    // A key that is no setting would shift every list that is moved by position.
    if (isSettingParam(id) && knob == knobOfParam(id) && settings())
        settings()->setParam(knob, id, value);
}

int CMemAPIWrapper::getKnob(int id) const
{
    return id != 0 && m_knobValues ? m_knobValues->getParam(id) : 0;
}

void CMemAPIWrapper::setKnob(int id, int value)
{
    if (id != 0 && m_knobValues)
        m_knobValues->setParam(id, value);
}

void CMemAPIWrapper::updateKnob(int knob)
{
    if (settings())
        notifyEntries(settings()->getParamListFromKnob(knob));
}

void CMemAPIWrapper::sendKnob(int knob)
{
    sendMessage(k_changeParamMessage, knob);
}

void CMemAPIWrapper::updateAndSendAllKnobs()
{
    for (int knob = 0; knob < k_numOfKnobs; ++knob) {
        updateKnob(knob);
        sendKnob(knob);
    }
}

bool CMemAPIWrapper::sendMessage(int type, int id)
{
    return sendMessage(m_portName, type, id);
}

bool CMemAPIWrapper::requestAllParam()
{
    CMIDIOutput* output = getMidiOutputByString(m_portName);
    const auto* codec = dynamic_cast<const CMessageManagerWrapper*>(m_codec.get());
    if (output == nullptr || codec == nullptr)
        return true;

    int len = codec->getMessageLen(k_requestAllParamMessage);
    QByteArray message(len, '\0');
    return codec->createRequestAllParamMessage(reinterpret_cast<unsigned char*>(message.data()), &len) &&
           sendBytes(*output, message);
}

void CMemAPIWrapper::backupParams()
{
    m_backup = getParamList();
}

void CMemAPIWrapper::revertParams()
{
    setParamList(m_backup);
    updateAndSendAllKnobs();
}

void CMemAPIWrapper::copyParamListFromKnobValueList(int knob)
{
    if (settings() && m_copyBuffer)
        m_copyBuffer->setParamList(settings()->getParamListFromKnob(knob));
}

void CMemAPIWrapper::pasteParamListToKnobValueList(int knob)
{
    if (!settings() || !m_copyBuffer)
        return;
    settings()->setParamListToKnob(knob, m_copyBuffer->getParamList());
    updateKnob(knob);
    sendKnob(knob);
}

bool CMemAPIWrapper::collectMessageData(int type, int id, ParamList* data) const
{
    if (data == nullptr)
        return false;
    if (type != k_changeParamMessage || !settings())
        return CMemAPI::collectMessageData(type, id, data);
    const int knob = knobOfParam(id);
    ParamList list = settings()->getParamListFromKnob(knob);
    // A device may have reported a value above 127, which on its way back would break the message off.
    for (QVariant& value : list) {
        if (value.toInt() > k_highestByte)
            value = k_highestByte;
    }
    data->insert(paramKey(knob), list);
    return true;
}

bool CMemAPIWrapper::developMessageData(int type, const ParamList& data)
{
    switch (type) {
    case k_changeParamMessage:
        developChangeParam(data);
        return true;
    case k_noticeValueMessage:
        developNoticeValue(data);
        return true;
    default:
        return CMemAPI::developMessageData(type, data);
    }
}

void CMemAPIWrapper::developChangeParam(const ParamList& data)
{
    for (auto it = data.cbegin(); it != data.cend(); ++it) {
        const int knob = it.key().toInt();
        if (!isKnob(knob) || !settings())
            continue;
        takeReportedSettings(knob, it.value().toMap());
        updateKnob(knob);
    }
}

void CMemAPIWrapper::takeReportedSettings(int knob, const ParamList& list)
{
    const std::scoped_lock lock(*settings());
    const ParamList before = settings()->getParamListFromKnob(knob);
    const bool wasDirty = settings()->isDirty();
    settings()->setParamListToKnob(knob, list);
    // A report of what is known already changes nothing that could be saved.
    const auto isSame = [](const QVariant& left, const QVariant& right) { return left.toInt() == right.toInt(); };
    if (std::ranges::equal(before, settings()->getParamListFromKnob(knob), isSame))
        settings()->setDirty(wasDirty);
}

void CMemAPIWrapper::developNoticeValue(const ParamList& data)
{
    for (auto it = data.cbegin(); it != data.cend(); ++it) {
        const int id = it.key().toInt();
        if (!isKnob(id - k_knobValueCategory))
            continue;
        setKnob(id, it.value().toInt());
        notifyParamChabgedById(id);
    }
}

bool CMemAPIWrapper::isEditable(int id) const
{
    return isSettingParam(id);
}

bool CMemAPIWrapper::isConnectOutput() const
{
    return isConnectOutput(m_portName);
}
