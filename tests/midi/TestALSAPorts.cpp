#include "app/common/Constants.h"
#include "midi/CMIDIInput.h"
#include "midi/CMIDIOutput.h"
#include "midi/CMIDIPortWrapper.h"
#include "midi/MIDIPlatform.h"
#include "tests/fakes/alsa/FakeALSA.h"
#include "tests/support/CTestCase.h"

#include <cerrno>

namespace
{
/// A device with three cables, named as a kernel names them. The result is its client.
int addDevice(const QByteArray& name = "Trellwick KTZ-JX")
{
    const int client = FakeALSA::addClient(name);
    for (const char* port : {" MIDI 1", " MIDI 2", " MIDI 3"})
        FakeALSA::addPort(client, name + port);
    return client;
}

QStringList sourceNames()
{
    QStringList names;
    const int count = MIDIPlatform::listSources();
    for (int i = 0; i < count; ++i)
        names.append(CMIDIPort::getPortName(MIDIPlatform::source(i), i));
    return names;
}

QStringList destinationNames()
{
    QStringList names;
    const int count = MIDIPlatform::listDestinations();
    for (int i = 0; i < count; ++i)
        names.append(CMIDIPort::getPortName(MIDIPlatform::destination(i), i));
    return names;
}
} // namespace

class TestALSAPorts : public CTestCase
{
    Q_OBJECT

  private slots:
    void init();
    void deviceIsFoundAsTheEditorsPort();
    void namesOfDeviceAndEndpoint();
    void systemPortsAreLeftOut();
    void onlyWhatCanBeSubscribedToIsListed_data();
    void onlyWhatCanBeSubscribedToIsListed();
    void ownPortsAreLeftOut();
    void programsAreThoseOfOtherProcesses();
    void endpointsAreCountedOverBothDirections();
    void lastResortIsForEachDirection();
    void hiddenPortsDoNotCount();
    void deviceIsFoundByItsCard_data();
    void deviceIsFoundByItsCard();
    void cardThatCannotBeAskedIsNotTheDevice();
    void onlyForeignCardsAreAsked();
    void othersAreReportedAsTheyAre_data();
    void othersAreReportedAsTheyAre();
    void twoDevicesOfOneNameTheLastWins();
    void indexKeepsItsPortUntilTheNextList();
    void countingMovesNoIndex();
    void sourcesAndDestinationsAreCountedApart();
    void endpointOutsideTheListsHasNoNames();
    void withoutASequencerThereIsNothing();
    void failureWhileListingEndsTheList_data();
    void failureWhileListingEndsTheList();
    void listingLeavesNoClientBehind();
    void portObjectsComeClosed();
};

void TestALSAPorts::init()
{
    CTestCase::init();
    FakeALSA::reset();
}

void TestALSAPorts::deviceIsFoundAsTheEditorsPort()
{
    const int through = FakeALSA::addClient("Midi Through");
    FakeALSA::addPort(through, "Midi Through Port-0");
    addDevice();
    CMIDIPortWrapper directory;
    QCOMPARE(directory.createInputPortList(), 4);
    QCOMPARE(directory.createOutputPortList(), 4);
    QCOMPARE(directory.getTotalAvailableInputPorts(), 3);
    QCOMPARE(directory.getInputPortByName(k_jxEditorPortName), 3);
    QCOMPARE(directory.getOutputPortByName(k_jxEditorPortName), 3);
}

void TestALSAPorts::namesOfDeviceAndEndpoint()
{
    const int client = FakeALSA::addClient("Synth");
    FakeALSA::addPort(client, "In and out");
    QCOMPARE(MIDIPlatform::listSources(), 1);
    QCOMPARE(MIDIPlatform::deviceName(MIDIPlatform::source(0)), "Synth");
    QCOMPARE(MIDIPlatform::endpointName(MIDIPlatform::source(0)), "In and out");
    QCOMPARE(MIDIPlatform::listDestinations(), 1);
    QCOMPARE(MIDIPlatform::deviceName(MIDIPlatform::destination(0)), "Synth");
    QCOMPARE(MIDIPlatform::endpointName(MIDIPlatform::destination(0)), "In and out");
    QVERIFY(MIDIPlatform::source(0) != MIDIPlatform::destination(0));
}

void TestALSAPorts::systemPortsAreLeftOut()
{
    QCOMPARE(MIDIPlatform::listSources(), 0);
    QCOMPARE(MIDIPlatform::listDestinations(), 0);
}

