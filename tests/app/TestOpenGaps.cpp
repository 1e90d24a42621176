#include "tests/app/EditorFixture.h"
#include "tests/support/CFileDialogAnswer.h"
#include "tests/support/CMessageBoxAnswer.h"
#include "tests/support/CTestCase.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTimer>

#include <functional>
#include <optional>

namespace
{
using Settings = std::array<int, k_settingCategories.size()>;
using Knobs = std::array<Settings, k_numOfKnobs>;

/// What the editor and the device hold before a file is opened, and what the file says: no two values are the same.
Knobs heldBefore()
{
    Knobs knobs;
    for (int knob = 0; knob < k_numOfKnobs; ++knob)
        knobs[static_cast<std::size_t>(knob)] = {20 + knob, knob, 100 + knob, 10 + knob, 1};
    return knobs;
}

Knobs inTheFile()
{
    Knobs knobs;
    for (int knob = 0; knob < k_numOfKnobs; ++knob)
        knobs[static_cast<std::size_t>(knob)] = {60 + knob, 15 - knob, 90 + knob, 40 + knob, 3};
    return knobs;
}

/// Whether a file gives a setting: a knob, and the place of the setting among the five.
using Gives = std::function<bool(int knob, std::size_t setting)>;

/// A settings file with gaps. fault: the element, counted over all that the file gives, that is left empty.
QByteArray fileText(const Gives& gives, std::optional<int> fault)
{
    QByteArray text = "<!DOCTYPE KTZJXEditor>\n<parameters version=\"1.0\">\n<controlview>\n";
    int elements = 0;
    for (int knob = 0; knob < k_numOfKnobs; ++knob) {
        QByteArray settings;
        for (std::size_t i = 0; i < k_settingCategories.size(); ++i) {
            if (!gives(knob, i))
                continue;
            const QByteArray tag = "key" + QByteArray::number(k_settingCategories[i] + knob);
            const int value = inTheFile()[static_cast<std::size_t>(knob)][i];
            const bool isFault = elements++ == fault;
            settings += "<" + tag + ">" + (isFault ? QByteArray() : QByteArray::number(value)) + "</" + tag + ">\n";
        }
        const QByteArray tag = "key" + QByteArray::number(knob);
        if (!settings.isEmpty())
            text += "<" + tag + ">\n" + settings + "</" + tag + ">\n";
    }
    return text + "<key9><key1109>1</key1109></key9>\n</controlview>\n</parameters>\n";
}

KnobSettings knobSettings(const Settings& settings)
{
    return {settings[0], settings[1], settings[2], settings[3], settings[4]};
}

QString changeText(int knob, const KnobSettings& settings)
{
    QByteArray message = QByteArray::fromHex("f043103e18050203");
    for (const int byte : {knob, settings.cc, settings.channel, settings.max, settings.min, settings.led, 0xF7})
        message.append(static_cast<char>(byte));
    return QString::fromLatin1(message.toHex());
}

/// An editor with eight knobs that all differ, and a file with gaps that it opens.
struct GapFixture : EditorFixture
{
    explicit GapFixture(bool connected)
    {
        if (connected)
            plug();
        startWhole();
        if (connected)
            waitUntilConnected();
        // Offline, edits stay in the editor.
        isConnected = connected;
    }

    /// Brings every knob back to where each row begins.
    void takeBack()
    {
        for (int knob = 0; knob < k_numOfKnobs; ++knob) {
            for (std::size_t i = 0; i < k_settingCategories.size(); ++i)
                editor(k_settingCategories[i] + knob)->setValue(heldBefore()[static_cast<std::size_t>(knob)][i]);
        }
        forgetSent();
    }

