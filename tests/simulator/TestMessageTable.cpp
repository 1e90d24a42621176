#include "simulator/device/DeviceMessages.h"
#include "simulator/panel/CMessageTable.h"
#include "tests/support/CFileDialogAnswer.h"
#include "tests/support/CMessageBoxAnswer.h"
#include "tests/support/CTestCase.h"

#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>
#include <QTemporaryDir>

#include <memory>

using namespace DeviceMessages;

/// The table of messages as a user has it: filter, copy, save, and what stays in sight.
class TestMessageTable : public CTestCase
{
    Q_OBJECT

  private slots:
    void init();
    void cleanup();
    void filterLeavesWhatHoldsItsText_data();
    void filterLeavesWhatHoldsItsText();
    void copyTakesTheSelectedRows();
    void copyTakesAllThatIsShownWithoutASelection();
    void copyKeyIsTheTables();
    void savedTextIsWhatIsShown();
    void saveAsksForTheFile();
    void saveThatFailsIsSaid();
    void newestStaysInSight();
    void whatIsReadStaysInSightWhenOldRowsGo();
    void tabLeavesTheTable();

  private:
    void addTurns(int count)
    {
        QList<Traffic> messages;
        for (int turn = 0; turn < count; ++turn, ++m_turns)
            messages += Traffic{0, m_turns, Traffic::Direction::FromDevice, noticeValue(m_turns % 8, m_turns % 128)};
        m_messages->add(messages);
    }

    [[nodiscard]] QTableView* table() const
    {
        return m_messages->findChild<QTableView*>("messages");
    }

    void type(const QString& text) const
    {
        QTest::keyClicks(m_messages->findChild<QLineEdit*>("filter"), text);
    }

    [[nodiscard]] QStringList copied() const
    {
        return QApplication::clipboard()->text().split('\n', Qt::SkipEmptyParts);
    }

    std::unique_ptr<CMessageTable> m_messages;
    int m_turns = 0;
};

void TestMessageTable::init()
{
    CTestCase::init();
    m_turns = 0;
    m_messages = std::make_unique<CMessageTable>();
    m_messages->resize(540, 240);
    m_messages->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_messages.get()));
}

void TestMessageTable::cleanup()
{
    m_messages.reset();
}

void TestMessageTable::filterLeavesWhatHoldsItsText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("rows");
    QTest::newRow("nothing typed") << QString() << 16;
    QTest::newRow("a knob, in small letters") << "knob 3" << 2;
    QTest::newRow("a direction") << "received" << 0;
    QTest::newRow("bytes") << "04 07" << 2;
    QTest::newRow("a dot is a dot") << "0.01" << 6;
}

void TestMessageTable::filterLeavesWhatHoldsItsText()
{
    QFETCH(const QString, text);
    QFETCH(const int, rows);
    addTurns(16);
    type(text);
    QCOMPARE(table()->model()->rowCount(), rows);
}

void TestMessageTable::copyTakesTheSelectedRows()
{
    addTurns(8);
    for (const int row : {5, 2}) {
        const QPoint place = table()->visualRect(table()->model()->index(row, 0)).center();
        QTest::mouseClick(table()->viewport(), Qt::LeftButton, Qt::ControlModifier, place);
    }
    QTest::mouseClick(m_messages->findChild<QPushButton*>("copy"), Qt::LeftButton);
    QCOMPARE(copied(), QStringList({"0.002\tsent\tKnob 3: value 2\tF0 43 10 3E 18 05 02 04 02 02 F7",
                                    "0.005\tsent\tKnob 6: value 5\tF0 43 10 3E 18 05 02 04 05 05 F7"}));
}

void TestMessageTable::copyTakesAllThatIsShownWithoutASelection()
{
    addTurns(16);
    type("knob 1:");
    QTest::mouseClick(m_messages->findChild<QPushButton*>("copy"), Qt::LeftButton);
    QCOMPARE(copied().size(), 2);
}

void TestMessageTable::copyKeyIsTheTables()
{
    addTurns(3);
    QApplication::clipboard()->setText("before");
    m_messages->activateWindow();
    table()->setFocus();
    QTRY_VERIFY(table()->hasFocus());
    QTest::keyClick(table(), Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(copied().size(), 3);
}

void TestMessageTable::savedTextIsWhatIsShown()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("messages.txt");
    addTurns(16);
    type("knob 2");
    QVERIFY(m_messages->save(path));
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("0.001\tsent\tKnob 2: value 1\tF0 43 10 3E 18 05 02 04 01 01 F7\n"
                                        "0.009\tsent\tKnob 2: value 9\tF0 43 10 3E 18 05 02 04 01 09 F7\n"));
}

void TestMessageTable::saveAsksForTheFile()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("messages.txt");
    addTurns(3);
    const CFileDialogAnswer answer({path});
    QTest::mouseClick(m_messages->findChild<QPushButton*>("save"), Qt::LeftButton);
    QCOMPARE(answer.dialogs().size(), 1);
    QVERIFY(answer.dialogs().at(0).saves);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll().count('\n'), 3);
}

void TestMessageTable::saveThatFailsIsSaid()
{
    const QString path = QStringLiteral("/proc/messages.txt"); // where nobody makes a file, whoever runs the test
    if (!QFile::exists("/proc"))
        QSKIP("this system has no /proc");
    QVERIFY(!m_messages->save(path));
    const CFileDialogAnswer file({path});
    const CMessageBoxAnswer box(QMessageBox::Ok);
    QTest::mouseClick(m_messages->findChild<QPushButton*>("save"), Qt::LeftButton);
    QCOMPARE(file.dialogs().size(), 1);
    QCOMPARE(box.boxes().size(), 1);
    QCOMPARE(box.boxes().at(0).text, QStringLiteral("\"/proc/messages.txt\" cannot be written."));
}

void TestMessageTable::newestStaysInSight()
{
    addTurns(100);
    addTurns(CMessageModel::k_limit);
    const QScrollBar* const bar = table()->verticalScrollBar();
    QVERIFY(bar->maximum() > 0);
    QCOMPARE(bar->value(), bar->maximum());
}

void TestMessageTable::whatIsReadStaysInSightWhenOldRowsGo()
{
    addTurns(CMessageModel::k_limit);
    table()->verticalScrollBar()->setValue(1000);
    const auto topRow = [this] { return table()->indexAt({5, 2}).data().toString(); };
    const QString before = topRow();
    QVERIFY(!before.isEmpty());
    addTurns(600);
    QCOMPARE(topRow(), before);
    QCOMPARE(table()->verticalScrollBar()->value(), 400);
}

void TestMessageTable::tabLeavesTheTable()
{
    addTurns(3);
    m_messages->activateWindow();
    table()->setFocus();
    QTRY_VERIFY(table()->hasFocus());
    QTest::keyClick(table(), Qt::Key_Tab);
    QVERIFY(!table()->hasFocus());
}

KTZ_TEST(QApplication, TestMessageTable)
#include "TestMessageTable.moc"
