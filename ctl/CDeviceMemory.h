#pragma once

#include "device/CMemAPIWrapper.h"

class CWireListener;

/// A device memory whose messages can be listened to. Its tables hold the factory preset until the device says
/// otherwise.
class CDeviceMemory : public CMemAPIWrapper
{
  public:
    /// No ports, nobody listens: for what is read from a file.
    CDeviceMemory();

    /// Opens the port of this name, if it is there; isConnectOutput() tells.
    ///
    /// listener     borrowed; outlives this object.
    /// holdsBack    messages that would change the device are told and not sent.
    CDeviceMemory(const QString& portName, CWireListener& listener, bool holdsBack);
    ~CDeviceMemory() override;

    bool developMessageData(int type, const ParamList& data) override;

    /// What a message is, for people: "start", "change parameter, knob 3".
    [[nodiscard]] static QString nameOf(const QByteArray& message);

  protected:
    [[nodiscard]] bool sendBytes(CMIDIOutput& output, const QByteArray& message) override;

  private:
    CWireListener* m_listener = nullptr;
    bool m_holdsBack = false;
};