    /// Opens the file as the desktop asks for it. The number of boxes that it showed.
    qsizetype open(const QByteArray& text)
    {
        const QString path = folder.filePath(QStringLiteral("gaps.CJX"));
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
            return -1;
        file.close();
        CMessageBoxAnswer answer(
            QMessageBox::No); // unsaved changes are given up, and a failure's only button is pressed
        window->setApplicationFilePath(path);
        window->applicationFileOpen();
        qsizetype failures = 0;
        for (const CMessageBoxAnswer::Box& box : answer.boxes())
            failures += box.text == k_openError ? 1 : 0;
        return failures;
    }

    [[nodiscard]] QStringList changes() const
    {
        QStringList found = sent();
        found.removeAll(QStringLiteral("f043103e18050201f7"));
        return found;
    }

    /// Screen, table and, where connected, device hold these settings.
    [[nodiscard]] QString difference(const Knobs& expected, bool deviceToo) const
    {
        for (int knob = 0; knob < k_numOfKnobs; ++knob) {
            const KnobSettings settings = knobSettings(expected[static_cast<std::size_t>(knob)]);
            if (shown(knob) != settings)
                return QStringLiteral("knob %1 is shown with other settings").arg(knob);
            for (std::size_t i = 0; i < k_settingCategories.size(); ++i) {
                if (editor(k_settingCategories[i] + knob)->getParam() != expected[static_cast<std::size_t>(knob)][i])
                    return QStringLiteral("knob %1 has other settings in the table").arg(knob);
            }
            if (deviceToo && device.settings(knob) != settings)
                return QStringLiteral("knob %1 has other settings in the device").arg(knob);
        }
        return {};
    }

    /// Saves to a file and gives its text.
    QByteArray saved() const
    {
        const QString path = folder.filePath(QStringLiteral("saved.CJX"));
        QFile::remove(path);
        CFileDialogAnswer answer({path});
        action(k_saveAsString)->trigger();
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QTemporaryDir folder;
    bool isConnected = false;
};
} // namespace

Q_DECLARE_METATYPE(Gives)

/// Files that do not give every setting, and files that cannot be read to their end: screen, table, device and the next
/// file agree afterwards, and what the file does not give stays what it was.
class TestOpenGaps : public CTestCase
{
    Q_OBJECT

