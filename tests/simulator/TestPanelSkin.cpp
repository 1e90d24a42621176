#include "simulator/device/DeviceMessages.h"
#include "simulator/panel/LEDRing.h"
#include "simulator/panel/PanelLook.h"
#include "simulator/panel/PanelText.h"
#include "tests/support/CTestCase.h"
#include "widgets/KnobLEDStates.h"

#include <QFile>
#include <QMap>

/// What the panel shows and how it says it, without a window.
class TestPanelSkin : public CTestCase
{
    Q_OBJECT

  private slots:
    void coloursAreTheSkins();
    void ringIsLitAsTheEditorShowsIt();
    void knobsAndChannelsAreCountedFromOne();
    void meaningOfAMessage_data();
    void meaningOfAMessage();
};

void TestPanelSkin::coloursAreTheSkins()
{
    QFile file(QStringLiteral(KTZ_PALETTE));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QMap<QString, QColor> palette;
    for (const QByteArray& line : file.readAll().split('\n')) {
        const QStringList words = QString::fromLatin1(line).simplified().split(' ');
        if (words.size() == 2 && !line.startsWith("# "))
            palette[words[0]] = QColor(words[1]);
    }
    const QMap<QString, QColor> ours{
        {"white", PanelLook::white}, {"plate", PanelLook::plate},       {"mist", PanelLook::mist},
        {"steel", PanelLook::steel}, {"graphite", PanelLook::graphite}, {"ink", PanelLook::ink},
        {"moss", PanelLook::moss},   {"green", PanelLook::green},       {"glow", PanelLook::glow}};
    QCOMPARE(ours, palette);
}

void TestPanelSkin::ringIsLitAsTheEditorShowsIt()
{
    constexpr int k_unknownType = 4;
    for (int type = 0; type <= k_unknownType; ++type) {
        for (int value = 0; value <= 127; ++value)
            QCOMPARE(LEDRing::lit(type, value), 3 * knobLEDIndex(type, value));
    }
}

void TestPanelSkin::knobsAndChannelsAreCountedFromOne()
{
    const KnobSettings settings{10, 0, 127, 0, 2};
    QCOMPARE(PanelText::turned(2, settings, 64), QStringLiteral("Knob 3: CC 10, channel 1, value 64"));
    QCOMPARE(PanelText::settings(settings), QStringLiteral("CC 10, channel 1, max 127, min 0, LED concave"));
}

void TestPanelSkin::meaningOfAMessage_data()
{
    using namespace DeviceMessages;
    QTest::addColumn<QByteArray>("message");
    QTest::addColumn<QString>("meaning");
    QTest::newRow("start") << start() << "Start";
    QTest::newRow("keep") << keep() << "Keep-alive";
    QTest::newRow("end") << end() << "End";
    QTest::newRow("request") << requestAll() << "Request for all settings";
    QTest::newRow("settings") << changeParameter(7, {1, 15, 3, 4, 3})
                              << "Knob 8: CC 1, channel 16, max 3, min 4, LED convex";
    QTest::newRow("value") << noticeValue(0, 64) << "Knob 1: value 64";
    QTest::newRow("anything else") << QByteArray("\x90\x40\x7f") << "Not a message of this device";
}

void TestPanelSkin::meaningOfAMessage()
{
    QFETCH(const QByteArray, message);
    QFETCH(const QString, meaning);
    QCOMPARE(PanelText::meaning(message), meaning);
}

KTZ_TEST(QCoreApplication, TestPanelSkin)
#include "TestPanelSkin.moc"
