#include "app/common/Constants.h"
#include "midi/alsa/ALSAEndpointName.h"
#include "tests/support/CTestCase.h"

#include <numeric>

namespace
{
const QByteArray k_client = "Trellwick KTZ-JX";

QByteArray cut(const QByteArray& name)
{
    return name.first(std::min(name.size(), qsizetype{31}));
}

/// How kernels have named a port; the jack's text is the device's own and may be missing.
struct Kernel
{
    const char* version;
    QByteArray (*name)(const QByteArray& client, const QByteArray& jack, int number);
};

QByteArray madeUp(const QByteArray& client, const QByteArray& /*jack*/, int number)
{
    return cut(client + " MIDI " + QByteArray::number(number));
}

QByteArray clientAndJack(const QByteArray& client, const QByteArray& jack, int number)
{
    return jack.isEmpty() ? madeUp(client, jack, number) : cut(client + ' ' + jack);
}

QByteArray jackAlone(const QByteArray& client, const QByteArray& jack, int number)
{
    return jack.startsWith(client) ? cut(jack) : clientAndJack(client, jack, number);
}

const Kernel k_kernels[] = {{"before 5.13", madeUp}, {"from 5.13", clientAndJack}, {"from 2025", jackAlone}};

/// What devices may be called, and their jacks; without jacks there are as many cables as texts, all empty.
struct Device
{
    const char* description;
    QByteArrayList jacks;
};

const Device k_devices[] = {
    {"1 cable", {""}},
    {"2 cables", {"", ""}},
    {"3 cables", {"", "", ""}},
    {"16 cables", QByteArrayList(16, "")},
    {"1 jack, the device's name", {"Trellwick KTZ-JX"}},
    {"2 jacks with the device's name", {"Trellwick KTZ-JX", "Trellwick KTZ-JX Port3"}},
    {"3 jacks with the device's name", {"Trellwick KTZ-JX Port1", "Trellwick KTZ-JX Port2", "Trellwick KTZ-JX Port3"}},
    {"3 jacks with product alone", {"KTZ-JX Port1", "KTZ-JX Port2", "KTZ-JX Port3"}},
    {"jacks 'Port 1' and 'Port 3'", {"Port 1", "Port 3"}},
    {"jacks 'Port1' to 'Port3'", {"Port1", "Port2", "Port3"}},
    {"jacks 'MIDI 1' to 'MIDI 3'", {"MIDI 1", "MIDI 2", "MIDI 3"}},
    {"jacks counted from 0", {"MIDI 0", "MIDI 1", "MIDI 2"}},
    {"jacks of one name", {"Jack", "Jack", "Jack"}},
    {"jacks of other names", {"Keys", "Editor"}},
};

QList<qsizetype> allOf(const QByteArrayList& ports)
{
    QList<qsizetype> places(ports.size());
    std::iota(places.begin(), places.end(), 0);
    return places;
}
} // namespace

class TestALSAEndpointName : public CTestCase
{
    Q_OBJECT

  private slots:
    void lastPortOfEveryDeviceIsTheEditors_data();
    void lastPortOfEveryDeviceIsTheEditors();
    void namesOfPorts_data();
    void namesOfPorts();
    void namesOfTwoDirections_data();
    void namesOfTwoDirections();
    void nameThatHoldsTheDevices_data();
    void nameThatHoldsTheDevices();
};

// On all of these devices the last cable is the editor's, with every kernel, and with the maker's name in the product
// string or apart.
void TestALSAEndpointName::lastPortOfEveryDeviceIsTheEditors_data()
{
    QTest::addColumn<QByteArray>("client");
    QTest::addColumn<QByteArrayList>("ports");
    for (const Kernel& kernel : k_kernels) {
        for (const QByteArray& client : {k_client, QByteArray("KTZ-JX")}) {
            for (const Device& device : k_devices) {
                QByteArrayList ports;
                for (const QByteArray& jack : device.jacks)
                    ports.append(kernel.name(client, jack, static_cast<int>(ports.size()) + 1));
                QTest::addRow("%s, \"%s\", %s", kernel.version, client.constData(), device.description)
                    << client << ports;
            }
        }
    }
}

