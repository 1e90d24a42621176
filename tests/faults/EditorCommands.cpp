#include "tests/faults/EditorCommands.h"

#include "tests/support/CMessageBoxAnswer.h"

namespace
{
void edit(FaultFixture& fixture, CMessageBoxAnswer& /*boxes*/, const QString& /*file*/)
{
    fixture.editor(1104)->setValue(5);
}

void paste(FaultFixture& fixture, CMessageBoxAnswer& /*boxes*/, const QString& /*file*/)
{
    QTest::mouseClick(fixture.knobLED(2), Qt::LeftButton);
    fixture.action(k_copyString)->trigger();
    QTest::mouseClick(fixture.knobLED(4), Qt::LeftButton);
    fixture.action(k_pasteString)->trigger();
}

void open(FaultFixture& fixture, CMessageBoxAnswer& boxes, const QString& file)
{
    boxes.setAnswer(QMessageBox::No); // what was edited need not be saved
    fixture.window->setApplicationFilePath(file);
    fixture.window->applicationFileOpen();
}

void revert(FaultFixture& fixture, CMessageBoxAnswer& boxes, const QString& /*file*/)
{
    boxes.setAnswer(QMessageBox::Yes);
    fixture.action(k_revrtString)->trigger();
}

void loadPreset(FaultFixture& fixture, CMessageBoxAnswer& boxes, const QString& /*file*/)
{
    boxes.setAnswer(QMessageBox::Yes);
    fixture.action(k_resetString)->trigger();
}
} // namespace

const std::array<EditorCommand, 5> k_editorCommands{{
    {"edit", 4, 1, edit},
    {"paste", 4, 1, paste},
    {"open", 0, k_numOfKnobs, open},
    {"revert", 0, k_numOfKnobs, revert},
    {"factory preset", 0, k_numOfKnobs, loadPreset},
}};

void addCommandRows()
{
    QTest::addColumn<int>("command");
    QTest::addColumn<int>("n");
    for (std::size_t command = 0; command < k_editorCommands.size(); ++command) {
        for (int n = 1; n <= k_editorCommands.at(command).messages; ++n)
            QTest::addRow("%s, message %d", k_editorCommands.at(command).name, n) << static_cast<int>(command) << n;
    }
}
