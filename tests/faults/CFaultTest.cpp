#include "tests/faults/CFaultTest.h"

#include "tests/faults/FaultFixture.h"
#include "tests/support/CFileDialogAnswer.h"
#include "tests/support/CMessageBoxAnswer.h"
#include "tests/support/MemoryIsSanitized.h"

namespace
{
// What the toolkit's caches take in a run of rows; a leak of a window a row would be a megabyte each.
constexpr qint64 k_cacheKilobytes = 16 * 1024;
} // namespace

void CFaultTest::initTestCase()
{
    // The toolkit's own helper threads and descriptors come with the first window, box and dialog, and stay.
    FaultFixture fixture;
    fixture.startConnected();
    CMessageBoxAnswer boxes(QMessageBox::No);
    fixture.action(k_revrtString)->trigger();
    CFileDialogAnswer dialogs({});
    fixture.action(k_openString)->trigger();
    QCOMPARE(dialogs.dialogs().size(), 1);
}

void CFaultTest::init()
{
    CTestCase::init();
    m_before = ProcessResources::now();
}

void CFaultTest::cleanup()
{
    // A thread that was joined is among the process's threads for a moment longer.
    QTRY_COMPARE(ProcessResources::now().threads, m_before.threads);
    QTRY_COMPARE(ProcessResources::now().descriptors, m_before.descriptors);
    if (m_firstKilobytes == 0)
        m_firstKilobytes = ProcessResources::now().residentKilobytes;
}

void CFaultTest::cleanupTestCase()
{
    const qint64 grown = ProcessResources::now().residentKilobytes - m_firstKilobytes;
    QVERIFY2(k_memoryIsSanitized || grown <= k_cacheKilobytes, qPrintable(QString::number(grown)));
}
