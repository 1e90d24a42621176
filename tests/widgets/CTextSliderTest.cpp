#include "tests/widgets/CTextSliderTest.h"

#include "tests/widgets/ActiveWindow.h"

#include <QApplication>

void CTextSliderTest::init()
{
    CTestCase::init();
    m_window = std::make_unique<QWidget>();
    m_window->setGeometry(20, 20, 300, 200);
    m_slider = new CTextSlider(m_window.get());
    m_slider->setGeometry(50, 50, 73, 15);
    m_slider->setRange(0, 127);
    m_slider->setValue(64);
    QVERIFY(showActive(*m_window));
    m_slider->setFocus();
}

void CTextSliderTest::cleanup()
{
    m_window.reset();
    QVERIFY(QApplication::overrideCursor() == nullptr);
}

QPoint CTextSliderTest::topLeft() const
{
    return m_slider->mapToGlobal(QPoint(0, 0));
}
