#include "tests/midi/CALSAInputTest.h"

#include "midi/MIDIPlatform.h"

void CALSAInputTest::init()
{
    CTestCase::init();
    FakeALSA::reset();
    m_device = FakeALSA::addClient("Trellwick KTZ-JX");
    m_port = FakeALSA::addPort(m_device, "Trellwick KTZ-JX MIDI 1");
    QCOMPARE(MIDIPlatform::listSources(), 1);
}

QByteArray CALSAInputTest::noticeOf(int number)
{
    QByteArray message("\xF0\x01\x02\x03\x04\x05\x06\x07\x08\x09\xF7");
    message[3] = static_cast<char>(number / 128);
    message[4] = static_cast<char>(number % 128);
    return message;
}

QByteArrayList CALSAInputTest::notices(int count)
{
    QByteArrayList messages;
    for (int i = 0; i < count; ++i)
        messages.append(noticeOf(i));
    return messages;
}

void CALSAInputTest::open(CMIDIInput_ALSA* input, CRecordingObserver* observer)
{
    QCOMPARE(input->initialize(), 0);
    input->registerObserver(observer);
    QVERIFY(input->openPort(0));
    QVERIFY(input->isMIDIConnect());
}

void CALSAInputTest::openUnread(CMIDIInput_ALSA* input, CRecordingObserver* observer,
                                const QByteArrayList& messages) const
{
    FakeALSA::holdReading();
    open(input, observer);
    for (const QByteArray& message : messages)
        send(message);
}

void CALSAInputTest::send(const QByteArray& message) const
{
    FakeALSA::send(m_device, m_port, message);
}
