#include "device/CMemAPI.h"

#include "midi/CMIDIInput.h"
#include "midi/CMIDIOutput.h"
#include "midi/CMIDIPort.h"
#include "midi/MIDIPlatform.h"

CMemAPI::CMemAPI() = default;

CMemAPI::~CMemAPI()
{
    closePorts();
}

void CMemAPI::initialize(std::unique_ptr<CMessageManager> codec)
{
    m_codec = std::move(codec);
    m_store = std::make_unique<CParamManager>();
    createPortDirectory(std::make_unique<CMIDIPort>());
}

void CMemAPI::createPortDirectory(std::unique_ptr<CMIDIPort> directory)
{
    directory->createInputPortList();
    directory->createOutputPortList();
    const std::scoped_lock lock(m_portsMutex);
    m_portDirectory = std::move(directory);
}

void CMemAPI::registerObserver(int id, CMemAPIObserver* observer)
{
    if (id != 0)
        m_observers.add(id, observer);
}

void CMemAPI::unregisterObserver(int id, CMemAPIObserver* observer)
{
    if (id != 0)
        m_observers.remove(id, observer);
}

void CMemAPI::notifyParamChabgedById(int id)
{
    m_observers.notify(id);
}

void CMemAPI::setParam(int id, int value)
{
    if (id == 0 || !m_store)
        return;
    m_store->setParam(id, value);
    notifyParamChabgedById(id);
}

int CMemAPI::getParam(int id) const
{
    return m_store ? m_store->getParam(id) : 0;
}

ParamList CMemAPI::getParamList() const
{
    return m_store ? m_store->getParamList() : ParamList();
}

void CMemAPI::setParamList(const ParamList& list)
{
    if (m_store)
        m_store->setParamList(list);
}

bool CMemAPI::loadParamList(const std::function<bool()>& load)
{
    if (!m_store)
        return load();
    bool loaded = false;
    {
        const std::scoped_lock lock(*m_store);
        const ParamList before = m_store->getParamList();
        const bool wasDirty = m_store->isDirty();
        loaded = load();
        m_store->setParamList(completed(m_store->getParamList(), before));
        m_store->setDirty(!loaded && wasDirty);
    }
    notifyEntries(getParamList());
    return loaded;
}

void CMemAPI::notifyEntries(const ParamList& list)
{
    for (auto it = list.cbegin(); it != list.cend(); ++it) {
        if (it.value().typeId() == QMetaType::QVariantMap)
            notifyEntries(it.value().toMap());
        else
            notifyParamChabgedById(it.key().toInt());
    }
}

bool CMemAPI::isDirty() const
{
    return m_store && m_store->isDirty();
}

void CMemAPI::setDirty(bool dirty)
{
    if (m_store)
        m_store->setDirty(dirty);
}

bool CMemAPI::openInput(const QString& name)
{
    CMIDIInput* input = nullptr;
    int index = -1;
    {
        const std::scoped_lock lock(m_portsMutex);
        index = m_portDirectory ? m_portDirectory->getInputPortByName(name) : -1;
        if (index < 0)
            return false;
        std::unique_ptr<CMIDIInput>& kept = m_inputs[index];
        if (!kept) {
            kept = MIDIPlatform::createInput();
            kept->initialize(); // a failure shows in openPort()
            kept->registerObserver(this);
        }
        input = kept.get();
    }
    const bool opened = input->openPort(index);
    if (!opened)
        input->closePort();
    return opened;
}

bool CMemAPI::openOutput(const QString& name)
{
    CMIDIOutput* output = nullptr;
    int index = -1;
    {
        const std::scoped_lock lock(m_portsMutex);
        index = m_portDirectory ? m_portDirectory->getOutputPortByName(name) : -1;
        if (index < 0)
            return false;
        std::unique_ptr<CMIDIOutput>& kept = m_outputs[index];
        if (!kept) {
            kept = MIDIPlatform::createOutput();
            kept->initialize(); // a failure shows in openPort()
        }
        output = kept.get();
    }
    const std::scoped_lock lock(m_sendMutex);
    const bool opened = output->openPort(index);
    if (!opened)
        output->closePort();
    return opened;
}

void CMemAPI::closeInput(const QString& name)
{
    if (CMIDIInput* input = getMidiInputByString(name))
        input->closePort();
}