void TestALSAPorts::onlyWhatCanBeSubscribedToIsListed_data()
{
    QTest::addColumn<unsigned int>("capabilities");
    QTest::addColumn<int>("sources");
    QTest::addColumn<int>("destinations");
    QTest::newRow("nothing") << 0U << 0 << 0;
    QTest::newRow("read, no subscription") << unsigned{SND_SEQ_PORT_CAP_READ} << 0 << 0;
    QTest::newRow("subscription without read") << unsigned{SND_SEQ_PORT_CAP_SUBS_READ} << 0 << 0;
    QTest::newRow("read") << FakeALSA::k_source << 1 << 0;
    QTest::newRow("write, no subscription") << unsigned{SND_SEQ_PORT_CAP_WRITE} << 0 << 0;
    QTest::newRow("subscription without write") << unsigned{SND_SEQ_PORT_CAP_SUBS_WRITE} << 0 << 0;
    QTest::newRow("write") << FakeALSA::k_destination << 0 << 1;
    QTest::newRow("both") << FakeALSA::k_both << 1 << 1;
    QTest::newRow("both and more") << (FakeALSA::k_both | SND_SEQ_PORT_CAP_DUPLEX) << 1 << 1;
}

void TestALSAPorts::onlyWhatCanBeSubscribedToIsListed()
{
    QFETCH(unsigned int, capabilities);
    const int client = FakeALSA::addClient("Synth");
    FakeALSA::addPort(client, "Port", capabilities);
    QTEST(MIDIPlatform::listSources(), "sources");
    QTEST(MIDIPlatform::listDestinations(), "destinations");
}

void TestALSAPorts::ownPortsAreLeftOut()
{
    addDevice();
    QCOMPARE(MIDIPlatform::listSources(), 3);
    QCOMPARE(MIDIPlatform::listDestinations(), 3);
    const auto input = MIDIPlatform::createInput();
    const auto output = MIDIPlatform::createOutput();
    QCOMPARE(input->initialize(), 0);
    QCOMPARE(output->initialize(), 0);
    QVERIFY(input->openPort(2));
    QVERIFY(output->openPort(2));
    QCOMPARE(sourceNames().size(), 3);
    QCOMPARE(destinationNames().size(), 3);
    output->closePort();
    input->closePort();
}

void TestALSAPorts::programsAreThoseOfOtherProcesses()
{
    FakeALSA::addCardClient("Trellwick KTZ-JX", "Trellwick KTZ-JX at usb-1");
    const auto own = MIDIPlatform::createInput();
    QCOMPARE(own->initialize(), 0);
    QCOMPARE(MIDIPlatform::otherPrograms(), QStringList());
    FakeALSA::addClient("Onlooker");
    for (const char* name : {"Sequencer", "Sequencer", k_editorProgramName})
        FakeALSA::addPort(FakeALSA::addClient(name), "Port");
    QCOMPARE(MIDIPlatform::otherPrograms(), (QStringList{"Sequencer", k_editorProgramName}));
    FakeALSA::setAvailable(false);
    QCOMPARE(MIDIPlatform::otherPrograms(), QStringList());
}

void TestALSAPorts::endpointsAreCountedOverBothDirections()
{
    // The number belongs to the cable: a cable that only goes out moves the others' numbers in both lists alike.
    const int client = FakeALSA::addClient("Trellwick KTZ-JX");
    FakeALSA::addPort(client, "Trellwick KTZ-JX MIDI 1", FakeALSA::k_destination);
    FakeALSA::addPort(client, "Trellwick KTZ-JX MIDI 2", FakeALSA::k_source);
    FakeALSA::addPort(client, "Trellwick KTZ-JX MIDI 3");
    QCOMPARE(sourceNames(), QStringList({"Trellwick KTZ-JX Port2", "Trellwick KTZ-JX Port3"}));
    QCOMPARE(destinationNames(), QStringList({"Trellwick KTZ-JX Port1", "Trellwick KTZ-JX Port3"}));
}

void TestALSAPorts::lastResortIsForEachDirection()
{
    // Three cables to the computer and two from it.
    const int client = FakeALSA::addClient("Trellwick KTZ-JX");
    FakeALSA::addPort(client, "Trellwick KTZ-JX MIDI 1");
    FakeALSA::addPort(client, "Trellwick KTZ-JX MIDI 2");
    FakeALSA::addPort(client, "Trellwick KTZ-JX MIDI 3", FakeALSA::k_source);
    QCOMPARE(sourceNames(),
             QStringList({"Trellwick KTZ-JX Port1", "Trellwick KTZ-JX Port2", "Trellwick KTZ-JX Port3"}));
    QCOMPARE(destinationNames(), QStringList({"Trellwick KTZ-JX Port1", "Trellwick KTZ-JX Port3"}));
}