void TestALSAEndpointName::lastPortOfEveryDeviceIsTheEditors()
{
    QFETCH(QByteArray, client);
    QFETCH(QByteArrayList, ports);
    const QStringList names = deviceEndpointNames(client, ports, allOf(ports));
    QCOMPARE(names.size(), ports.size());
    QCOMPARE(names.count("Port3"), 1);
    // Sixteen cables have a third one that says so.
    QCOMPARE(names.indexOf("Port3"), ports.size() == 16 ? 2 : ports.size() - 1);
}

void TestALSAEndpointName::namesOfPorts_data()
{
    QTest::addColumn<QByteArray>("client");
    QTest::addColumn<QByteArrayList>("ports");
    QTest::addColumn<QStringList>("names");
    const auto row = [](const char* name, const QByteArrayList& ports, const QStringList& names,
                        const QByteArray& client = k_client) { QTest::newRow(name) << client << ports << names; };

    row("no ports", {}, {});
    row("1 made-up name", {"Trellwick KTZ-JX MIDI 1"}, {"Port3"});
    row("2 made-up names", {"Trellwick KTZ-JX MIDI 1", "Trellwick KTZ-JX MIDI 2"}, {"Port1", "Port3"});
    row("3 made-up names", {"Trellwick KTZ-JX MIDI 1", "Trellwick KTZ-JX MIDI 2", "Trellwick KTZ-JX MIDI 3"},
        {"Port1", "Port2", "Port3"});
    row("the number of the text, not of the order", {"Port 3", "Port 1"}, {"Port3", "Port1"});
    row("a 3 in the midst of others", {"MIDI 5", "MIDI 3", "MIDI 4"}, {"Port5", "Port3", "Port4"});
    row("the device's own pair", {"Trellwick KTZ-JX", "Trellwick KTZ-JX Port3"}, {"Trellwick KTZ-JX", "Port3"});
    row("the same pair, cut", {"Trellwick KTZ-JX Trellwick KTZ-", "Trellwick KTZ-JX Trellwick KTZ-"},
        {"Port1", "Port3"});
    row("the maker apart, the device's name in the jack", {"KTZ-JX Trellwick KTZ-JX", "KTZ-JX Trellwick KTZ-JX Port3"},
        {"Trellwick KTZ-JX", "Port3"}, "KTZ-JX");
    row("a longer client", {"Trellwick KTZ-JX Rev B MIDI 1", "Trellwick KTZ-JX Rev B MIDI 3"}, {"Port1", "Port3"},
        "Trellwick KTZ-JX Rev B");

    row("words of a number",
        {"port 1", "PORT 2", "MIDI 4", "Midi In 5", "in 6", "OUT 7", "input 8", "Output 9", "MIDI Out 10", "Port-11",
         "Midi_12", "In/Out", "13 Out", "MIDI 14 In", "Port#15", "Port  16", "inout 17", "Port3"},
        {"Port1", "Port2", "Port4", "Port5", "Port6", "Port7", "Port8", "Port9", "Port10", "Port11", "Port12", "In/Out",
         "Port13", "Port14", "Port15", "Port16", "Port17", "Port3"});
    row("texts with a number that say more",
        {"USB MIDI 1", "MIDI 1 of 2", "Port 1 In Out", "MIDI USB", "Port", "3", "Port 12345", "Ports 3", "Port III",
         "Port3"},
        {"USB MIDI 1", "MIDI 1 of 2", "Port 1 In Out", "MIDI USB", "Port", "3", "Port 12345", "Ports 3", "Port III",
         "Port3"});
    row("leading noughts", {"MIDI 01", "MIDI 03", "MIDI 02"}, {"Port1", "Port3", "Port2"});
    row("letters beyond ASCII", {"Ger\xC3\xA4t", "Port3"}, {QString::fromUtf8("Ger\xC3\xA4t"), "Port3"});
    row("other texts", {"Trellwick KTZ-JX Keys", "Editor"}, {"Keys", "Port3"});

    row("one text under two names", {"Trellwick KTZ-JX In", "In", "Port3"}, {"Port1", "Port2", "Port3"});
    row("shared numbers say nothing", {"MIDI 3", "MIDI 3", "Port 1"}, {"MIDI 3", "Port2", "Port3"});
    row("a sibling has the number of the order", {"Jack", "Jack", "Port 2", "Port 3"},
        {"Port1", "Jack", "Port2", "Port3"});
    row("30 bytes: whole", {QByteArray(30, 'x'), "Port3"}, {QString(30, 'x'), "Port3"});
    row("31 bytes: cut off", {"Keys", QByteArray(31, 'x'), "Port3"}, {"Keys", "Port2", "Port3"});
    row("32 bytes: no kernel's", {QByteArray(32, 'x'), "Port3"}, {QString(32, 'x'), "Port3"});
    row("cut within a letter", {QByteArray(30, 'x') + '\xC3', "Port3"}, {"Port1", "Port3"});
    row("cut behind a number", {"MIDI in 1234567890123456789012 3", "Port 2"},
        {"MIDI in 1234567890123456789012 3", "Port3"});

    row("the client's name twice", {"KTZ KTZ MIDI 1", "KTZ MIDI 3"}, {"Port1", "Port3"}, "KTZ");
    row("a longer word is no repeat", {"KTZX MIDI 1", "Port3"}, {"KTZX MIDI 1", "Port3"}, "KTZ");
    row("all named as the client", {k_client, k_client, k_client}, {"Port1", "Port2", "Port3"});
    row("four named as the client", {k_client, k_client, k_client, k_client}, {"Port1", "Port2", "Port3", "Port4"});
    row("ports without a name", {"", "", ""}, {"Port1", "Port2", "Port3"});
    row("client without a name", {"In", "MIDI 3"}, {"In", "Port3"}, "");
}

