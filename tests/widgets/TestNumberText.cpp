#include "tests/support/CTestCase.h"
#include "widgets/NumberText.h"

class TestNumberText : public CTestCase
{
    Q_OBJECT

  private slots:
    void formatsLikePrintf_data();
    void formatsLikePrintf();
    void formatThatReadsAnythingElseCountsAsPlain_data();
    void formatThatReadsAnythingElseCountsAsPlain();
};

void TestNumberText::formatsLikePrintf_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<double>("number");
    QTest::addColumn<QString>("text");
    QTest::newRow("plain") << "%.0f" << 64.0 << "64";
    QTest::newRow("negative") << "%.0f" << -3.0 << "-3";
    QTest::newRow("decimals") << "%.2f" << 1.5 << "1.50";
    QTest::newRow("width and zeros") << "%03.0f" << 7.0 << "007";
    QTest::newRow("sign") << "%+.1f" << 2.0 << "+2.0";
    QTest::newRow("text around it") << "ch %.0f!" << 16.0 << "ch 16!";
    QTest::newRow("percent sign") << "%.0f %%" << 50.0 << "50 %";
    QTest::newRow("shortest form") << "%g" << 0.25 << "0.25";
    QTest::newRow("beyond ASCII") << QStringLiteral("%.0f \u00b5s") << 12.0 << QStringLiteral("12 \u00b5s");
}

void TestNumberText::formatsLikePrintf()
{
    QFETCH(QString, format);
    QFETCH(double, number);
    QTEST(numberText(format, number), "text");
}

void TestNumberText::formatThatReadsAnythingElseCountsAsPlain_data()
{
    QTest::addColumn<QString>("format");
    QTest::newRow("empty") << "";
    QTest::newRow("no conversion") << "value";
    QTest::newRow("integer") << "%d";
    QTest::newRow("string") << "%s";
    QTest::newRow("write-back") << "%n";
    QTest::newRow("two conversions") << "%.0f %.0f";
    QTest::newRow("width from an argument") << "%*f";
    QTest::newRow("unfinished") << "%.0f %";
    QTest::newRow("absurd width") << "%99999f";
}

void TestNumberText::formatThatReadsAnythingElseCountsAsPlain()
{
    QFETCH(QString, format);
    QCOMPARE(numberText(format, 64.0), QStringLiteral("64"));
}

QTEST_GUILESS_MAIN(TestNumberText)
#include "TestNumberText.moc"