void CMemAPI::closeOutput(const QString& name)
{
    CMIDIOutput* output = getMidiOutputByString(name);
    if (output == nullptr)
        return;
    const std::scoped_lock lock(m_sendMutex);
    output->closePort();
}

void CMemAPI::closePorts()
{
    for (const auto& [index, input] : m_inputs)
        input->closePort();
    const std::scoped_lock lock(m_sendMutex);
    for (const auto& [index, output] : m_outputs)
        output->closePort();
}

CMIDIInput* CMemAPI::getMidiInputByString(const QString& name) const
{
    const std::scoped_lock lock(m_portsMutex);
    const auto found = m_portDirectory ? m_inputs.find(m_portDirectory->getInputPortByName(name)) : m_inputs.end();
    return found != m_inputs.end() ? found->second.get() : nullptr;
}

CMIDIOutput* CMemAPI::getMidiOutputByString(const QString& name) const
{
    const std::scoped_lock lock(m_portsMutex);
    const auto found = m_portDirectory ? m_outputs.find(m_portDirectory->getOutputPortByName(name)) : m_outputs.end();
    return found != m_outputs.end() ? found->second.get() : nullptr;
}

void CMemAPI::setOutputConnection(const QString& name, bool on)
{
    if (CMIDIOutput* output = getMidiOutputByString(name))
        output->setMIDIConnection(on);
}

bool CMemAPI::isConnectOutput(const QString& name) const
{
    const CMIDIOutput* output = getMidiOutputByString(name);
    return output != nullptr && output->isMIDIConnect();
}

bool CMemAPI::isConnected() const
{
    return m_connected;
}

void CMemAPI::setConnected(bool connected)
{
    m_connected = connected;
}

CObserverPlace& CMemAPI::startReplyObserver()
{
    return m_startReplyObserver;
}

CObserverPlace& CMemAPI::keepReplyObserver()
{
    return m_keepReplyObserver;
}

CObserverPlace& CMemAPI::overrunObserver()
{
    return m_overrunObserver;
}

CObserverPlace& CMemAPI::receptionEndObserver()
{
    return m_receptionEndObserver;
}

void CMemAPI::lockMessageReceived()
{
    m_messageMutex.lock();
}

void CMemAPI::unlockMessageReceived()
{
    m_messageMutex.unlock();
}

bool CMemAPI::sendMessage(const QString& port, int type, int id)
{
    CMIDIOutput* output = getMidiOutputByString(port);
    if (output == nullptr || !m_codec)
        return false;

    ParamList data;
    // Types without data collect nothing; the codec decides whether that is enough.
    static_cast<void>(collectMessageData(type, id, &data));

    int len = m_codec->getMessageLen(type);
    QByteArray message(len, '\0');
    if (!m_codec->createMessage(type, data, reinterpret_cast<unsigned char*>(message.data()), &len))
        return false;
    message.truncate(len);
    return sendBytes(*output, message);
}

bool CMemAPI::sendBytes(CMIDIOutput& output, const QByteArray& message)
{
    const std::scoped_lock lock(m_sendMutex);
    return output.sendMessage(reinterpret_cast<const unsigned char*>(message.constData()),
                              static_cast<int>(message.size()));
}

bool CMemAPI::messageReceived(const unsigned char* bytes, int len)
{
    // The message mutex is not taken: a reply is dealt with at once, whoever holds it.
    if (!m_codec)
        return false;
    // Clock or active sensing may come between two pieces of a message, and is no part of it.
    constexpr unsigned char k_firstRealTime = 0xF8;
    if (bytes != nullptr && len == 1 && bytes[0] >= k_firstRealTime)
        return false;
    int type = k_startMessage;
    ParamList data;
    return m_codec->parseMessageForMac(bytes, len, &type, &data) && developMessageData(type, data);
}

void CMemAPI::receptionOverran()
{
    m_overrunObserver.notify();
}

void CMemAPI::receptionEnded()
{
    m_receptionEndObserver.notify();
}

bool CMemAPI::collectMessageData(int /*type*/, int /*id*/, ParamList* /*data*/) const
{
    return false;
}

bool CMemAPI::developMessageData(int type, const ParamList& /*data*/)
{
    switch (type) {
    case k_startMessage:
        return m_startReplyObserver.notify();
    case k_keepMessage:
        return m_keepReplyObserver.notify();
    case k_endMessage:
        return true;
    default:
        return false;
    }
}

bool CMemAPI::isEditable(int id) const
{
    return id != 0;
}
