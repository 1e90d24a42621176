#include "device/CParamManagerWrapper.h"
#include "tests/support/CTestCase.h"

#include <thread>

namespace
{
/// A knob's list whose five values are first, first + 1, ... in category order.
ParamList knobList(int knob, int first)
{
    ParamList list;
    for (const int category : k_settingCategories)
        list.insert(QString::number(category + knob), first++);
    return list;
}
} // namespace

class TestParamManager : public CTestCase
{
    Q_OBJECT

  private slots:
    void factoryPreset_data();
    void factoryPreset();
    void settingRanges();
    void idsOfSettings_data();
    void idsOfSettings();
    void keysAreDecimalText();
    void missingKeyReadsAsZero();
    void missingKnobHasAnEmptyList();
    void flatTableStoresUnderDecimalText();
    void valueOutsideTheRangeIsStoredUnchanged();
    void everyWriteSetsTheChangedFlag_data();
    void everyWriteSetsTheChangedFlag();
    void readingLeavesTheChangedFlagAlone();
    void listPutOntoAFullKnobMovesFiveValuesInCategoryOrder();
    void listPutOntoAnEmptyKnobLeavesItEmpty();
    void shorterListDropsTheRemainingKeys();
    void longerListLosesItsRest();
    void listOfAnotherKnobKeepsTheTargetsKeys();
    void settingsOnlyDropsWhatIsNoSetting_data();
    void settingsOnlyDropsWhatIsNoSetting();
    void twoThreadsWriteWithoutLosingAnything();
};

void TestParamManager::factoryPreset_data()
{
    QTest::addColumn<int>("knob");
    QTest::addColumn<QList<int>>("row");
    QTest::newRow("knob 0") << 0 << QList{74, 0, 127, 0, 0};
    QTest::newRow("knob 1") << 1 << QList{71, 0, 127, 0, 0};
    QTest::newRow("knob 2, the only concave one") << 2 << QList{10, 0, 127, 0, 2};
    QTest::newRow("knob 3") << 3 << QList{7, 0, 127, 0, 0};
    QTest::newRow("knob 4") << 4 << QList{73, 0, 127, 0, 0};
    QTest::newRow("knob 5") << 5 << QList{72, 0, 127, 0, 0};
    QTest::newRow("knob 6") << 6 << QList{91, 0, 127, 0, 0};
    QTest::newRow("knob 7") << 7 << QList{93, 0, 127, 0, 0};
}

void TestParamManager::factoryPreset()
{
    QFETCH(int, knob);
    QFETCH(QList<int>, row);
    const auto& preset = k_defaultParamList[static_cast<std::size_t>(knob)];
    QCOMPARE(QList<int>(preset.begin(), preset.end()), row);
}

void TestParamManager::settingRanges()
{
    QList<std::pair<int, int>> ranges;
    for (const SettingParam& setting : k_settingParams)
        ranges.append({setting.category, setting.highest});
    QCOMPARE(ranges, (QList<std::pair<int, int>>{{1100, 127}, {1200, 15}, {1300, 127}, {1400, 127}, {1500, 3}}));
}

void TestParamManager::idsOfSettings_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<bool>("isSetting");
    QTest::newRow("CC number of knob 0") << 1100 << true;
    QTest::newRow("MIDI channel of knob 7") << 1207 << true;
    QTest::newRow("maximum of knob 3") << 1303 << true;
    QTest::newRow("minimum of knob 4") << 1404 << true;
    QTest::newRow("LED type of knob 5") << 1505 << true;
    QTest::newRow("knob value, reported and never set") << 1003 << false;
    QTest::newRow("knob 8 does not exist") << 1108 << false;
    QTest::newRow("close button") << 100 << false;
    QTest::newRow("minimise button") << 101 << false;
    QTest::newRow("keep-in-front button") << 102 << false;
    QTest::newRow("no id") << 0 << false;
    QTest::newRow("negative id") << -1100 << false;
    QTest::newRow("category after the last") << 1600 << false;
}

void TestParamManager::idsOfSettings()
{
    QFETCH(int, id);
    QFETCH(bool, isSetting);
    QCOMPARE(isSettingParam(id), isSetting);
}

