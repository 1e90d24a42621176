#include "app/common/Constants.h"
#include "device/CMemAPIObserver.h"
#include "file/CFileWrapper.h"
#include "tests/file/SettingsFixture.h"
#include "tests/support/CTestCase.h"

#include <QDomDocument>
#include <QStringEncoder>

#include <optional>

Q_DECLARE_METATYPE(std::optional<ParamList>)

namespace
{
const QByteArray k_example = R"(<!DOCTYPE KTZJXEditor>
<parameters version="1.0">
    <controlview>
        <key1>
            <key1101>10</key1101>
            <key1201>0</key1201>
            <key1301>0</key1301>
            <key1401>127</key1401>
            <key1501>1</key1501>
        </key1>
    </controlview>
</parameters>
)";

/// The memory stays as it was.
const std::optional<ParamList> k_untouched;

QDomElement element(QDomDocument* owner, const QString& xml)
{
    owner->setContent(xml);
    return owner->documentElement();
}

/// Every broken document, and what the memory holds after it was refused.
QMap<QString, std::optional<ParamList>> brokenDocumentTable()
{
    QMap<QString, std::optional<ParamList>> table;
    const ParamList nothing;
    const ParamList knob0{{"0", asText(knobList(0))}};
    for (const char* name :
         {"attribute-twice", "attribute-without-quotes", "binary", "control-character", "cut-before-the-last-end-tag",
          "cut-in-a-tag", "cut-in-a-value", "empty-file", "invalid-utf-8", "not-xml", "only-white-space",
          "text-after-the-root", "two-roots", "unknown-entity", "wrong-end-tag"})
        table.insert(name, k_untouched);
    for (const char* name :
         {"doctype-in-lower-case", "doctype-with-empty-subset", "doctype-with-entities", "no-doctype", "other-doctype"})
        table.insert(name, k_untouched);
    for (const char* name : {"empty-version", "no-version", "other-root", "version-0.9", "version-abc",
                             "version-in-other-case", "version-negative"})
        table.insert(name, k_untouched);
    for (const char* name : {"empty-root", "no-controlview", "empty-controlview"})
        table.insert(name, nothing);
    for (const char* name :
         {"empty-leaf", "empty-leaf-with-end-tag", "white-space-leaf", "empty-knob", "comment-between-settings"})
        table.insert(name, knob0);
    return table;
}
} // namespace

class TestFile : public CTestCase
{
    Q_OBJECT

  private slots:
    void init();

    void writesTheExample();
    void writesWhatItReadsAsText();
    void writesWholeParameterList();
    void writesNoKnobWithoutSettings();
    void namesOfTheWrapper();

    void setParamToElementWritesInKeyOrder();
    void setParamToElementOfAnEmptyListAddsNothing();
    void setParamToElementRefusesNull();
    void getParamFromElementReads_data();
    void getParamFromElementReads();
    void getParamFromElementFails_data();
    void getParamFromElementFails();
    void getParamFromElementRefusesNull();

    void readsVersions_data();
    void readsVersions();
    void readsVariantsOfTheDocument_data();
    void readsVariantsOfTheDocument();
    void onlySettingsEnterTheMemory_data();
    void onlySettingsEnterTheMemory();
    void readingNotifiesNobodyAndSendsNothing();

    void brokenDocuments_data();
    void brokenDocuments();
    void everyBrokenDocumentIsInTheTable();

    void withoutMemoryNothingIsReadOrWritten();
    void createDataRefusesNull();

  private:
    std::optional<SettingsFixture> m_settings;
};

void TestFile::init()
{
    CTestCase::init();
    m_settings.emplace();
}

void TestFile::writesTheExample()
{
    m_settings->memory.setParamList({{"1", knobList(1)}});
    CFileWrapper file(nullptr, &m_settings->memory);
    const QString path = m_settings->path("example.CJX");
    QCOMPARE(file.write(path), QString());
    QCOMPARE(SettingsFixture::bytesOf(path), k_example);
}

