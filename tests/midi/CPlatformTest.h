#pragma once

#include "tests/support/CTestCase.h"

#include <QByteArrayList>
#include <QString>

#include <memory>

/// A MIDI system as the contract's tests see it: devices in the order in which they were plugged in, each a source and
/// a destination.
class CPlatformRig
{
  public:
    CPlatformRig() = default;
    virtual ~CPlatformRig() = default;
    CPlatformRig(const CPlatformRig&) = delete;
    CPlatformRig& operator=(const CPlatformRig&) = delete;

    virtual void plug(const QString& device, const QString& endpoint) = 0;

    /// The ports of a device are gone. The others keep their numbers.
    virtual void unplug(int device) = 0;

    /// The device sends these bytes, at once.
    virtual void say(int device, const QByteArray& bytes) = 0;

    /// What has come to the device, packet by packet.
    [[nodiscard]] virtual QByteArrayList heard(int device) = 0;

    /// The system's reading fails for good. false: this system has no such end.
    [[nodiscard]] virtual bool endReception() = 0;

    /// Whether sending to a device that is gone can be tried.
    [[nodiscard]] virtual bool noticesLostDestinations() const = 0;
};

/// What midi/MIDIPlatform.h, midi/CMIDIInput.h and midi/CMIDIOutput.h promise on every platform. Each platform's class
/// brings its rig; what is a platform's own stands in tests of its own.
class CPlatformTest : public CTestCase
{
    Q_OBJECT

  protected slots:
    void init();

  private slots:
    void cleanup();

    void systemWithoutDevicesHasNoPorts();
    void portsAreListedUnderTheirNames();
    void indexOutsideTheListHasNoEndpoint();
    void indexKeepsItsPortUntilTheNextList();
    void portsComeClosed();
    void portsOpenCloseAndOpenAgain();
    void openOfAnOpenPortChangesNothing();
    void openOutsideTheListFails_data();
    void openOutsideTheListFails();
    void openOfAVanishedSourceFails();
    void openOfAVanishedDestinationFails();

    void messageIsCutIntoPackets_data();
    void messageIsCutIntoPackets();
    void nothingIsSent_data();
    void nothingIsSent();
    void vanishedDestinationFailsEverySend();

    void recordsArriveWholeAndInOrderOnTheDeliveryThread();
    void closedPortHearsNothing();
    void lossIsToldAfterWholeRecords();
    void endIsToldAfterTheLastRecord();

  protected:
    [[nodiscard]] virtual std::unique_ptr<CPlatformRig> createRig() const = 0;

  private:
    /// A list of one device, in both directions.
    void plugOne();

    std::unique_ptr<CPlatformRig> m_rig;
};
