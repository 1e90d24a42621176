#include "app/common/Constants.h"
#include "device/CMemAPIProxyWrapper.h"
#include "device/CMemAPIWrapper.h"
#include "device/CMemProxyEventObject.h"
#include "tests/support/CTestCase.h"
#include "tests/support/SimulatedDeviceFixture.h"

#include <QApplication>
#include <QMenu>

#include <thread>

namespace
{
/// A proxy that counts its reloads and remembers the thread and value of the last.
class CCountingProxy : public CMemAPIProxyWrapper
{
  public:
    void updateMemAPI() override
    {
        ++updates;
        lastThread = QThread::currentThread();
        lastValue = getParam();
    }

    int updates = 0;
    QThread* lastThread = nullptr;
    int lastValue = -1;
};
} // namespace

class TestMemAPIProxy : public CTestCase
{
    Q_OBJECT

  private slots:
    void init();
    void cleanup();

    void proxyWithoutAMemory();
    void settingThePresentValueSendsNothing();
    void offlineEditChangesTheTableAndSendsNothing();
    void onlineEditSendsTheWholeKnob();
    void editIsTakenBackWhenTheOutputIsGone();
    void proxyWithIdZeroNeverWrites();
    void buttonsIdChangesNothing();
    void changeOnTheGuiThreadReloadsAtOnce();
    void changeOnAnotherThreadReloadsOnTheGuiThread();
    void severalChangesGiveAsManyReloadsOfTheCurrentValue();
    void replyClosesAnOpenContextMenu();
    void initializeRegistersForTheId();
    void initializeWithNullDetaches();
    void unregisteredProxyHearsNothing();
    void knobValueOfTheDeviceMemoryAlone();
    void eventObjectWithoutAProxy();

  private:
    std::unique_ptr<SimulatedDeviceFixture> m_fixture;
    std::unique_ptr<CMemAPIWrapper> m_memory;
};

void TestMemAPIProxy::init()
{
    CTestCase::init();
    m_fixture = std::make_unique<SimulatedDeviceFixture>();
    m_fixture->plug();
    m_memory = std::make_unique<CMemAPIWrapper>();
    m_memory->initialize();
    for (int knob = 0; knob < k_numOfKnobs; ++knob) {
        for (std::size_t i = 0; i < k_settingCategories.size(); ++i)
            m_memory->setParam(k_settingCategories[i] + knob, k_defaultParamList[static_cast<std::size_t>(knob)][i]);
    }
    m_memory->setDirty(false);
}

void TestMemAPIProxy::cleanup()
{
    m_memory.reset();
    m_fixture.reset();
}

void TestMemAPIProxy::proxyWithoutAMemory()
{
    CCountingProxy proxy;
    QCOMPARE(proxy.controllerID(), 0);
    proxy.setControllerID(1102);
    proxy.registerObserverToMemAPI();
    proxy.unregisterObserverFromMemAPI();
    QCOMPARE(proxy.getParam(), 0);
    QVERIFY(proxy.setParam(5));
    QCOMPARE(proxy.getKnob(), 0);
}

void TestMemAPIProxy::settingThePresentValueSendsNothing()
{
    CCountingProxy proxy;
    proxy.setControllerID(1102);
    proxy.initialize(m_memory.get());
    proxy.setPortName(k_jxEditorPortName);
    m_memory->setConnected(true);
    QVERIFY(proxy.setParam(10));
    QVERIFY(m_fixture->sent().isEmpty());
    QVERIFY(!m_memory->isDirty());
}

void TestMemAPIProxy::offlineEditChangesTheTableAndSendsNothing()
{
    CCountingProxy proxy;
    proxy.setControllerID(1102);
    proxy.initialize(m_memory.get());
    proxy.setPortName(k_jxEditorPortName);
    QVERIFY(proxy.setParam(42));
    QCOMPARE(m_memory->getParam(1102), 42);
    QVERIFY(m_fixture->sent().isEmpty());
}

void TestMemAPIProxy::onlineEditSendsTheWholeKnob()
{
    CCountingProxy proxy;
    proxy.setControllerID(1102);
    proxy.initialize(m_memory.get());
    proxy.setPortName(k_jxEditorPortName);
    m_memory->setConnected(true);
    QVERIFY(proxy.setParam(42));
    QCOMPARE(m_fixture->sent(), QStringList{QStringLiteral("f043103e18050203022a007f0002f7")});
    QCOMPARE(m_fixture->device.settings(2).cc, 42);
    QCOMPARE(proxy.updates, 0);
}

void TestMemAPIProxy::editIsTakenBackWhenTheOutputIsGone()
{
    CCountingProxy proxy;
    proxy.setControllerID(1102);
    proxy.initialize(m_memory.get());
    proxy.setPortName(k_jxEditorPortName);
    m_memory->setConnected(true);
    m_fixture->device.unplug();
    QVERIFY(!proxy.setParam(42));
    QCOMPARE(m_memory->getParam(1102), 10);
}