void TestFile::writesWhatItReadsAsText()
{
    CFileWrapper file(nullptr, &m_settings->memory);
    QCOMPARE(file.read(m_settings->file("example.CJX", k_example)), QString());
    const ParamList expected{{"1", asText(knobList(1))}};
    QCOMPARE(m_settings->memory.getParamList(), expected);
    QCOMPARE(m_settings->memory.getParamList().value("1").toMap().value("1101").typeId(), int(QMetaType::QString));
    QCOMPARE(m_settings->memory.getParam(1401), 127);

    const QString again = m_settings->path("again.CJX");
    QCOMPARE(file.write(again), QString());
    QCOMPARE(SettingsFixture::bytesOf(again), k_example);
}

void TestFile::writesWholeParameterList()
{
    CFileWrapper file(nullptr, &m_settings->memory);
    const QString path = m_settings->path("all.CJX");
    QCOMPARE(file.write(path), QString());
    m_settings->memory.setParamList({});
    QCOMPARE(file.read(path), QString());
    QCOMPARE(m_settings->memory.getParamList(), asText(factoryList()));
}

void TestFile::writesNoKnobWithoutSettings()
{
    m_settings->memory.setParamList({{"1", knobList(1)}});
    // Knob 2 has nothing that a copied value could replace, and remembers that as an empty list.
    m_settings->memory.copyParamListFromKnobValueList(1);
    m_settings->memory.pasteParamListToKnobValueList(2);
    CFileWrapper file(nullptr, &m_settings->memory);
    const QString path = m_settings->path("one.CJX");
    QCOMPARE(file.write(path), QString());
    QCOMPARE(SettingsFixture::bytesOf(path), k_example);
    QCOMPARE(file.read(path), QString());
}

void TestFile::namesOfTheWrapper()
{
    const CFileWrapper file(nullptr, &m_settings->memory);
    QCOMPARE(file.getDocType(), QString("KTZJXEditor"));
    QCOMPARE(file.getExtension(), QString("KTZ-JX files (*.CJX)"));
}

void TestFile::setParamToElementWritesInKeyOrder()
{
    QDomDocument owner;
    QDomElement parent = owner.createElement("parent");
    const ParamList list{{"9", 1},
                         {"10", ParamList{{"b", "text"}, {"a", ParamList{{"c", 2.5}}}}},
                         {"11", QVariant()},
                         {"12", ParamList()}};
    QCOMPARE(CFile::setParamToElement(list, &owner, &parent), QString());
    owner.appendChild(parent);
    QCOMPARE(owner.toString(-1),
             QString("<parent><key10><keya><keyc>2.5</keyc></keya><keyb>text</keyb></key10><key11></key11><key12/>"
                     "<key9>1</key9></parent>"));
}

void TestFile::setParamToElementOfAnEmptyListAddsNothing()
{
    QDomDocument owner;
    QDomElement parent = owner.createElement("parent");
    QCOMPARE(CFile::setParamToElement({}, &owner, &parent), QString());
    QVERIFY(!parent.hasChildNodes());
}

void TestFile::setParamToElementRefusesNull()
{
    QDomDocument owner;
    QDomElement parent = owner.createElement("parent");
    QCOMPARE(CFile::setParamToElement({{"1", 1}}, nullptr, &parent), k_saveError);
    QCOMPARE(CFile::setParamToElement({{"1", 1}}, &owner, nullptr), k_saveError);
    QVERIFY(!parent.hasChildNodes());
}

