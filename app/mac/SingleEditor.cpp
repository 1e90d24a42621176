#include "app/CSingleEditor.h"

// The system itself keeps one instance of an application, and gives it the documents to open.

class CSingleEditor::CBus
{
};

CSingleEditor::CSingleEditor(const JoinTimes& times) : m_times(times) {}

CSingleEditor::~CSingleEditor() = default;

CSingleEditor::Start CSingleEditor::start(const QByteArray& /*file*/, const ActivationToken& /*token*/)
{
    return Start::Editor;
}

void CSingleEditor::offerDevice(CMainWindow& /*window*/) {}

void CSingleEditor::refuse() {}
