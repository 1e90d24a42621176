#include "simulator/device/DeviceMessages.h"
#include "simulator/panel/CMessageModel.h"
#include "tests/support/CTestCase.h"

#include <QAbstractItemModelTester>

#include <memory>

using namespace DeviceMessages;

/// The table of messages, without a view.
class TestMessageModel : public CTestCase
{
    Q_OBJECT

  private slots:
    void init();
    void cleanup();
    void rowSaysTimeDirectionMeaningAndBytes();
    void keepsThatFollowOneAnotherAreOneRow();
    void keepsGoOnCountingInTheNextBatch();
    void keepsWithoutAnAnswerAreCountedApart();
    void anotherMessageEndsTheCount();
    void batchIsOneInsertion();
    void oldestRowsGo();
    void batchBeyondTheLimitLeavesItsLast();

  private:
    static Traffic received(const QByteArray& bytes, qint64 time = 0)
    {
        return {0, time, Traffic::Direction::ToDevice, bytes};
    }

    static Traffic sent(const QByteArray& bytes, qint64 time = 0)
    {
        return {0, time, Traffic::Direction::FromDevice, bytes};
    }

    [[nodiscard]] QStringList row(int row) const
    {
        QStringList texts;
        for (int column = 0; column < CMessageModel::Columns; ++column)
            texts += m_model->index(row, column).data().toString();
        return texts;
    }

    static QList<Traffic> turns(int count)
    {
        QList<Traffic> messages;
        for (int turn = 0; turn < count; ++turn)
            messages += sent(noticeValue(turn % 8, turn % 128), turn);
        return messages;
    }

    std::unique_ptr<CMessageModel> m_model;
    std::unique_ptr<QAbstractItemModelTester> m_tester;
};

void TestMessageModel::init()
{
    CTestCase::init();
    m_model = std::make_unique<CMessageModel>();
    m_tester = std::make_unique<QAbstractItemModelTester>(m_model.get());
}

void TestMessageModel::cleanup()
{
    m_tester.reset();
    m_model.reset();
}

void TestMessageModel::rowSaysTimeDirectionMeaningAndBytes()
{
    m_model->add({received(start(), 12'345), sent(noticeValue(2, 64), 20'000)});
    QCOMPARE(row(0), QStringList({"12.345", "received", "Start", "F0 43 10 3E 18 05 02 00 F7"}));
    QCOMPARE(row(1), QStringList({"20.000", "sent", "Knob 3: value 64", "F0 43 10 3E 18 05 02 04 02 40 F7"}));
}

void TestMessageModel::keepsThatFollowOneAnotherAreOneRow()
{
    m_model->add({received(keep(), 1000), sent(keep(), 1001), received(keep(), 3000), sent(keep(), 3001)});
    QCOMPARE(m_model->rowCount(), 1);
    QCOMPARE(row(0),
             QStringList({"3.001", "both", "Keep-alive: 2 received, 2 answered", "F0 43 10 3E 18 05 02 01 F7"}));
}

void TestMessageModel::keepsGoOnCountingInTheNextBatch()
{
    m_model->add({received(start()), received(keep(), 1000)});
    QSignalSpy changes(m_model.get(), &QAbstractItemModel::dataChanged);
    QSignalSpy insertions(m_model.get(), &QAbstractItemModel::rowsInserted);
    m_model->add({sent(keep(), 1001), received(keep(), 3000)});
    QCOMPARE(m_model->rowCount(), 2);
    QCOMPARE(row(1).at(CMessageModel::Meaning), QStringLiteral("Keep-alive: 2 received, 1 answered"));
    QCOMPARE(changes.size(), 1);
    QCOMPARE(insertions.size(), 0);
}

void TestMessageModel::keepsWithoutAnAnswerAreCountedApart()
{
    m_model->add({received(keep()), received(keep())});
    QCOMPARE(row(0).at(CMessageModel::Direction), QStringLiteral("received"));
    QCOMPARE(row(0).at(CMessageModel::Meaning), QStringLiteral("Keep-alive: 2 received, 0 answered"));
}

void TestMessageModel::anotherMessageEndsTheCount()
{
    m_model->add({received(keep()), sent(noticeValue(0, 1)), received(keep())});
    QCOMPARE(m_model->rowCount(), 3);
    QCOMPARE(row(2).at(CMessageModel::Meaning), QStringLiteral("Keep-alive: 1 received, 0 answered"));
}

void TestMessageModel::batchIsOneInsertion()
{
    QSignalSpy insertions(m_model.get(), &QAbstractItemModel::rowsInserted);
    m_model->add(turns(800));
    QCOMPARE(insertions.size(), 1);
    QCOMPARE(m_model->rowCount(), 800);
}

void TestMessageModel::oldestRowsGo()
{
    m_model->add(turns(CMessageModel::k_limit));
    QSignalSpy removals(m_model.get(), &QAbstractItemModel::rowsRemoved);
    m_model->add({received(start()), received(end())});
    QCOMPARE(removals.size(), 1);
    QCOMPARE(m_model->rowCount(), CMessageModel::k_limit);
    QCOMPARE(row(0).at(CMessageModel::Meaning), QStringLiteral("Knob 3: value 2"));
    QCOMPARE(row(CMessageModel::k_limit - 1).at(CMessageModel::Meaning), QStringLiteral("End"));
}

void TestMessageModel::batchBeyondTheLimitLeavesItsLast()
{
    m_model->add({received(keep())});
    m_model->add(turns(2 * CMessageModel::k_limit));
    QCOMPARE(m_model->rowCount(), CMessageModel::k_limit);
    QCOMPARE(row(0).at(CMessageModel::Time), QStringLiteral("5.000"));
}

KTZ_TEST(QCoreApplication, TestMessageModel)
#include "TestMessageModel.moc"