void TestParamManager::keysAreDecimalText()
{
    for (int number = -2000; number <= 3000; ++number)
        QCOMPARE(paramKey(number), QString::number(number));
}

void TestParamManager::missingKeyReadsAsZero()
{
    CParamManagerWrapper settings;
    QCOMPARE(settings.getParam(3, 1103), 0);
    CParamManager flat;
    QCOMPARE(flat.getParam(1003), 0);
}

void TestParamManager::missingKnobHasAnEmptyList()
{
    CParamManagerWrapper settings;
    QVERIFY(settings.getParamListFromKnob(3).isEmpty());
}

void TestParamManager::flatTableStoresUnderDecimalText()
{
    CParamManager flat;
    flat.setParam(1003, 64);
    QCOMPARE(flat.getParam(1003), 64);
    QCOMPARE(flat.getParamList(), (ParamList{{QStringLiteral("1003"), 64}}));
    flat.setParamList({{QStringLiteral("1"), 2}});
    QCOMPARE(flat.getParamList(), (ParamList{{QStringLiteral("1"), 2}}));
}

void TestParamManager::valueOutsideTheRangeIsStoredUnchanged()
{
    CParamManagerWrapper settings;
    settings.setParam(3, 1103, 200);
    QCOMPARE(settings.getParam(3, 1103), 200);
    settings.setParam(3, 1103, -5);
    QCOMPARE(settings.getParam(3, 1103), -5);
}

void TestParamManager::everyWriteSetsTheChangedFlag_data()
{
    QTest::addColumn<int>("operation");
    QTest::newRow("flat value") << 0;
    QTest::newRow("value of a knob") << 1;
    QTest::newRow("the same value again") << 2;
    QTest::newRow("whole list") << 3;
    QTest::newRow("list onto a knob") << 4;
    QTest::newRow("list onto an empty knob") << 5;
}

void TestParamManager::everyWriteSetsTheChangedFlag()
{
    QFETCH(int, operation);
    CParamManagerWrapper settings;
    QVERIFY(!settings.isDirty());
    settings.setParam(3, 1103, 1);
    settings.setDirty(false);
    switch (operation) {
    case 0:
        settings.setParam(1003, 5);
        break;
    case 1:
        settings.setParam(3, 1103, 5);
        break;
    case 2:
        settings.setParam(3, 1103, 1);
        break;
    case 3:
        settings.setParamList(settings.getParamList());
        break;
    case 4:
        settings.setParamListToKnob(3, {});
        break;
    case 5:
        settings.setParamListToKnob(5, knobList(5, 1));
        break;
    default:
        QFAIL("no such operation");
    }
    QVERIFY(settings.isDirty());
}

void TestParamManager::readingLeavesTheChangedFlagAlone()
{
    CParamManagerWrapper settings;
    QCOMPARE(settings.getParam(3, 1103), 0);
    QCOMPARE(settings.getParamListFromKnob(3), ParamList());
    QCOMPARE(settings.getParamList(), ParamList());
    QVERIFY(!settings.isDirty());
}

void TestParamManager::listPutOntoAFullKnobMovesFiveValuesInCategoryOrder()
{
    CParamManagerWrapper settings;
    settings.setParamList({{QStringLiteral("5"), knobList(5, 100)}});
    settings.setParamListToKnob(5, knobList(5, 10));
    QCOMPARE(settings.getParamListFromKnob(5), knobList(5, 10));
}

void TestParamManager::listPutOntoAnEmptyKnobLeavesItEmpty()
{
    CParamManagerWrapper settings;
    settings.setParamListToKnob(5, knobList(5, 10));
    QVERIFY(settings.getParamListFromKnob(5).isEmpty());
}

void TestParamManager::shorterListDropsTheRemainingKeys()
{
    CParamManagerWrapper settings;
    settings.setParamList({{QStringLiteral("5"), knobList(5, 100)}});
    settings.setParamListToKnob(5, {{QStringLiteral("1102"), 1}, {QStringLiteral("1202"), 2}});
    QCOMPARE(settings.getParamListFromKnob(5), (ParamList{{QStringLiteral("1105"), 1}, {QStringLiteral("1205"), 2}}));
}

