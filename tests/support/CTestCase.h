#pragma once

#include "tests/support/CTestEntry.h"
#include "tests/support/WaitFor.h"

#include <QObject>
#include <QSignalSpy>
#include <QTest>

/// Base of every test: fails a test function in which Qt refuses a connection, so that a misspelt signal or slot name
/// cannot stay dead and silent. A test with an init() of its own calls this one first.
class CTestCase : public QObject
{
    Q_OBJECT

  protected slots:
    void init();
};
