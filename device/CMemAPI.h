#pragma once

#include "app/common/CMutex.h"
#include "device/CMessageManager.h"
#include "device/CObserverPlace.h"
#include "device/CObserverTable.h"
#include "device/CParamManager.h"
#include "midi/CMIDITransportObserver.h"

#include <atomic>
#include <functional>
#include <map>
#include <memory>

class CMIDIInput;
class CMIDIOutput;
class CMIDIPort;
class CMemAPIObserver;

/// The editor's mirror of a device: its parameters, its ports, and who wants to hear of changes.
///
/// Threads  messageReceived() runs on the MIDI delivery thread, and with it the decoding, the table writes and the
///          observer calls that a reply causes. sendMessage() may be called on any thread, also while ports are opened
///          and closed. Everything else: GUI thread.
/// Owns     the table, the codec, the port directory and every port that it opened. Observers are borrowed.
/// Failure  a missing table, codec, directory or port gives false, 0, an empty list or no effect; nothing is reported.
class CMemAPI : public CMIDITransportObserver
{
  public:
    CMemAPI();
    ~CMemAPI() override;
    CMemAPI(const CMemAPI&) = delete;
    CMemAPI& operator=(const CMemAPI&) = delete;

    /// Takes the codec, creates the table, and lists the system's ports, inputs first.
    void initialize(std::unique_ptr<CMessageManager> codec);

    /// As CObserverTable says, on any thread. Id 0 does nothing.
    void registerObserver(int id, CMemAPIObserver* observer);
    void unregisterObserver(int id, CMemAPIObserver* observer);
    void notifyParamChabgedById(int id);

    [[nodiscard]] ParamList getParamList() const;
    void setParamList(const ParamList& list); ///< notifies nobody

    /// Runs load, which may put any list into the table and says whether that succeeded, and makes the table whole
    /// again: what the list lacks keeps the value that it had. Then tells the observers of every parameter. The changed
    /// flag is cleared after a success and as it was after a failure.
    ///
    /// Threads  what the device reports waits until the table is whole, so that it falls on the right parameters, and
    ///          sets the changed flag anew. load must not wait for the device.
    /// The result is load's.
    [[nodiscard]] bool loadParamList(const std::function<bool()>& load);

    [[nodiscard]] bool isDirty() const;
    void setDirty(bool dirty);

    /// Opens the port of this name, creating its object at the first call.
    /// false: no such port, or the system refused it; the port is closed then.
    bool openInput(const QString& name);
    bool openOutput(const QString& name);

    /// Closes the port, which is kept and can be opened again.
    void closeInput(const QString& name);
    void closeOutput(const QString& name);

    /// The port object opened under this name, or null. Owned by the memory.
    [[nodiscard]] CMIDIInput* getMidiInputByString(const QString& name) const;
    [[nodiscard]] CMIDIOutput* getMidiOutputByString(const QString& name) const;

    void setOutputConnection(const QString& name, bool on);
    [[nodiscard]] bool isConnectOutput(const QString& name) const;

    /// Whether the device has answered a keep message since the last loss. While it is false, edits are stored but
    /// not sent. Written by the connection monitor alone; any thread may read it.
    [[nodiscard]] bool isConnected() const;
    void setConnected(bool connected);

    /// Who hears of the device's answers to start and keep messages, on the delivery thread.
    [[nodiscard]] CObserverPlace& startReplyObserver();
    [[nodiscard]] CObserverPlace& keepReplyObserver();

    /// Who hears, on the delivery thread, that something which the device sent was lost, and that nothing which it
    /// sends will arrive any more.
    [[nodiscard]] CObserverPlace& overrunObserver();
    [[nodiscard]] CObserverPlace& receptionEndObserver();

    void lockMessageReceived();
    void unlockMessageReceived();

    /// true: these bytes ended a message that was understood and dealt with.
    bool messageReceived(const unsigned char* bytes, int len) override;
    void receptionOverran() override;
    void receptionEnded() override;

    virtual void setParam(int id, int value);
    [[nodiscard]] virtual int getParam(int id) const;

    /// Sends one message of a type; id says whose data it carries. Any thread; blocks while another thread sends.
    /// false: no such port, closed, lost, or a type without a message.
    virtual bool sendMessage(const QString& port, int type, int id);

    /// Puts what a message of this type says about the id into data. false: nothing to say.
    [[nodiscard]] virtual bool collectMessageData(int type, int id, ParamList* data) const;

    /// Deals with a decoded message. Delivery thread.
    virtual bool developMessageData(int type, const ParamList& data);

    /// Whether the id names something that can be edited here; edits of other ids are ignored.
    [[nodiscard]] virtual bool isEditable(int id) const;

  protected:
    /// Sends ready bytes to an open output, one message at a time whatever thread calls.
    [[nodiscard]] virtual bool sendBytes(CMIDIOutput& output, const QByteArray& message);

    void createPortDirectory(std::unique_ptr<CMIDIPort> directory);

    /// Closes every port and waits for the inputs' delivery threads, which call this object's virtual functions: the
    /// first thing that a destructor does.
    void closePorts();

    /// Notifies the observers of each parameter of the list, also in its maps, in key order.
    void notifyEntries(const ParamList& list);

    std::unique_ptr<CParamManager> m_store;
    std::unique_ptr<CMessageManager> m_codec;
    std::unique_ptr<CMIDIPort> m_portDirectory;

  private:
    CObserverTable m_observers;
    // Port objects stay in the maps until the end: one that was found may be used without the lock.
    std::map<int, std::unique_ptr<CMIDIInput>> m_inputs;
    std::map<int, std::unique_ptr<CMIDIOutput>> m_outputs;
    mutable CMutex m_portsMutex; ///< guards the directory and both maps
    CMutex m_sendMutex;          ///< an output does one thing at a time: opens, closes or sends
    CRecursiveMutex m_messageMutex;
    CObserverPlace m_startReplyObserver;
    CObserverPlace m_keepReplyObserver;
    CObserverPlace m_overrunObserver;
    CObserverPlace m_receptionEndObserver;
    std::atomic<bool> m_connected = false;
};