void TestALSAPorts::hiddenPortsDoNotCount()
{
    const int client = FakeALSA::addClient("Trellwick KTZ-JX");
    FakeALSA::addPort(client, "Trellwick KTZ-JX Jack", 0);
    for (int i = 0; i < 3; ++i)
        FakeALSA::addPort(client, "Trellwick KTZ-JX Jack");
    QCOMPARE(sourceNames(),
             QStringList({"Trellwick KTZ-JX Port1", "Trellwick KTZ-JX Port2", "Trellwick KTZ-JX Port3"}));
}

void TestALSAPorts::deviceIsFoundByItsCard_data()
{
    QTest::addColumn<QByteArray>("client");
    QTest::addColumn<QByteArray>("card");
    QTest::newRow("maker inside the product")
        << QByteArray("Trellwick KTZ-JX") << QByteArray("Trellwick Trellwick KTZ-JX at usb-0000:00:14.0-1, high speed");
    QTest::newRow("maker apart") << QByteArray("KTZ-JX")
                                 << QByteArray("Trellwick KTZ-JX at usb-0000:00:14.0-1, high speed");
    QTest::newRow("more behind the product")
        << QByteArray("KTZ-JX Rev B") << QByteArray("Trellwick KTZ-JX Rev B at usb-0000:00:14.0-1, full speed");
    QTest::newRow("no maker anywhere but in the product")
        << QByteArray("Trellwick KTZ-JX") << QByteArray("Trellwick KTZ-JX at usb-dummy_hcd.0-1, high speed");
    QTest::newRow("a program with the device's name") << QByteArray("Trellwick KTZ-JX") << QByteArray();
    QTest::newRow("a program with more than the device's name") << QByteArray("My Trellwick KTZ-JX 2") << QByteArray();
}

void TestALSAPorts::deviceIsFoundByItsCard()
{
    QFETCH(QByteArray, client);
    QFETCH(QByteArray, card);
    const int id = card.isEmpty() ? FakeALSA::addClient(client) : FakeALSA::addCardClient(client, card);
    for (const char* port : {" MIDI 1", " MIDI 2", " MIDI 3"})
        FakeALSA::addPort(id, client + port);
    const QStringList expected{"Trellwick KTZ-JX Port1", "Trellwick KTZ-JX Port2", "Trellwick KTZ-JX Port3"};
    QCOMPARE(sourceNames(), expected);
    QCOMPARE(destinationNames(), expected);
    QCOMPARE(MIDIPlatform::deviceName(MIDIPlatform::source(0)), k_jxPortName);
}

void TestALSAPorts::cardThatCannotBeAskedIsNotTheDevice()
{
    const int id = FakeALSA::addCardClient("KTZ-JX", "Trellwick KTZ-JX at usb-dummy_hcd.0-1, high speed");
    FakeALSA::addPort(id, "KTZ-JX MIDI 1");
    FakeALSA::failNext("snd_card_get_longname", -EACCES);
    QCOMPARE(sourceNames(), QStringList{"KTZ-JX MIDI 1"});
    QCOMPARE(sourceNames(), QStringList{"Trellwick KTZ-JX Port3"});
    QCOMPARE(FakeALSA::printedMessages(), 0);
}

void TestALSAPorts::onlyForeignCardsAreAsked()
{
    FakeALSA::addPort(FakeALSA::addCardClient("Trellwick KTZ-JX", "Trellwick KTZ-JX at usb-1"), "MIDI 1");
    FakeALSA::addPort(FakeALSA::addClient("Program"), "Port");
    QCOMPARE(MIDIPlatform::listSources(), 2);
    QCOMPARE(FakeALSA::calls("snd_card_get_longname"), 0);
    FakeALSA::addPort(FakeALSA::addCardClient("Synth", "Maker Synth at usb-2"), "MIDI 1");
    QCOMPARE(MIDIPlatform::listSources(), 3);
    QCOMPARE(FakeALSA::calls("snd_card_get_longname"), 1);
}

