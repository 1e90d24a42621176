#pragma once

#include "app/common/Constants.h"
#include "device/CMemAPI.h"

class CMIDIPortWrapper;
class CMessageManagerWrapper;
class CParamManagerWrapper;

/// The parameter memory of the KTZ-JX: eight knobs with their settings and a reported value each.
///
/// Opens and uses the port of one name alone. Threads, ownership and failure as in CMemAPI.
class CMemAPIWrapper : public CMemAPI
{
  public:
    explicit CMemAPIWrapper(const QString& portName = k_jxEditorPortName);
    ~CMemAPIWrapper() override;

    /// Creates codec and tables, lists the ports and opens the device's, if they are there: both or, where the input
    /// cannot be opened, none.
    void initialize();

    /// The settings table holds only the settings of knobs 0 to 7; a write to any other id has no effect.
    /// None of these notifies observers or sends anything.
    [[nodiscard]] int getParam(int id) const override;
    void setParam(int id, int value) override;
    void setParam(int knob, int id, int value);

    /// The value that a knob reports, under its id 1000 + knob. Notifies nobody.
    [[nodiscard]] int getKnob(int id) const;
    void setKnob(int id, int value);

    /// The way of a knob's settings out of the table, whatever put them there as a whole: a file, the backup, the copy
    /// buffer or the factory preset. An edit of one setting goes through its proxy.
    ///
    /// updateKnob() notifies the observers of each setting, in id order; the knob value is not among them.
    /// sendKnob() tells the device. A knob that could not be told keeps its settings here; the keep-alive notices a
    /// lost device.
    void updateKnob(int knob);
    void sendKnob(int knob);

    /// Both for one knob after the other.
    void updateAndSendAllKnobs();

    using CMemAPI::sendMessage;

    /// To the device's port.
    bool sendMessage(int type, int id);

    /// Asks the device for everything it holds. true without an open output or a codec: there is nobody to ask.
    bool requestAllParam();

    /// Remembers all settings for revertParams().
    void backupParams();

    /// Brings the remembered settings back, to the table, the observers and the device.
    void revertParams();

    /// Keeps a copy of the knob's settings, and puts the copy onto a knob: table, observers and device.
    void copyParamListFromKnobValueList(int knob);
    void pasteParamListToKnobValueList(int knob);

    [[nodiscard]] bool collectMessageData(int type, int id, ParamList* data) const override;

    /// Takes change-parameter and notice-value messages over; what they say of a knob above 7 is ignored.
    bool developMessageData(int type, const ParamList& data) override;

    [[nodiscard]] bool isEditable(int id) const override;

    using CMemAPI::isConnectOutput;
    [[nodiscard]] bool isConnectOutput() const;

  protected:
    /// The two halves of initialize(). Without the second there are tables and a codec, and no device.
    void createTables();
    void openPorts(std::unique_ptr<CMIDIPort> directory);

  private:
    [[nodiscard]] CParamManagerWrapper* settings() const;
    void developChangeParam(const ParamList& data);
    void takeReportedSettings(int knob, const ParamList& list);
    void developNoticeValue(const ParamList& data);

    std::unique_ptr<CParamManager> m_copyBuffer;
    std::unique_ptr<CParamManager> m_knobValues;
    ParamList m_backup;
    const QString m_portName;
};