void TestFile::getParamFromElementReads_data()
{
    QTest::addColumn<QString>("xml");
    QTest::addColumn<QVariant>("value");
    const auto row = [](const char* name, const QString& xml, const QVariant& value) {
        QTest::newRow(name) << xml << value;
    };
    row("text", "<a>10</a>", "10");
    row("text with white space around it", "<a> 10\n</a>", " 10\n");
    row("text before elements hides them", "<a>10<key1>5</key1></a>", "10");
    row("CDATA is text", "<a><![CDATA[10]]></a>", "10");
    row("text with a character reference", "<a>1&#48;</a>", "10");
    row("map", "<a><key1>5</key1><key2>6</key2></a>", ParamList{{"1", "5"}, {"2", "6"}});
    row("maps within maps", "<a><key1><key2><key3>5</key3></key2></key1></a>",
        ParamList{{"1", ParamList{{"2", ParamList{{"3", "5"}}}}}});
    row("the prefix twice", "<a><keykey5>1</keykey5></a>", ParamList{{"5", "1"}});
    row("the prefix in the middle and at the end", "<a><a1key2key>1</a1key2key></a>", ParamList{{"a12", "1"}});
    row("the prefix is case-sensitive", "<a><Key5>1</Key5></a>", ParamList{{"Key5", "1"}});
    row("no prefix", "<a><b>1</b></a>", ParamList{{"b", "1"}});
    row("nothing but the prefix", "<a><key>1</key></a>", ParamList{{"", "1"}});
    row("a later equal key replaces an earlier one", "<a><key5>1</key5><keykey5>2</keykey5></a>",
        ParamList{{"5", "2"}});
    row("namesakes have the first one's value", "<a><key5>1</key5><key5>2</key5></a>", ParamList{{"5", "1"}});
    row("a namesake replaces an equal key by the first one's value",
        "<a><key5>1</key5><keykey5>2</keykey5><key5>3</key5></a>", ParamList{{"5", "1"}});
}

void TestFile::getParamFromElementReads()
{
    QFETCH(QString, xml);
    QDomDocument owner;
    QVariant value;
    QCOMPARE(CFile::getParamFromElement(element(&owner, xml), &value), QString());
    QTEST(value, "value");
}

void TestFile::getParamFromElementFails_data()
{
    QTest::addColumn<QString>("xml");
    QTest::addColumn<QVariant>("value"); // what was read before the fault
    QTest::newRow("no element") << "" << QVariant();
    QTest::newRow("empty element") << "<a/>" << QVariant();
    QTest::newRow("empty leaf") << "<a><key1>5</key1><key2/><key3>6</key3></a>" << QVariant(ParamList{{"1", "5"}});
    QTest::newRow("comment") << "<a><key1>5</key1><!-- 2 --><key3>6</key3></a>" << QVariant(ParamList{{"1", "5"}});
    QTest::newRow("fault one level down") << "<a><key1><key2>5</key2><key3/></key1></a>" << QVariant(ParamList());
    QTest::newRow("text between elements")
        << "<a><key1>5</key1>text<key3>6</key3></a>" << QVariant(ParamList{{"1", "5"}});
}

void TestFile::getParamFromElementFails()
{
    QFETCH(QString, xml);
    QDomDocument owner;
    QVariant value;
    QCOMPARE(CFile::getParamFromElement(element(&owner, xml), &value), k_openError);
    QTEST(value, "value");
}

void TestFile::getParamFromElementRefusesNull()
{
    QDomDocument owner;
    QCOMPARE(CFile::getParamFromElement(element(&owner, "<a>1</a>"), nullptr), k_openError);
}

void TestFile::readsVersions_data()
{
    QTest::addColumn<QByteArray>("version");
    QTest::addColumn<bool>("accepted");
    for (const char* version : {"1.0", "1", "1.0000", "1.1", "2.0", "10", " 1.0 ", "1e1"})
        QTest::newRow(version) << QByteArray(version) << true;
    for (const char* version : {"0.9", "0.999", "0", "", "abc", "-1.0", "1.0b", "1,0", "v1.0", "nan"})
        QTest::newRow(qPrintable(QString("not %1").arg(version))) << QByteArray(version) << false;
}