void TestALSAEndpointName::namesOfPorts()
{
    QFETCH(QByteArray, client);
    QFETCH(QByteArrayList, ports);
    QTEST(deviceEndpointNames(client, ports, allOf(ports)), "names");
}

void TestALSAEndpointName::namesOfTwoDirections_data()
{
    QTest::addColumn<QByteArrayList>("ports");
    QTest::addColumn<QList<qsizetype>>("direction");
    QTest::addColumn<QStringList>("names");
    const QByteArrayList three{"MIDI 1", "MIDI 2", "MIDI 3"};
    QTest::newRow("three one way") << three << QList<qsizetype>{0, 1, 2} << QStringList{"Port1", "Port2", "Port3"};
    QTest::newRow("two the other way") << three << QList<qsizetype>{0, 1} << QStringList{"Port1", "Port3"};
    QTest::newRow("the third one alone") << three << QList<qsizetype>{2} << QStringList{"Port3"};
    QTest::newRow("none the other way") << three << QList<qsizetype>{} << QStringList{};
    const QByteArrayList pairs{"Port 1", "Port 3", "Port 1", "Port 3"};
    QTest::newRow("ports of one direction each, in")
        << pairs << QList<qsizetype>{0, 1} << QStringList{"Port1", "Port3"};
    QTest::newRow("ports of one direction each, out")
        << pairs << QList<qsizetype>{2, 3} << QStringList{"Port1", "Port3"};
    const QByteArrayList same{"Jack", "Jack", "Jack", "Jack"};
    QTest::newRow("counted over both directions")
        << same << QList<qsizetype>{1, 2, 3} << QStringList{"Port2", "Port3", "Port4"};
}

void TestALSAEndpointName::namesOfTwoDirections()
{
    QFETCH(QByteArrayList, ports);
    QFETCH(QList<qsizetype>, direction);
    QTEST(deviceEndpointNames(k_client, ports, direction), "names");
}

void TestALSAEndpointName::nameThatHoldsTheDevices_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<bool>("holds");
    QTest::newRow("the name") << k_client << true;
    QTest::newRow("a card's long name") << QByteArray("Trellwick KTZ-JX at usb-0000:00:14.0-1, high speed") << true;
    QTest::newRow("more before it") << QByteArray("My Trellwick KTZ-JX") << true;
    QTest::newRow("the product alone") << QByteArray("KTZ-JX") << false;
    QTest::newRow("the maker alone") << QByteArray("Trellwick") << false;
    QTest::newRow("other case") << QByteArray("Trellwick ktz-jx") << false;
    QTest::newRow("nothing") << QByteArray() << false;
}

void TestALSAEndpointName::nameThatHoldsTheDevices()
{
    QFETCH(QByteArray, name);
    QTEST(holdsDeviceName(name), "holds");
}

KTZ_TEST(QCoreApplication, TestALSAEndpointName)
#include "TestALSAEndpointName.moc"
