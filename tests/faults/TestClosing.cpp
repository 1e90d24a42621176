#include "tests/faults/CFaultTest.h"
#include "tests/faults/FaultFixture.h"
#include "tests/support/CMessageBoxAnswer.h"

#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>

namespace
{
/// A state of the connection in which the window is closed, and whether the device is told of the end then.
struct Moment
{
    const char* name;
    bool isConfirmed;
    void (*reach)(FaultFixture&);
};

/// What a user has open when the window is closed.
struct OpenThing
{
    const char* name;
    void (*open)(FaultFixture&); ///< may run an event loop of its own until the thing is gone
    bool (*isOpen)(const FaultFixture&);
    void (*dismiss)();
};

void nothing() {}

bool isPopupOpen(const FaultFixture& /*fixture*/)
{
    return QApplication::activePopupWidget() != nullptr;
}

template <typename Dialog> bool isModal(const FaultFixture& /*fixture*/)
{
    auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
    return dialog != nullptr && dialog->isVisible();
}

void closeModal()
{
    // A box of the window has gone with it.
    if (QWidget* modal = QApplication::activeModalWidget())
        modal->close();
}

/// Runs the program's event loop until its last window is closed.
int runToTheEnd()
{
    const auto quit = QObject::connect(qApp, &QGuiApplication::lastWindowClosed, qApp, &QCoreApplication::quit);
    const int status = QApplication::exec();
    QObject::disconnect(quit);
    // The toolkit asks for the end as well. Where that comes too late it would end the next loop at once, a box's too.
    QCoreApplication::removePostedEvents(qApp, QEvent::Quit);
    return status;
}

const std::array<Moment, 5> k_moments{{
    {"no device", false, [](FaultFixture& fixture) { fixture.startWhole(); }},
    {"before the first keep reply", false,
     [](FaultFixture& fixture) {
         fixture.device.dropKeeps(CSimulatedDevice::k_always);
         fixture.plug();
         fixture.startWhole();
     }},
    {"confirmed", true, [](FaultFixture& fixture) { fixture.startConnected(); }},
    {"lost", false,
     [](FaultFixture& fixture) {
         CMessageBoxAnswer answer(QMessageBox::Ok);
         fixture.startConnected();
         fixture.device.refuseSend(1);
         QTRY_VERIFY(answer.sawOnly(k_connectionErrorMessage));
     }},
    {"cable pulled, not noticed yet", true,
     [](FaultFixture& fixture) {
         fixture.times.keepInterval = std::chrono::hours(1);
         fixture.startConnected();
         fixture.device.unplug();
     }},
}};

const std::array<OpenThing, 7> k_openThings{{
    {"nothing", [](FaultFixture&) {}, [](const FaultFixture&) { return true; }, nothing},
    {"menu", [](FaultFixture& fixture) { fixture.menuBar()->actions().at(1)->menu()->popup(QPoint(20, 20)); },
     isPopupOpen, nothing},
    {"context menu",
     [](FaultFixture& fixture) { fixture.page(3)->showContextMenu(fixture.window->mapToGlobal(QPoint(100, 100))); },
     isPopupOpen, nothing},
    {"message box", [](FaultFixture& fixture) { fixture.window->revert(); }, isModal<QMessageBox>, closeModal},
    {"file dialog", [](FaultFixture& fixture) { fixture.window->open(); }, isModal<QFileDialog>, closeModal},
    {"typed edit",
     [](FaultFixture& fixture) {
         QTest::mouseDClick(fixture.slider(1102), Qt::LeftButton);
         QTest::keyClicks(fixture.slider(1102)->findChild<QLineEdit*>(), QStringLiteral("33"));
     },
     [](const FaultFixture& fixture) {
         return fixture.slider(1102)->findChild<QLineEdit*>()->text() == QLatin1String("33");
     },
     nothing},
    {"drag", [](FaultFixture& fixture) { QTest::mousePress(fixture.slider(1102), Qt::LeftButton); },
     [](const FaultFixture&) { return QApplication::overrideCursor() != nullptr; }, nothing},
}};
} // namespace

/// The window closed in each state of the connection, with each thing open that a user may have open: the program ends
/// by itself, tells the device exactly if it had answered, and leaves nothing behind.
class TestClosing : public CFaultTest
{
    Q_OBJECT

  private slots:
    void closedWith_data();
    void closedWith();
    void duringTheSplash();
    void withTheLossOnTheScreen();
};

void TestClosing::closedWith_data()
{
    QTest::addColumn<int>("moment");
    QTest::addColumn<int>("thing");
    for (std::size_t moment = 0; moment < k_moments.size(); ++moment) {
        for (std::size_t thing = 0; thing < k_openThings.size(); ++thing)
            QTest::addRow("%s, %s", k_moments.at(moment).name, k_openThings.at(thing).name)
                << static_cast<int>(moment) << static_cast<int>(thing);
    }
}

void TestClosing::closedWith()
{
    QFETCH(int, moment);
    QFETCH(int, thing);
    const OpenThing& open = k_openThings.at(static_cast<std::size_t>(thing));
    FaultFixture fixture;
    k_moments.at(static_cast<std::size_t>(moment)).reach(fixture);
    FaultFixture::forgetSent();
    const KnobSettings before = fixture.device.settings(2);

    QTimer::singleShot(0, fixture.window.get(), [&] { open.open(fixture); });
    QTimer closer;
    bool closed = false;
    closer.callOnTimeout([&] {
        if (!open.isOpen(fixture))
            return;
        closer.stop();
        closed = fixture.window->close();
        open.dismiss();
    });
    closer.start(5);
    QCOMPARE(runToTheEnd(), 0);

    QVERIFY(closed);
    QVERIFY(!fixture.window->isVisible());
    fixture.window.reset();
    QVERIFY(!QApplication::activePopupWidget());
    QVERIFY(!QApplication::activeModalWidget());
    QVERIFY(!QApplication::overrideCursor());
    const bool isConfirmed = k_moments.at(static_cast<std::size_t>(moment)).isConfirmed;
    QCOMPARE(FaultFixture::commands(), isConfirmed ? QStringList{k_endText} : QStringList());
    QCOMPARE(fixture.device.settings(2), before); // what was typed or dragged was not accepted
}

void TestClosing::duringTheSplash()
{
    FaultFixture fixture;
    fixture.plug();
    fixture.start();
    QTRY_VERIFY(fixture.isMarkLit());
    QVERIFY(fixture.window->isInitializing());
    QVERIFY(fixture.window->close());
    fixture.window.reset();
    QStringList commands = FaultFixture::commands();
    commands.removeDuplicates(); // the start message, while its answer was not seen
    QCOMPARE(commands, QStringList({k_startText, k_requestAllText, k_endText}));
}

void TestClosing::withTheLossOnTheScreen()
{
    FaultFixture fixture;
    fixture.startConnected();
    fixture.device.unplug();
    bool closed = false;
    QTimer closer;
    closer.callOnTimeout([&] {
        if (!isModal<QMessageBox>(fixture))
            return;
        closer.stop();
        closed = fixture.window->close();
        closeModal();
    });
    closer.start(5);
    QCOMPARE(runToTheEnd(), 0);
    QVERIFY(closed);
    fixture.window.reset();
    QVERIFY(!FaultFixture::sent().contains(k_endText));
}

KTZ_TEST(QApplication, TestClosing)
#include "TestClosing.moc"