void TestALSAPorts::othersAreReportedAsTheyAre_data()
{
    QTest::addColumn<QByteArray>("client");
    QTest::addColumn<QByteArray>("card");
    QTest::newRow("another card") << QByteArray("Synth") << QByteArray("Other Maker Synth at usb-0000:00:14.0-1");
    QTest::newRow("the maker's other device") << QByteArray("KTZ-JY") << QByteArray("Trellwick KTZ-JY at usb-1");
    QTest::newRow("another maker's KTZ-JX") << QByteArray("KTZ-JX") << QByteArray("Other KTZ-JX at usb-1");
    QTest::newRow("other case") << QByteArray("TRELLWICK KTZ-JX") << QByteArray("trellwick ktz-jx at usb-1");
    QTest::newRow("a gadget's far end") << QByteArray("f_midi") << QByteArray("MIDI Gadget");
    QTest::newRow("a program") << QByteArray("KTZ-JX Editor") << QByteArray();
    QTest::newRow("a client without a name") << QByteArray() << QByteArray();
}

void TestALSAPorts::othersAreReportedAsTheyAre()
{
    QFETCH(QByteArray, client);
    QFETCH(QByteArray, card);
    const int id = card.isEmpty() ? FakeALSA::addClient(client) : FakeALSA::addCardClient(client, card);
    const QByteArrayList ports{"MIDI 1", client + " Port 3", client, "Jack", "Jack", QByteArray(31, 'x')};
    for (const QByteArray& port : ports)
        FakeALSA::addPort(id, port);
    QCOMPARE(MIDIPlatform::listSources(), ports.size());
    for (int i = 0; i < ports.size(); ++i) {
        QCOMPARE(MIDIPlatform::deviceName(MIDIPlatform::source(i)), QString::fromUtf8(client));
        QCOMPARE(MIDIPlatform::endpointName(MIDIPlatform::source(i)), QString::fromUtf8(ports[i]));
    }
    CMIDIPortWrapper directory;
    QCOMPARE(directory.createInputPortList(), static_cast<int>(ports.size()));
    QCOMPARE(directory.getTotalAvailableInputPorts(), 0);
}

void TestALSAPorts::twoDevicesOfOneNameTheLastWins()
{
    addDevice();
    addDevice();
    CMIDIPortWrapper directory;
    QCOMPARE(directory.createInputPortList(), 6);
    QCOMPARE(directory.createOutputPortList(), 6);
    QCOMPARE(directory.getInputPortByName(k_jxEditorPortName), 5);
    QCOMPARE(directory.getOutputPortByName(k_jxEditorPortName), 5);
}

void TestALSAPorts::indexKeepsItsPortUntilTheNextList()
{
    const int early = FakeALSA::addClient("Early");
    FakeALSA::addPort(early, "Port");
    const int device = addDevice();
    QCOMPARE(MIDIPlatform::listDestinations(), 4);
    const MIDIEndpoint endpoint = MIDIPlatform::destination(3);

    // A client goes and another comes between the list and the opening.
    FakeALSA::removeClient(early);
    addDevice("Other");
    QCOMPARE(MIDIPlatform::destination(3), endpoint);
    QCOMPARE(CMIDIPort::getPortName(endpoint, 3), k_jxEditorPortName);
    const auto output = MIDIPlatform::createOutput();
    QCOMPARE(output->initialize(), 0);
    QVERIFY(output->openPort(3));
    const unsigned char message[] = {0xF0, 0xF7};
    QVERIFY(output->sendMessage(message, 2));
    QCOMPARE(FakeALSA::received(device, 2), QByteArrayList{"\xF0\xF7"});
    output->closePort();
}

void TestALSAPorts::countingMovesNoIndex()
{
    const int early = FakeALSA::addClient("Early");
    FakeALSA::addPort(early, "Port");
    const int device = addDevice();
    CMIDIPortWrapper directory;
    QCOMPARE(directory.createInputPortList(), 4);
    QCOMPARE(directory.createOutputPortList(), 4);

    FakeALSA::removeClient(early);
    QCOMPARE(directory.getTotalInputPorts(), 3);
    QCOMPARE(directory.getTotalOutputPorts(), 3);
    const auto input = MIDIPlatform::createInput();
    const auto output = MIDIPlatform::createOutput();
    QCOMPARE(input->initialize(), 0);
    QCOMPARE(output->initialize(), 0);
    QVERIFY(input->openPort(directory.getInputPortByName(k_jxEditorPortName)));
    QVERIFY(output->openPort(directory.getOutputPortByName(k_jxEditorPortName)));
    const unsigned char message[] = {0xF0, 0xF7};
    QVERIFY(output->sendMessage(message, 2));
    QCOMPARE(FakeALSA::received(device, 2), QByteArrayList{"\xF0\xF7"});
    QCOMPARE(directory.getInputPortNameFromSystemByIndex(3), k_jxEditorPortName);
    output->closePort();
    input->closePort();
}

