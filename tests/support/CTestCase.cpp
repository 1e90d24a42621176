#include "tests/support/CTestCase.h"

void CTestCase::init()
{
    QTest::failOnWarning(
        QRegularExpression(QStringLiteral("^QObject::(connect|disconnect)|QMetaObject::connectSlots")));
}
