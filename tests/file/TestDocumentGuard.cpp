#include "file/CDocumentGuard.h"
#include "tests/support/CTestCase.h"

namespace
{
const QString k_start = QStringLiteral("<!DOCTYPE KTZJXEditor>\n");

QString nested(int depth)
{
    return QStringLiteral("<a>").repeated(depth) + QStringLiteral("</a>").repeated(depth);
}

/// One element with this many attributes.
QString withAttributes(int count)
{
    QString tag = QStringLiteral("<a");
    for (int i = 0; i < count; ++i)
        tag += QStringLiteral(" b%1=\"1\"").arg(i);
    return tag + QStringLiteral("/>");
}

/// This many tags, siblings in one element.
QString withTags(int count)
{
    return QStringLiteral("<a>") + QStringLiteral("<b/>").repeated(count - 2) + QStringLiteral("</a>");
}
} // namespace

class TestDocumentGuard : public CTestCase
{
    Q_OBJECT

  private slots:
    void accepts_data();
    void accepts();
    void tellsTheLineOfTheTagThatItRefuses_data();
    void tellsTheLineOfTheTagThatItRefuses();
    void takesTimeInProportionToTheLength_data();
    void takesTimeInProportionToTheLength();
};

void TestDocumentGuard::accepts_data()
{
    QTest::addColumn<QString>("document");
    QTest::addColumn<bool>("accepted");

    const auto yes = [](const char* name, const QString& document) { QTest::newRow(name) << document << true; };
    const auto no = [](const char* name, const QString& document) { QTest::newRow(name) << document << false; };

    yes("nothing", {});
    yes("no markup", "text");
    yes("a document", k_start + "<parameters version=\"1.0\"><controlview><key1>5</key1></controlview></parameters>");
    yes("declaration and comment", "<?xml version='1.0'?>" + k_start + "<!-- > < [ = --><a/>");
    yes("public and system id", "<!DOCTYPE a PUBLIC \"-//x > [\" 'y [ >'><a/>");
    yes("signs in an attribute's value", "<a b=\"[ > / = '\" c='\"'/>");
    yes("signs in text", "<a>[ ] > = / ' \"</a>");
    yes("signs in CDATA", "<a><![CDATA[ < <b [ = ]] > ]]></a>");
    yes("signs in an instruction", "<a><?b < [ > ?></a>");

    no("empty internal subset", "<!DOCTYPE a []><a/>");
    no("entity", "<!DOCTYPE a [<!ENTITY b \"c\">]><a>&b;</a>");
    no("subset behind ids", "<!DOCTYPE a PUBLIC \"x\" \"y\" [<!ENTITY b \"c\">]><a/>");
    no("subset behind a comment", "<!-- ]> --><!DOCTYPE a\n\t[ <!ENTITY b \"c\"> ]><a/>");

    no("tag without end", "<a");
    no("sign at the end", "<a/><");
    no("end tag without end", "<a></a");
    no("comment without end", "<a><!-- </a>");
    no("comment ended by its own beginning", "<!-->");
    no("CDATA without end", "<a><![CDATA[ </a>");
    no("instruction without end", "<?xml");
    no("quote without end", "<a b=\"></a>");

    yes("as deep as allowed", nested(CDocumentGuard::k_depthLimit));
    no("one deeper", nested(CDocumentGuard::k_depthLimit + 1));
    yes("deep again after an end", nested(CDocumentGuard::k_depthLimit).repeated(3));
    yes("empty elements are not deep", "<a>" + QString("<b/>").repeated(CDocumentGuard::k_depthLimit * 2) + "</a>");
    yes("as many attributes as allowed", withAttributes(CDocumentGuard::k_attributeLimit));
    no("one attribute more", withAttributes(CDocumentGuard::k_attributeLimit + 1));
    no("one attribute more, in several elements",
       "<c>" + withAttributes(CDocumentGuard::k_attributeLimit) + "<d e='1'/></c>");
    yes("as many tags as allowed", withTags(CDocumentGuard::k_tagLimit));
    no("one tag more", withTags(CDocumentGuard::k_tagLimit + 1));
    no("too many comments", QString("<!---->").repeated(CDocumentGuard::k_tagLimit) + "<a/>");
}

void TestDocumentGuard::accepts()
{
    QFETCH(QString, document);
    QTEST(CDocumentGuard::accepts(document), "accepted");
}

void TestDocumentGuard::tellsTheLineOfTheTagThatItRefuses_data()
{
    QTest::addColumn<QString>("document");
    QTest::addColumn<int>("line");
    QTest::newRow("none") << "<a>\n</a>\n" << 0;
    QTest::newRow("no tag at all") << "a\nb\n" << 0;
    QTest::newRow("without an end, on the first line") << "<a" << 1;
    QTest::newRow("without an end, and lines behind it") << "<a>\n<b\n\n\n" << 2;
    QTest::newRow("comment without an end") << "<a>\n\n<!-- b\n" << 3;
    QTest::newRow("internal subset") << "\n<!DOCTYPE a [\n]>\n<a/>" << 2;
    QTest::newRow("one element too deep")
        << QStringLiteral("<a>\n").repeated(CDocumentGuard::k_depthLimit + 1) << CDocumentGuard::k_depthLimit + 1;
}

void TestDocumentGuard::tellsTheLineOfTheTagThatItRefuses()
{
    QFETCH(QString, document);
    QTEST(CDocumentGuard::refusedLine(document), "line");
}

void TestDocumentGuard::takesTimeInProportionToTheLength_data()
{
    QTest::addColumn<QString>("unit");
    QTest::newRow("text") << "x";
    QTest::newRow("beginnings of tags") << "<";
    QTest::newRow("comments without end") << "<!--";
    QTest::newRow("CDATA without end") << "<![CDATA[";
    QTest::newRow("instructions without end") << "<?";
    QTest::newRow("declarations") << "<!";
    QTest::newRow("quotes") << "<a b='";
    QTest::newRow("elements") << "<a>";
    QTest::newRow("end tags") << "</a>";
}

void TestDocumentGuard::takesTimeInProportionToTheLength()
{
    // A scan that went back would take minutes for the largest text that it can get.
    QFETCH(QString, unit);
    const QString document = unit.repeated(CDocumentGuard::k_sizeLimit / unit.size());
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(CDocumentGuard::accepts(document), unit == "x");
    QVERIFY(timer.elapsed() < 2000);
}

KTZ_TEST(QCoreApplication, TestDocumentGuard)
#include "TestDocumentGuard.moc"
