#pragma once

#include "app/CMainWindow.h"
#include "app/common/Constants.h"
#include "app/common/Utilities.h"
#include "device/DeviceParams.h"
#include "style/CJXStyle.h"
#include "style/COnlineMark.h"
#include "style/CSplashView.h"
#include "tests/support/SimulatedDeviceFixture.h"
#include "tests/support/WaitFor.h"
#include "widgets/CControlView.h"
#include "widgets/CKnobLED.h"
#include "widgets/CSlideEditor.h"
#include "widgets/KnobLEDStates.h"

#include <QAbstractSlider>
#include <QAction>
#include <QApplication>
#include <QMenuBar>
#include <QPropertyAnimation>
#include <QTest>

#include <memory>

/// What the editor sends to keep the connection, in hexadecimal.
inline const QString k_keep = QStringLiteral("f043103e18050201f7");

/// The editor's window as main() starts it, on a simulated MIDI system, with a connection in quick motion.
struct EditorFixture : SimulatedDeviceFixture
{
    EditorFixture()
    {
        static const bool prepared = prepareApplication();
        Q_UNUSED(prepared)
        // The last thing that the device tells of itself, and so the sign that the editor knows everything.
        device.setValue(7, 127);
    }

    /// Starts the editor up to its first event loop: the splash is still there.
    CMainWindow& start()
    {
        window = std::make_unique<CMainWindow>(times, splashTimes);
        window->initialize();
        window->show();
        return *window;
    }

    /// Lets the device answer and the splash have had its time; it has finished and gone afterwards.
    void finishSplash() const
    {
        if (device.isPlugged())
            QTRY_COMPARE(knobLED(7)->getImageIndexByType(k_ledAscent), k_numOfLEDStates - 1);
        QPointer<CSplashView> splash = window->findChild<CSplashView*>();
        QVERIFY(splash);
        for (int tick = 0; tick < 118; ++tick)
            splash->showTimeOver();
        QVERIFY(!window->isInitializing());
        splash->closeView();
        QTRY_VERIFY(!splash);
    }

    /// A started editor without its splash; with a device that has answered if one is plugged in.
    CMainWindow& startWhole()
    {
        start();
        finishSplash();
        [&] { QVERIFY(QTest::qWaitForWindowExposed(window.get())); }();
        return *window;
    }

    /// Waits until the editor knows that the device answers, so that edits are sent: the online mark fades in then. The
    /// keep thread has had its first pass too, which may come late; the next is an interval away.
    void waitUntilConnected() const
    {
        const auto* mark = window->findChild<COnlineMark*>();
        QTRY_VERIFY(mark->getAlpha() < 255);
        QTRY_COMPARE_GE(sent().count(k_keep), 2);
    }

    [[nodiscard]] CControlView* page(int knob) const
    {
        return window->findChildren<CControlView*>().value(knob);
    }

    /// The editor bound to a parameter.
    [[nodiscard]] CSlideEditor* editor(int id) const
    {
        const QList<CSlideEditor*> editors = window->findChildren<CSlideEditor*>();
        for (CSlideEditor* candidate : editors) {
            if (candidate->controllerID() == id)
                return candidate;
        }
        return nullptr;
    }

    /// The value field of an editor.
    [[nodiscard]] QAbstractSlider* slider(int id) const
    {
        return editor(id)->findChild<QAbstractSlider*>(QString(), Qt::FindDirectChildrenOnly);
    }

    [[nodiscard]] CKnobLED* knobLED(int knob) const
    {
        return page(knob)->findChild<CKnobLED*>();
    }

    [[nodiscard]] QAction* action(const QString& text) const
    {
        const QList<QAction*> actions = window->findChildren<QAction*>();
        for (QAction* candidate : actions) {
            if (candidate->text() == text)
                return candidate;
        }
        return nullptr;
    }

    /// What the editor shows of a knob.
    [[nodiscard]] KnobSettings shown(int knob) const
    {
        return {editor(k_ccNumCategory + knob)->getValue(), editor(k_midiChCategory + knob)->getValue(),
                editor(k_maxCategory + knob)->getValue(), editor(k_minCategory + knob)->getValue(),
                editor(k_ledTypeCategory + knob)->getValue()};
    }

    /// Whether the editor shows what the device holds: the settings of every knob, and rings at its values' states.
    [[nodiscard]] bool agrees() const
    {
        for (int knob = 0; knob < k_numOfKnobs; ++knob) {
            const KnobSettings held = device.settings(knob);
            const int ring = knobLED(knob)->getImageIndexByType(held.led);
            if (shown(knob) != held || ring != knobLEDIndex(held.led, device.value(knob)))
                return false;
        }
        return true;
    }

    [[nodiscard]] QMenuBar* menuBar() const
    {
        return window->findChild<QMenuBar*>();
    }

    /// A rhythm in which nothing is lost, to be changed before the start.
    ConnectionTimes times{.startInterval = std::chrono::milliseconds(20),
                          .keepInterval = std::chrono::milliseconds(100),
                          .watchdog = std::chrono::hours(1)};
    SplashTimes splashTimes;
    std::unique_ptr<CMainWindow> window;

  private:
    static bool prepareApplication()
    {
        Q_INIT_RESOURCE(common_images);
        QApplication::setStyle(new CJXStyle);
        QApplication::setAttribute(Qt::AA_DontUseNativeMenuBar);
        return Utilities::registerSkinFonts();
    }
};
