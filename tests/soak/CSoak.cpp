#include "tests/soak/CSoak.h"

#include "device/DeviceParams.h"
#include "tests/support/CFileDialogAnswer.h"
#include "tests/support/WaitFor.h"
#include "tests/widgets/WidgetEvents.h"
#include "widgets/CSpinButton.h"

#include <QLineEdit>

#include <algorithm>
#include <numeric>

CSoak::CSoak(quint32 seed) : m_random(seed) {}

void CSoak::start()
{
    stop();
    m_fixture.device.setValue(k_numOfKnobs - 1, 127); // the value by which the fixture knows that all has come
    m_fixture.plug();
    m_fixture.startWhole();
    m_fixture.waitUntilConnected();
    m_answer.forgetBoxes();
    ++m_starts;
    compare();
}

void CSoak::stop()
{
    m_fixture.window.reset();
    m_fixture.forgetSent();
    m_fixture.device.clearTraffic();
}

int CSoak::starts() const
{
    return m_starts;
}

int CSoak::losses() const
{
    return m_losses;
}

QString CSoak::lastStep() const
{
    return m_lastStep;
}

const QList<CSoak::Step>& CSoak::steps()
{
    static const QList<Step> all{
        {"wheel over a field", 8, &CSoak::wheelField},
        {"type a number", 6, &CSoak::typeNumber},
        {"click a spin button", 8, &CSoak::clickSpinButton},
        {"press keys", 6, &CSoak::pressKeys},
        {"turn knobs", 12, &CSoak::turnKnobs},
        {"change settings on the device", 6, &CSoak::changeOnDevice},
        {"copy a knob", 6, &CSoak::copyKnob},
        {"copy a field", 6, &CSoak::copyField},
        {"save and open", 3, &CSoak::saveAndOpen},
        {"revert or reset", 3, &CSoak::revertOrReset},
        {"change the way of the replies", 6, &CSoak::changeReplyPath},
        {"drop a keep reply", 3, &CSoak::dropKeep},
        {"refuse a send", 1, &CSoak::refuseSend},
        {"lose the device", 1, &CSoak::loseDevice},
    };
    return all;
}

void CSoak::step()
{
    static const int weights =
        std::accumulate(steps().begin(), steps().end(), 0, [](int sum, const Step& step) { return sum + step.weight; });
    int rest = below(weights);
    auto chosen = steps().begin();
    for (; rest >= chosen->weight; ++chosen)
        rest -= chosen->weight;
    m_lastStep = QString::fromLatin1(chosen->name);
    (this->*chosen->run)();
    if (isLost()) {
        ++m_losses;
        start();
    } else {
        compare();
    }
    m_fixture.forgetSent();
    m_fixture.device.clearTraffic();
    // Many a step waits for nothing, and what the display has to say about it would pile up.
    QCoreApplication::processEvents();
}

void CSoak::wheelField()
{
    QAbstractSlider* field = m_fixture.slider(randomCategory() + below(k_numOfKnobs));
    const int clicks = below(9) - 4;
    sendWheel(*field, field->mapToGlobal(field->rect().center()), QPoint(0, 120 * clicks));
}

void CSoak::typeNumber()
{
    QAbstractSlider* field = m_fixture.slider(randomNumberField());
    QTest::mouseDClick(field, Qt::LeftButton);
    auto* edit = field->findChild<QLineEdit*>();
    QTRY_VERIFY(edit->isVisible());
    QTest::keyClicks(edit, QString::number(below(200) - 20));
    QTest::keyClick(edit, below(4) == 0 ? Qt::Key_Escape : Qt::Key_Return);
}

void CSoak::clickSpinButton()
{
    auto* spin = m_fixture.editor(randomCategory() + below(k_numOfKnobs))->findChild<CSpinButton*>();
    const QPoint upper(spin->width() / 2, spin->height() / 4);
    const QPoint lower(spin->width() / 2, spin->height() * 3 / 4);
    for (int clicks = 1 + below(5); clicks > 0; --clicks) {
        const QPoint point = below(2) == 0 ? upper : lower;
        QWidget* half = spin->childAt(point);
        QTest::mouseClick(half, Qt::LeftButton, {}, half->mapFrom(spin, point));
    }
}

void CSoak::pressKeys()
{
    const std::array keys{Qt::Key_Up, Qt::Key_Down, Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_Home, Qt::Key_End};
    QAbstractSlider* field = m_fixture.slider(randomCategory() + below(k_numOfKnobs));
    QTest::mouseClick(field, Qt::LeftButton);
    for (int presses = 1 + below(4); presses > 0; --presses)
        QTest::keyClick(field, keys[static_cast<std::size_t>(below(static_cast<int>(keys.size())))]);
}

void CSoak::turnKnobs()
{
    for (int turns = 1 + below(200); turns > 0; --turns)
        m_fixture.device.turn(below(k_numOfKnobs), below(128));
}