void TestParamManager::longerListLosesItsRest()
{
    CParamManagerWrapper settings;
    settings.setParam(5, 1105, 0);
    settings.setParamListToKnob(5, knobList(5, 10));
    QCOMPARE(settings.getParamListFromKnob(5), (ParamList{{QStringLiteral("1105"), 10}}));
}

void TestParamManager::listOfAnotherKnobKeepsTheTargetsKeys()
{
    CParamManagerWrapper settings;
    settings.setParamList({{QStringLiteral("5"), knobList(5, 100)}});
    settings.setParamListToKnob(5, knobList(2, 10));
    QCOMPARE(settings.getParamListFromKnob(5), knobList(5, 10));
}

void TestParamManager::settingsOnlyDropsWhatIsNoSetting_data()
{
    QTest::addColumn<ParamList>("given");
    QTest::addColumn<ParamList>("kept");
    const auto knob2 = [](const QList<QVariant>& values) {
        ParamList list;
        for (std::size_t i = 0; i < k_settingCategories.size(); ++i)
            list.insert(QString::number(k_settingCategories[i] + 2), values.at(static_cast<qsizetype>(i)));
        return ParamList{{QStringLiteral("2"), list}};
    };
    const ParamList whole = knob2({10, 11, 12, 13, 3});
    QTest::newRow("a knob's five settings stay") << whole << whole;
    QTest::newRow("nothing") << ParamList() << ParamList();
    QTest::newRow("knob 8") << ParamList{{QStringLiteral("8"), knobList(8, 1)}} << ParamList();
    QTest::newRow("a knob that is no list") << ParamList{{QStringLiteral("2"), 5}} << ParamList();
    ParamList more = whole.first().toMap();
    more.insert(QStringLiteral("1002"), 7);
    more.insert(QStringLiteral("1103"), 8);
    more.insert(QStringLiteral("x"), 9);
    QTest::newRow("knob value, another knob's id, a word") << ParamList{{QStringLiteral("2"), more}} << whole;
    const ParamList partial{{QStringLiteral("2"), ParamList{{QStringLiteral("1102"), 1}}}};
    QTest::newRow("a partial list stays partial") << partial << partial;
    QTest::newRow("lowest values") << knob2({0, 0, 0, 0, 0}) << knob2({0, 0, 0, 0, 0});
    QTest::newRow("highest values") << knob2({127, 15, "127", "127", "3"}) << knob2({127, 15, "127", "127", "3"});
    QTest::newRow("above the highest") << knob2({128, 16, "128", "300", "4"})
                                       << knob2({"127", "15", "127", "127", "3"});
    QTest::newRow("below the lowest") << knob2({-1, -1, "-1", "-128", "-300"}) << knob2({"0", "0", "0", "0", "0"});
    QTest::newRow("no number") << knob2({"abc", "", "99999999999", ParamList{{QStringLiteral("5"), 1}}, QVariant()})
                               << knob2({"0", "0", "0", "0", "0"});
    QTest::newRow("a knob without any setting")
        << ParamList{{QStringLiteral("2"), ParamList{{QStringLiteral("x"), 9}}}} << ParamList();
}

void TestParamManager::settingsOnlyDropsWhatIsNoSetting()
{
    QFETCH(ParamList, given);
    QFETCH(ParamList, kept);
    QCOMPARE(settingsOnly(given), kept);
}

void TestParamManager::twoThreadsWriteWithoutLosingAnything()
{
    CParamManagerWrapper settings;
    constexpr int k_rounds = 2000;
    const auto writeKnob = [&](int category) {
        for (int i = 0; i < k_rounds; ++i)
            settings.setParam(0, category, i);
    };
    std::thread first(writeKnob, k_ccNumCategory);
    std::thread second(writeKnob, k_maxCategory);
    first.join();
    second.join();
    // Both threads rewrite the same knob's list: a write that is not whole would drop the other's key.
    QCOMPARE(settings.getParam(0, k_ccNumCategory), k_rounds - 1);
    QCOMPARE(settings.getParam(0, k_maxCategory), k_rounds - 1);
}

KTZ_TEST(QCoreApplication, TestParamManager)
#include "TestParamManager.moc"
