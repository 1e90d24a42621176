#pragma once

#include "midi/alsa/CMIDIInput_ALSA.h"
#include "tests/fakes/alsa/FakeALSA.h"
#include "tests/support/CRecordingObserver.h"
#include "tests/support/CTestCase.h"

/// Closes itself, so that a test that fails leaves no thread behind.
class CTestedInput : public CMIDIInput_ALSA
{
  public:
    ~CTestedInput() override
    {
        CMIDIInput_ALSA::closePort();
    }
};

/// Base of the tests of the sequencer's input port: each has one device to hear, on a sequencer that only pretends.
class CALSAInputTest : public CTestCase
{
    Q_OBJECT

  protected slots:
    void init();

  protected:
    /// A message of 11 bytes, as the device sends it for a turned knob.
    [[nodiscard]] static QByteArray noticeOf(int number);
    /// Those from 0 on.
    [[nodiscard]] static QByteArrayList notices(int count);

    /// Opens the port to the device, for the observer.
    static void open(CMIDIInput_ALSA* input, CRecordingObserver* observer);

    /// The same while nobody reads, and then the device sends these; FakeALSA::continueReading() has them read.
    void openUnread(CMIDIInput_ALSA* input, CRecordingObserver* observer, const QByteArrayList& messages) const;

    /// From the device.
    void send(const QByteArray& message) const;

    int m_device = 0;
    int m_port = 0;
};