void TestALSAPorts::sourcesAndDestinationsAreCountedApart()
{
    const int client = FakeALSA::addClient("Synth");
    FakeALSA::addPort(client, "In", FakeALSA::k_destination);
    QCOMPARE(MIDIPlatform::listDestinations(), 1);
    FakeALSA::addPort(client, "Out", FakeALSA::k_source);
    FakeALSA::addPort(client, "Other in", FakeALSA::k_destination);
    QCOMPARE(MIDIPlatform::listSources(), 1);
    QCOMPARE(MIDIPlatform::destination(1), MIDIEndpoint{0});
    QCOMPARE(MIDIPlatform::listDestinations(), 2);
    QCOMPARE(MIDIPlatform::endpointName(MIDIPlatform::destination(1)), "Other in");
}

void TestALSAPorts::endpointOutsideTheListsHasNoNames()
{
    addDevice();
    QCOMPARE(MIDIPlatform::listSources(), 3);
    QCOMPARE(MIDIPlatform::listDestinations(), 3);
    for (const MIDIEndpoint endpoint : {MIDIEndpoint{0}, MIDIEndpoint{4}, MIDIPlatform::destination(2) + 1}) {
        QVERIFY(MIDIPlatform::endpointName(endpoint).isNull());
        QVERIFY(MIDIPlatform::deviceName(endpoint).isNull());
    }
}

void TestALSAPorts::withoutASequencerThereIsNothing()
{
    addDevice();
    QCOMPARE(MIDIPlatform::listSources(), 3);
    FakeALSA::setAvailable(false);
    QCOMPARE(MIDIPlatform::listSources(), 0);
    QCOMPARE(MIDIPlatform::listDestinations(), 0);
    QCOMPARE(MIDIPlatform::source(0), MIDIEndpoint{0});
    const auto input = MIDIPlatform::createInput();
    const auto output = MIDIPlatform::createOutput();
    QCOMPARE(input->initialize(), -ENOENT);
    QCOMPARE(output->initialize(), -ENOENT);
    QVERIFY(!input->openPort(0));
    QVERIFY(!output->openPort(0));
    input->closePort();
    output->closePort();
    QCOMPARE(FakeALSA::printedMessages(), 0);
}

void TestALSAPorts::failureWhileListingEndsTheList_data()
{
    QTest::addColumn<QByteArray>("function");
    QTest::addColumn<int>("sources");
    QTest::newRow("no client") << QByteArray("snd_seq_open") << 0;
    QTest::newRow("no name") << QByteArray("snd_seq_set_client_name") << 0;
    QTest::newRow("clients") << QByteArray("snd_seq_query_next_client") << 0;
    QTest::newRow("ports of the first client") << QByteArray("snd_seq_query_next_port") << 3;
}

void TestALSAPorts::failureWhileListingEndsTheList()
{
    QFETCH(QByteArray, function);
    addDevice("Other");
    addDevice();
    FakeALSA::failNext(function.constData(), -EBADFD);
    QTEST(MIDIPlatform::listSources(), "sources");
    QCOMPARE(MIDIPlatform::listSources(), 6);
    QCOMPARE(FakeALSA::newestOpenClient(), -1);
}

void TestALSAPorts::listingLeavesNoClientBehind()
{
    addDevice();
    QCOMPARE(MIDIPlatform::listSources(), 3);
    QCOMPARE(MIDIPlatform::listDestinations(), 3);
    QCOMPARE(FakeALSA::newestOpenClient(), -1);
}

void TestALSAPorts::portObjectsComeClosed()
{
    const auto input = MIDIPlatform::createInput();
    const auto output = MIDIPlatform::createOutput();
    QVERIFY(!input->isMIDIConnect());
    QVERIFY(!output->isMIDIConnect());
    QVERIFY(!input->openPort(0));
    QVERIFY(!output->openPort(0));
    QCOMPARE(FakeALSA::newestOpenClient(), -1);
}

KTZ_TEST(QCoreApplication, TestALSAPorts)
#include "TestALSAPorts.moc"
