#pragma once

#include "tests/support/CTestCase.h"
#include "widgets/CTextSlider.h"

#include <memory>

/// Base of the tests of text sliders: each has one from 0 to 127, at 64, with the focus, on an active window.
class CTextSliderTest : public CTestCase
{
    Q_OBJECT

  protected slots:
    void init();
    void cleanup();

  protected:
    [[nodiscard]] QPoint topLeft() const;

    std::unique_ptr<QWidget> m_window;
    CTextSlider* m_slider = nullptr; ///< child of the window
};
