#include "tests/widgets/CControlViewTest.h"

#include "app/common/Constants.h"
#include "tests/widgets/ActiveWindow.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

void CPageWindow::setEditMenuEnable()
{
    ++m_menuUpdates;
}

void CPageWindow::copy()
{
    ++m_copies;
}

void CPageWindow::paste()
{
    ++m_pastes;
}

void CControlViewTest::init()
{
    CTestCase::init();
    QGuiApplication::clipboard()->clear();
    m_connected = std::make_unique<MemoryRig>();
    m_connected->setFactorySettings();
    m_connected->connect();
    m_window = std::make_unique<CPageWindow>();
    m_window->setGeometry(20, 20, 300, 300);
    m_page2 = createPage(2);
    m_page5 = createPage(5);
    m_page5->move(100, 0);
    QVERIFY(showActive(*m_window));
}

void CControlViewTest::cleanup()
{
    m_window.reset();
    m_connected.reset();
}

CControlView* CControlViewTest::createPage(int knob)
{
    auto* page = new CControlView(m_window.get(), &m_connected->memory);
    page->resize(87, 279);
    page->initialize(knob);
    bindAll(page);
    m_connected->memory.updateKnob(knob);
    return page;
}

void CControlViewTest::bindAll(QWidget* widget)
{
    for (QObject* child : widget->children()) {
        if (auto* proxy = dynamic_cast<CMemAPIProxy*>(child))
            m_connected->bind(*proxy, proxy->controllerID());
        if (child->isWidgetType())
            bindAll(static_cast<QWidget*>(child));
    }
}

CSlideEditor* CControlViewTest::editorOf(const CControlView* page, int control)
{
    return page->findChildren<CSlideEditor*>(QString(), Qt::FindDirectChildrenOnly).at(control - 1);
}

QAbstractSlider* CControlViewTest::sliderOf(const CControlView* page, int control)
{
    return editorOf(page, control)->findChildren<QAbstractSlider*>(QString(), Qt::FindDirectChildrenOnly).first();
}

void CControlViewTest::select(CControlView* page, int control)
{
    if (control == 0)
        page->knobSelect();
    else
        page->sliderSelect(editorOf(page, control));
}

QString CControlViewTest::mimeTypeOf(int control)
{
    return QStringList{k_mimeType_Knob, k_mimeType_CCNum, k_mimeType_MIDICh,
                       k_mimeType_Max,  k_mimeType_Min,   k_mimeType_LEDType}
        .at(control);
}

void CControlViewTest::fillClipboard(const QString& mimeType, const QByteArray& bytes)
{
    auto* mimeData = new QMimeData;
    mimeData->setData(mimeType, bytes);
    QGuiApplication::clipboard()->setMimeData(mimeData);
}