void TestFile::readsVersions()
{
    QFETCH(QByteArray, version);
    QFETCH(bool, accepted);
    CFileWrapper file(nullptr, &m_settings->memory);
    const QByteArray bytes = QByteArray(k_example).replace("\"1.0\"", "\"" + version + "\"");
    QCOMPARE(file.read(m_settings->file("version.CJX", bytes)), accepted ? QString() : k_openError);
    const ParamList expected{{"1", asText(knobList(1))}};
    QCOMPARE(m_settings->memory.getParamList(), accepted ? expected : factoryList());
}

void TestFile::readsVariantsOfTheDocument_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const QString text = QString::fromLatin1(k_example);
    const auto encoded = [&text](QStringConverter::Encoding encoding, bool withMark) {
        QStringEncoder encoder(encoding, withMark ? QStringConverter::Flag::WriteBom : QStringConverter::Flag::Default);
        return QByteArray(encoder(text));
    };
    QTest::newRow("as written") << k_example;
    QTest::newRow("XML declaration") << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + k_example;
    QTest::newRow("byte order mark") << encoded(QStringConverter::Utf8, true);
    QTest::newRow("UTF-16") << encoded(QStringConverter::Utf16LE, true);
    QTest::newRow("UTF-16, other order, no mark") << encoded(QStringConverter::Utf16BE, false);
    QTest::newRow("CR LF") << QByteArray(k_example).replace("\n", "\r\n");
    QTest::newRow("one line") << QByteArray(k_example).replace("\n", "").replace("    ", "");
    QTest::newRow("other quotes") << QByteArray(k_example).replace('"', '\'');
    QTest::newRow("comments outside the settings")
        << QByteArray(k_example).replace("<parameters", "<!-- a < b --><parameters") + "<!-- end -->";
    QTest::newRow("system id") << QByteArray(k_example).replace("Editor>", "Editor SYSTEM \"ktz.dtd\">");
    QTest::newRow("more attributes") << QByteArray(k_example).replace("<parameters", "<parameters a='1' b='2'");
    QTest::newRow("a namespace") << QByteArray(k_example).replace("<parameters", "<parameters xmlns='urn:x'");
    QTest::newRow("other elements beside") << QByteArray(k_example).replace("<controlview>", "<x>1</x><controlview>");
    QTest::newRow("a second controlview is not read")
        << QByteArray(k_example).replace("</parameters>", "<controlview><key2>1</key2></controlview></parameters>");
}

void TestFile::readsVariantsOfTheDocument()
{
    QFETCH(QByteArray, bytes);
    CFileWrapper file(nullptr, &m_settings->memory);
    QCOMPARE(file.read(m_settings->file("variant.CJX", bytes)), QString());
    const ParamList expected{{"1", asText(knobList(1))}};
    QCOMPARE(m_settings->memory.getParamList(), expected);
}

void TestFile::onlySettingsEnterTheMemory_data()
{
    QTest::addColumn<QByteArray>("controlView");
    QTest::addColumn<ParamList>("list");
    QTest::newRow("a knob that does not exist")
        << QByteArray("<key8><key1108>1</key1108></key8><key0><key1100>1</key1100></key0>")
        << ParamList{{"0", ParamList{{"1100", "1"}}}};
    QTest::newRow("ids that are no settings")
        << QByteArray("<key2><key100>1</key100><key1002>2</key1002><key1102>3</key1102><key1602>4</key1602></key2>")
        << ParamList{{"2", ParamList{{"1102", "3"}}}};
    QTest::newRow("another knob's id") << QByteArray("<key2><key1103>3</key1103><key1202>4</key1202></key2>")
                                       << ParamList{{"2", ParamList{{"1202", "4"}}}};
    QTest::newRow("a plain value instead of a knob")
        << QByteArray("<key1>5</key1><key2><key1102>3</key1102></key2>") << ParamList{{"2", ParamList{{"1102", "3"}}}};
    QTest::newRow("a map instead of a value")
        << QByteArray("<key2><key1102><key5>1</key5></key1102><key1202>3</key1202></key2>")
        << ParamList{{"2", ParamList{{"1102", "0"}, {"1202", "3"}}}};
    QTest::newRow("values out of range")
        << QByteArray("<key2><key1102>247</key1102><key1202>16</key1202><key1302>-5</key1302></key2>")
        << ParamList{{"2", ParamList{{"1102", "127"}, {"1202", "15"}, {"1302", "0"}}}};
    QTest::newRow("a knob without any setting")
        << QByteArray("<key1><key9>1</key9></key1><key2><key1102>3</key1102></key2>")
        << ParamList{{"2", ParamList{{"1102", "3"}}}};
    QTest::newRow("nothing of use") << QByteArray("<a>5</a>") << ParamList();
}

