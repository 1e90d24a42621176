#pragma once

#include "ctl/SettingsTable.h"
#include "device/CMemAPIWrapper.h"

class CWireListener;

/// A device memory whose messages can be listened to. Its tables hold the factory preset until the device says
/// otherwise.
class CDeviceMemory : public CMemAPIWrapper
{
  public:
    /// No ports, nobody listens: for what goes into a file or comes out of one.
    CDeviceMemory();

    /// Opens the port of this name, if it is there; isConnectOutput() tells.
    ///
    /// listener   borrowed; outlives this object.
    CDeviceMemory(const QString& portName, CWireListener& listener);
    ~CDeviceMemory() override;

    bool developMessageData(int type, const ParamList& data) override;

    /// Puts what the table gives into the settings, which tells nobody.
    void take(const SettingsTable& table);

    /// The message that would give a knob these settings.
    [[nodiscard]] static QByteArray changeMessage(std::size_t knob, const KnobSettingsRow& settings);

    /// What a message is, for people: "start", "change parameter, knob 3".
    [[nodiscard]] static QString nameOf(const QByteArray& message);

  protected:
    [[nodiscard]] bool sendBytes(CMIDIOutput& output, const QByteArray& message) override;

  private:
    CWireListener* m_listener = nullptr;
};
