#pragma once

#include "tests/support/CTestCase.h"
#include "tests/support/MemoryRig.h"
#include "widgets/CControlView.h"
#include "widgets/CSlideEditor.h"

#include <QAbstractSlider>

#include <memory>

/// Stands in for the main window: two pages and the commands that they call.
class CPageWindow : public QWidget
{
    Q_OBJECT

  public:
    int m_menuUpdates = 0;
    int m_copies = 0;
    int m_pastes = 0;

  public slots:
    void setEditMenuEnable();
    void copy();
    void paste();
};

/// Base of the tests of a page: each has the pages of knobs 2 and 5, bound to a connected memory, and no clipboard.
class CControlViewTest : public CTestCase
{
    Q_OBJECT

  protected slots:
    void init();
    void cleanup();

  protected:
    /// The controls of a page; the knob is 0.
    static constexpr int k_ccNum = 1;
    static constexpr int k_midiCh = 2;
    static constexpr int k_ledType = 5;

    [[nodiscard]] CControlView* createPage(int knob);

    /// Those of the controls but the knob.
    [[nodiscard]] static CSlideEditor* editorOf(const CControlView* page, int control);
    [[nodiscard]] static QAbstractSlider* sliderOf(const CControlView* page, int control);

    static void select(CControlView* page, int control);

    /// The format in which a control's setting is copied.
    [[nodiscard]] static QString mimeTypeOf(int control);
    static void fillClipboard(const QString& mimeType, const QByteArray& bytes);

    std::unique_ptr<MemoryRig> m_connected;
    std::unique_ptr<CPageWindow> m_window;
    CControlView* m_page2 = nullptr; ///< child of the window
    CControlView* m_page5 = nullptr; ///< child of the window

  private:
    void bindAll(QWidget* widget);
};
