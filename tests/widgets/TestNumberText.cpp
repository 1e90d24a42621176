#include "tests/support/CTestCase.h"
#include "widgets/NumberText.h"

#include <array>
#include <clocale>
#include <cmath>
#include <cstdio>

class TestNumberText : public CTestCase
{
    Q_OBJECT

  private slots:
    void formatsLikePrintf_data();
    void formatsLikePrintf();
    void agreesWithPrintfForEveryConversion();
    void pointIsAPointInEveryLanguage();
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
    QTest::newRow("hexadecimal") << "%.1a" << 1.5 << "0x1.8p+0";
    QTest::newRow("hexadecimal, capitals") << "%A" << -2.0 << "-0X1P+1";
    QTest::newRow("exponent") << "%.2E" << 1234.0 << "1.23E+03";
    QTest::newRow("left in its width") << "%-5.0f|" << 64.0 << "64   |";
    QTest::newRow("point without decimals") << "%#.0f" << 64.0 << "64.";
    QTest::newRow("decimals by default") << "%f" << 0.5 << "0.500000";
    QTest::newRow("precision of nothing") << "%.f" << 64.0 << "64";
    QTest::newRow("a double's own length") << "%.1lf" << 64.0 << "64.0";
    QTest::newRow("and without decimals") << "%lf" << 64.0 << "64.000000";
    QTest::newRow("a long double's length, which the number has not") << "%.2Lf" << 1.5 << "1.50";
    QTest::newRow("percent sign alone") << "%%" << 64.0 << "%";
    QTest::newRow("percent sign before a letter") << "%%d" << 64.0 << "%d";
    QTest::newRow("percent signs around") << "%%%.0f%%" << 64.0 << "%64%";
    QTest::newRow("no conversion") << "value" << 64.0 << "value";
    QTest::newRow("empty") << "" << 64.0 << "";
    QTest::newRow("widest") << "%999.0f" << 64.0 << QString(997, QLatin1Char(' ')) + QStringLiteral("64");
    QTest::newRow("beyond ASCII") << QStringLiteral("%.0f \u00b5s") << 12.0 << QStringLiteral("12 \u00b5s");
}

void TestNumberText::formatsLikePrintf()
{
    QFETCH(QString, format);
    QFETCH(double, number);
    QTEST(numberText(format, number), "text");
}

void TestNumberText::agreesWithPrintfForEveryConversion()
{
    int formats = 0;
    for (const QByteArray flags : {"", "-", "+", " ", "#", "0", "-+", "#0"}) {
        for (const QByteArray width : {"", "1", "12"}) {
            for (const QByteArray precision : {"", ".", ".0", ".3", ".17"}) {
                for (const char conversion : QByteArray("aAeEfFgG")) {
                    const QByteArray format = '%' + flags + width + precision + conversion;
                    for (const double number :
                         {0.0, -0.0, 1.0, -1.5, 63.999, 1e-7, 1e20, double(NAN), -double(INFINITY)}) {
                        std::array<char, 400> text{};
                        std::snprintf(text.data(), text.size(), format.constData(), number);
                        QCOMPARE(numberText(QString::fromLatin1(format), number), QString::fromLatin1(text.data()));
                    }
                    ++formats;
                }
            }
        }
    }
    QCOMPARE(formats, 8 * 3 * 5 * 8);
}

void TestNumberText::pointIsAPointInEveryLanguage()
{
    const QByteArray before = std::setlocale(LC_NUMERIC, nullptr);
    const char* set = nullptr;
    for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "de_DE", "fr_FR"}) {
        set = std::setlocale(LC_NUMERIC, name);
        if (set != nullptr)
            break;
    }
    const QString text = numberText(QStringLiteral("%.2f"), 1.5);
    std::setlocale(LC_NUMERIC, before.constData());
    if (set == nullptr)
        QSKIP("this machine has no language with a comma");
    QCOMPARE(text, QStringLiteral("1.50"));
}

void TestNumberText::formatThatReadsAnythingElseCountsAsPlain_data()
{
    QTest::addColumn<QString>("format");
    QTest::newRow("integer") << "%d";
    QTest::newRow("long integer") << "%ld";
    QTest::newRow("two lengths") << "%llf";
    QTest::newRow("two long lengths") << "%LLf";
    QTest::newRow("a short length") << "%hf";
    QTest::newRow("percent sign alone") << "%";
    QTest::newRow("string") << "%s";
    QTest::newRow("write-back") << "%n";
    QTest::newRow("two conversions") << "%.0f %.0f";
    QTest::newRow("width from an argument") << "%*f";
    QTest::newRow("unfinished") << "%.0f %";
    QTest::newRow("precision from an argument") << "%.*f";
    QTest::newRow("argument by its number") << "%2$f";
    QTest::newRow("absurd width") << "%99999f";
    QTest::newRow("absurd precision") << "%.9999f";
}

void TestNumberText::formatThatReadsAnythingElseCountsAsPlain()
{
    QFETCH(QString, format);
    QCOMPARE(numberText(format, 64.0), QStringLiteral("64"));
}

KTZ_TEST(QCoreApplication, TestNumberText)
#include "TestNumberText.moc"
