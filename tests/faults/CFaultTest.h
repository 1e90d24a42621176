#pragma once

#include "tests/soak/ProcessResources.h"
#include "tests/support/CTestCase.h"

/// Base of the tests of a family of faults: after each row, threads and descriptors have to be back to where they were,
/// and after all of them the memory.
class CFaultTest : public CTestCase
{
    Q_OBJECT

  protected slots:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

  private:
    ProcessResources m_before;
    qint64 m_firstKilobytes = 0; ///< resident after the first row, 0 before it has ended
};