void CSoak::changeOnDevice()
{
    const int knob = below(k_numOfKnobs);
    m_fixture.device.setSettings(knob, {below(128), below(16), below(128), below(128), below(4)});
    m_fixture.device.reportSettings(knob);
}

void CSoak::copyKnob()
{
    const int from = below(k_numOfKnobs);
    const int to = below(k_numOfKnobs);
    QTest::mouseClick(m_fixture.knobLED(from), Qt::LeftButton);
    m_fixture.action(k_copyString)->trigger();
    QTest::mouseClick(m_fixture.knobLED(to), Qt::LeftButton);
    m_fixture.action(k_pasteString)->trigger();
    if (!isLost())
        QCOMPARE(m_fixture.device.settings(to), m_fixture.device.settings(from));
}

void CSoak::copyField()
{
    const int category = randomCategory();
    const int from = category + below(k_numOfKnobs);
    const int to = category + below(k_numOfKnobs);
    QTest::mouseClick(m_fixture.slider(from), Qt::LeftButton);
    m_fixture.action(k_copyString)->trigger();
    QTest::mouseClick(m_fixture.slider(to), Qt::LeftButton);
    m_fixture.action(k_pasteString)->trigger();
    if (!isLost())
        QCOMPARE(m_fixture.editor(to)->getValue(), m_fixture.editor(from)->getValue());
}

void CSoak::saveAndOpen()
{
    const QString path = m_folder.filePath(QStringLiteral("%1.CJX").arg(++m_files));
    std::array<KnobSettings, k_numOfKnobs> saved;
    for (int knob = 0; knob < k_numOfKnobs; ++knob)
        saved[static_cast<std::size_t>(knob)] = m_fixture.device.settings(knob);
    CFileDialogAnswer files({path, path});
    m_fixture.action(k_saveAsString)->trigger();
    QVERIFY(QFile::exists(path));
    for (int edits = below(10); edits > 0; --edits)
        wheelField();
    m_answer.setAnswer(QMessageBox::No); // what was edited since then need not be saved
    m_fixture.action(k_openString)->trigger();
    m_answer.setAnswer(QMessageBox::Ok);
    QVERIFY(QFile::remove(path));
    if (isLost())
        return;
    for (int knob = 0; knob < k_numOfKnobs; ++knob)
        QCOMPARE(m_fixture.device.settings(knob), saved[static_cast<std::size_t>(knob)]);
}

void CSoak::revertOrReset()
{
    m_answer.setAnswer(below(3) == 0 ? QMessageBox::No : QMessageBox::Yes);
    m_fixture.action(below(2) == 0 ? k_revrtString : k_resetString)->trigger();
    m_answer.setAnswer(QMessageBox::Ok);
}

void CSoak::changeReplyPath()
{
    // Never several messages in one packet: of those, the editor follows the last alone.
    CSimulatedDevice& device = m_fixture.device;
    device.cutRepliesInto(below(3) == 0 ? 1 + below(14) : 0);
    device.strayBytes(below(3) == 0 ? QByteArray(1 + below(20), static_cast<char>(below(128))) : QByteArray());
    device.otherEvents(below(3) == 0 ? QList<QByteArray>{QByteArray::fromHex("f8"), QByteArray::fromHex("b00740")}
                                     : QList<QByteArray>());
}

void CSoak::dropKeep()
{
    m_fixture.device.dropKeeps(1 + below(2));
}

void CSoak::refuseSend()
{
    m_fixture.device.refuseSend(1);
    clickSpinButton(); // or else the next keep message meets it
    const auto wasRefused = [] {
        const QList<SentPacket> packets = CSimulatedSystem::instance().packets();
        return std::ranges::any_of(packets, [](const SentPacket& packet) { return !packet.taken; });
    };
    // A connection that dropped replies have ended meanwhile sends nothing more; the next one is not to meet it.
    QTRY_VERIFY(wasRefused() || isLost());
    m_fixture.device.refuseSend(1, 0);
}

void CSoak::loseDevice()
{
    m_fixture.device.unplug();
    wheelField();
    QTRY_VERIFY(isLost());
    for (int edits = below(20); edits > 0; --edits)
        wheelField();
}

void CSoak::compare()
{
    QTRY_VERIFY(m_fixture.agrees() || isLost());
}

bool CSoak::isLost() const
{
    const auto& boxes = m_answer.boxes();
    return std::ranges::any_of(boxes, [](const auto& box) { return box.text == k_connectionErrorMessage; });
}

int CSoak::below(int bound)
{
    return m_random.bounded(bound);
}

int CSoak::randomCategory()
{
    return k_settingCategories[static_cast<std::size_t>(below(static_cast<int>(k_settingCategories.size())))];
}

int CSoak::randomNumberField()
{
    constexpr std::array categories{k_ccNumCategory, k_midiChCategory, k_maxCategory, k_minCategory};
    return categories[static_cast<std::size_t>(below(static_cast<int>(categories.size())))] + below(k_numOfKnobs);
}