void TestMemAPIProxy::proxyWithIdZeroNeverWrites()
{
    CCountingProxy proxy;
    proxy.initialize(m_memory.get());
    m_memory->setConnected(true);
    const ParamList before = m_memory->getParamList();
    QVERIFY(proxy.setParam(42));
    QCOMPARE(m_memory->getParamList(), before);
    QVERIFY(m_fixture->sent().isEmpty());
}

void TestMemAPIProxy::buttonsIdChangesNothing()
{
    CCountingProxy proxy;
    proxy.setControllerID(102);
    proxy.initialize(m_memory.get());
    proxy.setPortName(k_jxEditorPortName);
    m_memory->setConnected(true);
    const ParamList before = m_memory->getParamList();
    QVERIFY(proxy.setParam(1));
    QCOMPARE(m_memory->getParamList(), before);
    QVERIFY(!m_memory->isDirty());
    QVERIFY(m_fixture->sent().isEmpty());
}

void TestMemAPIProxy::changeOnTheGuiThreadReloadsAtOnce()
{
    CCountingProxy proxy;
    proxy.setControllerID(1102);
    proxy.initialize(m_memory.get());
    m_memory->setParam(1102, 33);
    m_memory->updateKnob(2);
    QCOMPARE(proxy.updates, 1);
    QCOMPARE(proxy.lastValue, 33);
}

void TestMemAPIProxy::changeOnAnotherThreadReloadsOnTheGuiThread()
{
    CCountingProxy proxy;
    proxy.setControllerID(1102);
    proxy.initialize(m_memory.get());
    std::thread other([&] { proxy.paramChanged(); });
    other.join();
    QCOMPARE(proxy.updates, 0);
    QTRY_COMPARE(proxy.updates, 1);
    QCOMPARE(proxy.lastThread, qApp->thread());
}

void TestMemAPIProxy::severalChangesGiveAsManyReloadsOfTheCurrentValue()
{
    CCountingProxy proxy;
    proxy.setControllerID(1102);
    proxy.initialize(m_memory.get());
    std::thread other([&] {
        for (int value = 20; value < 25; ++value) {
            m_memory->setParam(1102, value);
            proxy.paramChanged();
        }
    });
    other.join();
    QTRY_COMPARE(proxy.updates, 5);
    QCOMPARE(proxy.lastValue, 24);
}

void TestMemAPIProxy::replyClosesAnOpenContextMenu()
{
    CCountingProxy proxy;
    proxy.setControllerID(1004);
    proxy.initialize(m_memory.get());
    QMenu menu;
    menu.addAction(QStringLiteral("Copy"));
    menu.popup(QPoint(10, 10));
    QTRY_COMPARE(QApplication::activePopupWidget(), &menu);
    m_fixture->device.turn(4, 99);
    QTRY_VERIFY(!menu.isVisible());
    QCOMPARE(proxy.updates, 1);
    QCOMPARE(proxy.getKnob(), 99);
    m_memory.reset(); // joins the delivery thread before the proxy that it called goes
}

void TestMemAPIProxy::initializeRegistersForTheId()
{
    CCountingProxy proxy;
    proxy.setControllerID(1204);
    proxy.initialize(m_memory.get());
    m_memory->notifyParamChabgedById(1204);
    m_memory->notifyParamChabgedById(1205);
    QCOMPARE(proxy.updates, 1);
}

void TestMemAPIProxy::initializeWithNullDetaches()
{
    CCountingProxy proxy;
    proxy.setControllerID(1102);
    proxy.initialize(m_memory.get());
    proxy.unregisterObserverFromMemAPI();
    proxy.initialize(nullptr);
    m_memory.reset();
    QVERIFY(proxy.setParam(42));
    QCOMPARE(proxy.getParam(), 0);
    QCOMPARE(proxy.getKnob(), 0);
}

void TestMemAPIProxy::unregisteredProxyHearsNothing()
{
    CCountingProxy proxy;
    proxy.setControllerID(1204);
    proxy.initialize(m_memory.get());
    proxy.unregisterObserverFromMemAPI();
    m_memory->notifyParamChabgedById(1204);
    QCOMPARE(proxy.updates, 0);
}

void TestMemAPIProxy::knobValueOfTheDeviceMemoryAlone()
{
    CCountingProxy proxy;
    proxy.setControllerID(1003);
    proxy.initialize(m_memory.get());
    m_memory->setKnob(1003, 77);
    QCOMPARE(proxy.getKnob(), 77);
    proxy.unregisterObserverFromMemAPI();

    CMemAPI plain;
    proxy.initialize(&plain);
    QCOMPARE(proxy.getKnob(), 0);
    proxy.unregisterObserverFromMemAPI();
}

void TestMemAPIProxy::eventObjectWithoutAProxy()
{
    CMemProxyEventObject object(nullptr);
    QSignalSpy spy(&object, SIGNAL(paramUpdateSignal()));
    object.paramUpdate();
    QCOMPARE(spy.count(), 1);
    QCoreApplication::processEvents(); // the queued slot finds no proxy
}

KTZ_TEST(QApplication, TestMemAPIProxy)
#include "TestMemAPIProxy.moc"
