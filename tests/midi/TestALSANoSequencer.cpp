#include "midi/CMIDIInput.h"
#include "midi/CMIDIOutput.h"
#include "midi/MIDIPlatform.h"
#include "tests/support/CTestCase.h"

#include <QFile>
#include <QTemporaryFile>

#include <unistd.h>

// With the system's own library, on a machine that has no sequencer.
class TestALSANoSequencer : public CTestCase
{
    Q_OBJECT

  private slots:
    void countsAreZeroAndNothingIsPrinted();
};

void TestALSANoSequencer::countsAreZeroAndNothingIsPrinted()
{
    if (QFile::exists(QStringLiteral("/dev/snd/seq")))
        QSKIP("This machine has a sequencer.");

    QTemporaryFile printed;
    QVERIFY(printed.open());
    const int standardError = dup(STDERR_FILENO);
    QVERIFY(dup2(printed.handle(), STDERR_FILENO) >= 0);
    const int sources = MIDIPlatform::listSources();
    const int destinations = MIDIPlatform::listDestinations();
    const auto input = MIDIPlatform::createInput();
    const auto output = MIDIPlatform::createOutput();
    const int inputStatus = input->initialize();
    const int outputStatus = output->initialize();
    const bool opened = input->openPort(0) || output->openPort(0);
    input->closePort();
    output->closePort();
    dup2(standardError, STDERR_FILENO);
    close(standardError);

    QCOMPARE(sources, 0);
    QCOMPARE(destinations, 0);
    QVERIFY(inputStatus < 0);
    QVERIFY(outputStatus < 0);
    QVERIFY(!opened);
    QCOMPARE(printed.size(), 0);
}

KTZ_TEST(QCoreApplication, TestALSANoSequencer)
#include "TestALSANoSequencer.moc"
