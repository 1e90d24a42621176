#pragma once

#include "app/linux/CSingleEditorOnBus.h"
#include "device/CMemAPIWrapper.h"
#include "tests/app/CTestBus.h"
#include "tests/app/EditorFixture.h"
#include "tests/ctl/CWatchedBus.h"
#include "tests/ctl/CtlFixture.h"

/// The editor with a simulated device, offering it on a session bus of its own, and the program without a window beside
/// it, all in this thread.
struct EditorOnBusFixture
{
    EditorOnBusFixture()
    {
        qputenv("DBUS_SESSION_BUS_ADDRESS", bus.address().toLocal8Bit());
        ctl.makeBus = [this](CEditorListener& listener, const EditorBusTimes& times) {
            return CWatchedBus::make(listener, times, [this] { whenWatched(); });
        };
        // Under load the bus must not be taken for one that does not answer.
        ctl.times.editor = {.bus = 20s, .answer = 20s};
        CSimulatedSystem::instance().setOtherPrograms({k_editorProgramName});
    }

    ~EditorOnBusFixture()
    {
        session.refuse();
        qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    }

    EditorOnBusFixture(const EditorOnBusFixture&) = delete;
    EditorOnBusFixture& operator=(const EditorOnBusFixture&) = delete;

    /// The editor up to where it shows what the device holds.
    void startWhole()
    {
        editor.plug();
        editor.startWhole();
        editor.waitUntilConnected();
        offer();
    }

    void offer()
    {
        [this] { QCOMPARE(session.start({}, {}), CSingleEditor::Start::Editor); }();
        session.offerDevice(*editor.window);
        SimulatedDeviceFixture::forgetSent();
    }

    /// What went to the device since, but for what keeps the connection.
    [[nodiscard]] static QStringList sent()
    {
        QStringList messages = SimulatedDeviceFixture::sent();
        messages.removeAll(k_keep);
        return messages;
    }

    /// Called as soon as a watch hears of whatever happens.
    std::function<void()> whenWatched = [] {};

    CTestBus bus;
    CtlFixture ctl;
    EditorFixture editor;
    CSingleEditorOnBus session{{.bus = 20s}};
};

inline const QString k_requestAll = QString::fromLatin1(k_requestAllBytes.toHex());
