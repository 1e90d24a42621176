#include "midi/alsa/ALSAEndpointName.h"
#include "tests/support/CTestCase.h"

namespace
{
const QByteArray k_client = "Trellwick KTZ-JX";

/// The names of three cables whose jacks are called this with the cable's number behind, as a kernel makes them up.
QByteArrayList cables(const QByteArray& text)
{
    QByteArrayList names;
    for (const char* number : {"1", "2", "3"})
        names.append((text + number).first(std::min(text.size() + 1, qsizetype{31})));
    return names;
}
} // namespace

class TestALSAEndpointName : public CTestCase
{
    Q_OBJECT

  private slots:
    void formsOfTheDevicesPorts_data();
    void formsOfTheDevicesPorts();
    void formsOfPorts_data();
    void formsOfPorts();
};

// However the kernel names the third cable, together with the device's name it has to be the editor's port.
void TestALSAEndpointName::formsOfTheDevicesPorts_data()
{
    QTest::addColumn<QByteArrayList>("ports");
    QTest::newRow("made up: client MIDI n") << cables("Trellwick KTZ-JX MIDI ");
    QTest::newRow("jack 'Port n' behind the client") << cables("Trellwick KTZ-JX Port ");
    QTest::newRow("jack 'Portn' behind the client") << cables("Trellwick KTZ-JX Port");
    QTest::newRow("jack 'MIDI n' alone") << cables("MIDI ");
    QTest::newRow("jack 'Port n' alone") << cables("Port ");
    QTest::newRow("jack 'Portn' alone") << cables("Port");
    QTest::newRow("jack with the client's name, alone") << cables("Trellwick KTZ-JX Port");
    QTest::newRow("jack with the client's name, behind the client: cut, all the same")
        << cables("Trellwick KTZ-JX Trellwick KTZ-JX Port");
    QTest::newRow("jack with the client's name, 'MIDI n', behind the client") << cables("Trellwick KTZ-JX Trellwick "
                                                                                        "KTZ-JX MIDI ");
    QTest::newRow("all the same, not cut")
        << QByteArrayList{"Trellwick KTZ-JX Jack", "Trellwick KTZ-JX Jack", "Trellwick KTZ-JX Jack"};
    QTest::newRow("all named as the client") << QByteArrayList{k_client, k_client, k_client};
    QTest::newRow("counted from 0") << QByteArrayList{"Trellwick KTZ-JX MIDI 0", "Trellwick KTZ-JX MIDI 1",
                                                      "Trellwick KTZ-JX MIDI 2"};
}

void TestALSAEndpointName::formsOfTheDevicesPorts()
{
    QFETCH(QByteArrayList, ports);
    const QString device = QString::fromUtf8(k_client);
    for (qsizetype i = 0; i < ports.size(); ++i) {
        const QString endpoint = alsaEndpointName(k_client, ports, i);
        const QString port = endpoint.contains(device) ? endpoint : device + ' ' + endpoint;
        QCOMPARE(port, QStringLiteral("Trellwick KTZ-JX Port%1").arg(i + 1));
    }
}

void TestALSAEndpointName::formsOfPorts_data()
{
    QTest::addColumn<QByteArray>("client");
    QTest::addColumn<QByteArrayList>("ports");
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("name");

    QTest::newRow("number of the order, not of the text")
        << k_client << QByteArrayList{"Trellwick KTZ-JX MIDI 7", "Trellwick KTZ-JX MIDI 9"} << 1 << "Port2";
    QTest::newRow("several digits") << k_client << QByteArrayList{"MIDI 12"} << 0 << "Port1";
    QTest::newRow("other text") << k_client << QByteArrayList{"Trellwick KTZ-JX Editor"} << 0
                                << "Trellwick KTZ-JX Editor";
    QTest::newRow("other text, without the client") << k_client << QByteArrayList{"Editor"} << 0 << "Editor";
    QTest::newRow("a counted port beside another text")
        << k_client << QByteArrayList{"Trellwick KTZ-JX Editor", "Trellwick KTZ-JX MIDI 2"} << 1 << "Port2";
    QTest::newRow("another text beside a counted port")
        << k_client << QByteArrayList{"Trellwick KTZ-JX Editor", "Trellwick KTZ-JX MIDI 2"} << 0
        << "Trellwick KTZ-JX Editor";
    QTest::newRow("the client's name alone") << k_client << QByteArrayList{k_client} << 0 << "Trellwick KTZ-JX";
    QTest::newRow("the client's name twice") << QByteArray("KTZ") << QByteArrayList{"KTZ KTZ MIDI 1"} << 0 << "Port1";
    QTest::newRow("a longer word is no repeat of the client's name")
        << QByteArray("KTZ") << QByteArrayList{"KTZX MIDI 1"} << 0 << "KTZX MIDI 1";
    QTest::newRow("no number") << k_client << QByteArrayList{"Trellwick KTZ-JX MIDI"} << 0 << "Trellwick KTZ-JX MIDI";
    QTest::newRow("more than a number") << k_client << QByteArrayList{"MIDI 1 In"} << 0 << "MIDI 1 In";
    QTest::newRow("more before the number") << k_client << QByteArrayList{"USB MIDI 1"} << 0 << "USB MIDI 1";
    QTest::newRow("other case") << k_client << QByteArrayList{"midi 1"} << 0 << "midi 1";
    QTest::newRow("30 bytes: whole") << QByteArray("A") << QByteArrayList{QByteArray(30, 'x')} << 0 << QString(30, 'x');
    QTest::newRow("31 bytes: cut off") << QByteArray("A") << QByteArrayList{"short", QByteArray(31, 'x')} << 1
                                       << "Port2";
    QTest::newRow("32 bytes: no kernel's")
        << QByteArray("A") << QByteArrayList{QByteArray(32, 'x')} << 0 << QString(32, 'x');
    QTest::newRow("cut within a letter") << QByteArray("A") << QByteArrayList{QByteArray(30, 'x') + '\xC3'} << 0
                                         << "Port1";
    QTest::newRow("one text under two names") << QByteArray("A") << QByteArrayList{"A In", "In"} << 1 << "Port2";
    QTest::newRow("the only one that is not shared")
        << QByteArray("A") << QByteArrayList{"In", "In", "Out"} << 2 << "Out";
    QTest::newRow("client without a name") << QByteArray() << QByteArrayList{"In"} << 0 << "In";
    QTest::newRow("client without a name, counted") << QByteArray() << QByteArrayList{"MIDI 1"} << 0 << "Port1";
    QTest::newRow("port without a name") << k_client << QByteArrayList{""} << 0 << "";
    QTest::newRow("letters beyond ASCII")
        << QByteArray("A") << QByteArrayList{"Ger\xC3\xA4t"} << 0 << QString::fromUtf8("Ger\xC3\xA4t");
}

void TestALSAEndpointName::formsOfPorts()
{
    QFETCH(QByteArray, client);
    QFETCH(QByteArrayList, ports);
    QFETCH(int, index);
    QTEST(alsaEndpointName(client, ports, index), "name");
}

QTEST_GUILESS_MAIN(TestALSAEndpointName)
#include "TestALSAEndpointName.moc"