  private slots:
    void fileWithGaps_data();
    void fileWithGaps();
    void fileWithAFaultAfterEachElement_data();
    void fileWithAFaultAfterEachElement();
    void fileThatCannotBeReadAtAll();
    void pagesAreUpToDateWhileTheFailureIsShown();
};

void TestOpenGaps::fileWithGaps_data()
{
    QTest::addColumn<bool>("connected");
    QTest::addColumn<Gives>("gives");
    for (const bool connected : {true, false}) {
        const QByteArray where = connected ? ", connected" : ", offline";
        QTest::newRow("no knob" + where) << connected << Gives([](int, std::size_t) { return false; });
        QTest::newRow("one knob" + where) << connected << Gives([](int knob, std::size_t) { return knob == 3; });
        QTest::newRow("odd knobs" + where) << connected << Gives([](int knob, std::size_t) { return knob % 2 == 1; });
        for (std::size_t lacking = 0; lacking < k_settingCategories.size(); ++lacking) {
            QTest::newRow("no " + QByteArray::number(k_settingCategories[lacking]) + where)
                << connected << Gives([lacking](int, std::size_t setting) { return setting != lacking; });
            QTest::newRow("only " + QByteArray::number(k_settingCategories[lacking]) + " of knob 5" + where)
                << connected
                << Gives([lacking](int knob, std::size_t setting) { return knob == 5 && setting == lacking; });
        }
    }
}

void TestOpenGaps::fileWithGaps()
{
    QFETCH(bool, connected);
    QFETCH(Gives, gives);
    GapFixture fixture(connected);
    fixture.takeBack();
    Knobs expected = heldBefore();
    for (int knob = 0; knob < k_numOfKnobs; ++knob) {
        for (std::size_t i = 0; i < k_settingCategories.size(); ++i) {
            if (gives(knob, i))
                expected[static_cast<std::size_t>(knob)][i] = inTheFile()[static_cast<std::size_t>(knob)][i];
        }
    }
    QCOMPARE(fixture.open(fileText(gives, {})), 0);
    QCOMPARE(fixture.difference(expected, connected), QString());

    QStringList messages;
    for (int knob = 0; connected && knob < k_numOfKnobs; ++knob)
        messages.append(changeText(knob, knobSettings(expected[static_cast<std::size_t>(knob)])));
    QCOMPARE(fixture.changes(), messages);

    // The next file is whole, and can be opened.
    const QByteArray text = fixture.saved();
    fixture.takeBack();
    QCOMPARE(fixture.open(text), 0);
    QCOMPARE(fixture.difference(expected, connected), QString());

    // A report falls on the settings that it is of.
    if (connected) {
        const KnobSettings reported{99, 14, 126, 1, 2};
        for (int knob = 0; knob < k_numOfKnobs; ++knob) {
            fixture.device.setSettings(knob, reported);
            fixture.device.reportSettings(knob);
            QTRY_COMPARE(fixture.shown(knob), reported);
        }
    }
}

void TestOpenGaps::fileWithAFaultAfterEachElement_data()
{
    QTest::addColumn<bool>("connected");
    QTest::newRow("connected") << true;
    QTest::newRow("offline") << false;
}

void TestOpenGaps::fileWithAFaultAfterEachElement()
{
    QFETCH(bool, connected);
    constexpr int k_elements = k_numOfKnobs * int(k_settingCategories.size());
    GapFixture fixture(connected);
    for (int fault = 0; fault < k_elements; ++fault) {
        fixture.takeBack();
        Knobs expected = heldBefore();
        // A knob is taken over whole or not at all.
        const int readKnobs = fault / int(k_settingCategories.size());
        std::copy_n(inTheFile().begin(), readKnobs, expected.begin());
        QCOMPARE(fixture.open(fileText([](int, std::size_t) { return true; }, fault)), 1);
        QCOMPARE(fixture.difference(expected, false), QString());
        QVERIFY(fixture.changes().isEmpty());

        // The next edit of a knob carries nothing that nobody chose.
        const int knob = fault % k_numOfKnobs;
        fixture.slider(k_maxCategory + knob)->triggerAction(QAbstractSlider::SliderSingleStepSub);
        KnobSettings edited = knobSettings(expected[static_cast<std::size_t>(knob)]);
        --edited.max;
        QCOMPARE(fixture.shown(knob), edited);
        QCOMPARE(fixture.changes(), connected ? QStringList{changeText(knob, edited)} : QStringList());
    }
    const QByteArray text = fixture.saved();
    QCOMPARE(text.count("</key"), k_elements + k_numOfKnobs);
    QCOMPARE(fixture.open(text), 0);
}

void TestOpenGaps::fileThatCannotBeReadAtAll()
{
    GapFixture fixture(true);
    fixture.takeBack();
    QCOMPARE(fixture.open("no settings"), 1);
    QCOMPARE(fixture.difference(heldBefore(), true), QString());
    QVERIFY(fixture.changes().isEmpty());
}

void TestOpenGaps::pagesAreUpToDateWhileTheFailureIsShown()
{
    GapFixture fixture(false);
    fixture.takeBack();
    KnobSettings seen;
    CMessageBoxAnswer answer(QMessageBox::No);
    const QString path = fixture.folder.filePath(QStringLiteral("faulty.CJX"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(fileText([](int, std::size_t) { return true; }, 7));
    file.close();
    fixture.window->setApplicationFilePath(path);
    QTimer look;
    connect(&look, &QTimer::timeout, &look, [&] {
        if (QApplication::activeModalWidget() != nullptr)
            seen = fixture.shown(0);
    });
    look.start(0);
    fixture.window->applicationFileOpen();
    QCOMPARE(seen, knobSettings(inTheFile()[0]));
}

KTZ_TEST(QApplication, TestOpenGaps)
#include "TestOpenGaps.moc"
