#pragma once

#include "midi/MIDIPlatform.h"

#include <QMap>
#include <QString>

/// The system's MIDI ports under readable names, listed once when asked and not followed afterwards.
///
/// Units    an index is a port's place among all of the system's sources or destinations, listed or not; it opens the
///          port that it meant when the list was created, until the list is created anew.
/// Threads  GUI thread only.
/// Failure  a missing port has an empty name, and no index (-1).
class CMIDIPort
{
  public:
    CMIDIPort() = default;
    virtual ~CMIDIPort() = default;
    CMIDIPort(const CMIDIPort&) = delete;
    CMIDIPort& operator=(const CMIDIPort&) = delete;

    /// Replaces the list by the system's ports of now. The result is their number, listed or not.
    virtual int createInputPortList();
    virtual int createOutputPortList();

    /// The number of the system's ports of now, listed or not. Counting moves no index.
    [[nodiscard]] int getTotalInputPorts() const;
    [[nodiscard]] int getTotalOutputPorts() const;

    /// The ports in the list.
    [[nodiscard]] int getTotalAvailableInputPorts() const;
    [[nodiscard]] int getTotalAvailableOutputPorts() const;

    /// The name under which the editor knows a port: "<device> <endpoint>", or the endpoint's name alone where that
    /// already contains the device's.
    ///
    /// index   the port's place in its list; names an endpoint without a name ("Port #2").
    /// Empty for the endpoint 0. A missing device is called "Unknown Device".
    [[nodiscard]] static QString getPortName(MIDIEndpoint endpoint, int index);

    [[nodiscard]] QString getInputPortNameFromSystemByIndex(int index) const;
    [[nodiscard]] QString getOutputPortNameFromSystemByIndex(int index) const;

    /// The index of the listed port with exactly this name; of several, the last.
    [[nodiscard]] int getInputPortByName(const QString& name) const;
    [[nodiscard]] int getOutputPortByName(const QString& name) const;

  protected:
    using PortList = QMap<int, QString>; ///< port name by system index

    PortList m_inputPortList;
    PortList m_outputPortList;
};
