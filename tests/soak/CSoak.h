#pragma once

#include "tests/app/EditorFixture.h"
#include "tests/support/CMessageBoxAnswer.h"

#include <QRandomGenerator>
#include <QTemporaryDir>

/// The editor and its device under random edits, turns, copies, file operations and faults, which a seed decides.
///
/// Every step ends with both holding the same settings, and with every ring at the state of its knob's value; a step
/// that does not marks the running test as failed.
class CSoak
{
  public:
    explicit CSoak(quint32 seed);

    /// Starts the editor on the plugged device, anew if it runs.
    void start();

    /// One random step. A step in which the connection is lost ends with a new start.
    void step();

    /// Ends the editor.
    void stop();

    [[nodiscard]] int starts() const;
    [[nodiscard]] int losses() const;

    /// What the last step did, for a failure's report.
    [[nodiscard]] QString lastStep() const;

  private:
    struct Step
    {
        const char* name;
        int weight;
        void (CSoak::*run)();
    };
    static const QList<Step>& steps();

    // Edits, by real events.
    void wheelField();
    void typeNumber();
    void clickSpinButton();
    void pressKeys();

    // What happens at the device.
    void turnKnobs();
    void changeOnDevice();

    // Commands.
    void copyKnob();
    void copyField();
    void saveAndOpen();
    void revertOrReset();

    // Faults.
    void changeReplyPath();
    void dropKeep();
    void refuseSend();
    void loseDevice();

    void compare();
    [[nodiscard]] bool isLost() const;
    [[nodiscard]] int below(int bound);
    [[nodiscard]] int randomCategory();
    [[nodiscard]] int randomNumberField();

    QRandomGenerator m_random;
    QTemporaryDir m_folder;
    EditorFixture m_fixture;
    CMessageBoxAnswer m_answer{QMessageBox::Ok};
    int m_starts = 0;
    int m_losses = 0;
    int m_files = 0;
    QString m_lastStep;
};