void TestFile::onlySettingsEnterTheMemory()
{
    QFETCH(QByteArray, controlView);
    CFileWrapper file(nullptr, &m_settings->memory);
    QCOMPARE(file.read(m_settings->file("ids.CJX", document(controlView))), QString());
    QTEST(m_settings->memory.getParamList(), "list");
}

void TestFile::readingNotifiesNobodyAndSendsNothing()
{
    struct Observer : CMemAPIObserver
    {
        void paramChanged() override
        {
            ++calls;
        }
        int calls = 0;
    } observer;
    m_settings->memory.registerObserver(1101, &observer);
    SimulatedDeviceFixture::forgetSent();
    CFileWrapper file(nullptr, &m_settings->memory);
    QCOMPARE(file.read(m_settings->file("example.CJX", k_example)), QString());
    QCOMPARE(observer.calls, 0);
    QCOMPARE(SimulatedDeviceFixture::sent(), QStringList());
}

void TestFile::brokenDocuments_data()
{
    QTest::addColumn<std::optional<ParamList>>("left"); // in the memory afterwards
    const auto table = brokenDocumentTable();
    for (auto it = table.cbegin(); it != table.cend(); ++it)
        QTest::newRow(qPrintable(it.key())) << it.value();
}

void TestFile::brokenDocuments()
{
    QFETCH(std::optional<ParamList>, left);
    const QString path = QString("%1/%2.CJX").arg(KTZ_BROKEN_FILES, QTest::currentDataTag());
    QVERIFY(QFileInfo(path).isFile());
    CFileWrapper file(nullptr, &m_settings->memory);
    QCOMPARE(file.read(path), k_openError);
    QCOMPARE(m_settings->memory.getParamList(), left.value_or(factoryList()));
}

void TestFile::everyBrokenDocumentIsInTheTable()
{
    QStringList names;
    const QFileInfoList files = QDir(KTZ_BROKEN_FILES).entryInfoList(QDir::Files, QDir::Name);
    for (const QFileInfo& file : files)
        names.append(file.completeBaseName());
    names.sort();
    QCOMPARE(names, QStringList(brokenDocumentTable().keys()));
}

void TestFile::withoutMemoryNothingIsReadOrWritten()
{
    CFileWrapper file(nullptr, nullptr);
    QCOMPARE(file.read(m_settings->file("example.CJX", k_example)), k_openError);
    QDomDocument owner;
    QCOMPARE(file.createData(&owner), k_saveError);
    QDomElement root = owner.createElement("root");
    QCOMPARE(file.addControlViewElementToDoc(&owner, &root), k_saveError);
    QCOMPARE(file.parseControlViewElement(root), k_openError);
}

void TestFile::createDataRefusesNull()
{
    CFileWrapper file(nullptr, &m_settings->memory);
    QDomDocument owner;
    QDomElement root = owner.createElement("root");
    QCOMPARE(file.createData(nullptr), k_saveError);
    QCOMPARE(file.addControlViewElementToDoc(nullptr, &root), k_saveError);
    QCOMPARE(file.addControlViewElementToDoc(&owner, nullptr), k_saveError);
    QVERIFY(!root.hasChildNodes());
}

KTZ_TEST(QCoreApplication, TestFile)
#include "TestFile.moc"
