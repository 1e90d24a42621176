#include "style/CJXStyle.h"
#include "style/StyleColors.h"
#include "style/StyleImages.h"
#include "tests/style/CRecordingStyle.h"
#include "tests/style/CStyleCanvas.h"
#include "tests/support/CTestCase.h"

#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QStyleFactory>
#include <QStyleOption>
#include <QTreeWidget>

#include <memory>

namespace
{
/// A widget whose paint event asks for a focus rectangle without saying for whom.
template <class Base> class CFocused : public Base
{
  protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        QStyleOptionFocusRect option;
        option.initFrom(this);
        QApplication::style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter);
    }
};
} // namespace

class TestJXStylePainting : public CTestCase
{
    Q_OBJECT

  private slots:
    void init();

    void image_data();
    void image();

    void nothingIsDrawn_data();
    void nothingIsDrawn();
    void frameIsFilled_data();
    void frameIsFilled();
    void focusRectOfPaintersWidget();
    void branch_data();
    void branch();
    void branchBox_data();
    void branchBox();
    void everythingElseIsTheWindowsStyles();

  private:
    CRecordingStyle* m_previous = nullptr; ///< owned by m_style
    CJXStyle* m_style = nullptr;           ///< owned by the application
};

void TestJXStylePainting::init()
{
    CTestCase::init();
    m_previous = new CRecordingStyle;
    QApplication::setStyle(m_previous);
    m_style = new CJXStyle;
    QApplication::setStyle(m_style);
}

void TestJXStylePainting::image_data()
{
    QTest::addColumn<ImageData>("data");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QRgb>("border");
    QTest::addColumn<QRgb>("inside");
    QTest::addColumn<QPoint>("inner"); // a pixel of the inside colour
    QTest::addColumn<int>("innerCount");
    const auto row = [](const char* name, ImageData data, QSize size, QRgb border, QRgb inside, QPoint inner,
                        int innerCount) {
        QTest::newRow(name) << data << size << border << inside << inner << innerCount;
    };
    const QSize box(9, 9);
    const QSize radio(5, 5);
    const QSize upright(10, 7);
    const QSize sideways(7, 10);
    constexpr int k_triangle = 2 + 4 + 6 + 8; // four rows
    constexpr QRgb arrow = 0xff373737;
    constexpr QRgb lit = 0xff00ff00;
    constexpr QRgb edge = 0xff8a8989;
    row("list_close_image", list_close_image, box, 0xff373737, 0xffcccccc, {4, 2}, 44);
    row("list_open_image", list_open_image, box, 0xff373737, 0xffcccccc, {2, 2}, 40);
    row("radio_image", radio_image, radio, 0xff666666, 0xff373737, {2, 2}, 9);
    row("radio_check_image", radio_check_image, radio, 0xff666666, 0xff00cc00, {2, 2}, 9);
    row("scrollbar_up_image", scrollbar_up_image, upright, edge, arrow, {4, 1}, k_triangle);
    row("scrollbar_up_highlight_image", scrollbar_up_highlight_image, upright, edge, lit, {4, 1}, k_triangle);
    row("scrollbar_down_image", scrollbar_down_image, upright, edge, arrow, {4, 5}, k_triangle);
    row("scrollbar_down_highlight_image", scrollbar_down_highlight_image, upright, edge, lit, {4, 5}, k_triangle);
    row("scrollbar_left_image", scrollbar_left_image, sideways, edge, arrow, {1, 4}, k_triangle);
    row("scrollbar_left_highlight_image", scrollbar_left_highlight_image, sideways, edge, lit, {1, 4}, k_triangle);
    row("scrollbar_right_image", scrollbar_right_image, sideways, edge, arrow, {5, 4}, k_triangle);
    row("scrollbar_right_highlight_image", scrollbar_right_highlight_image, sideways, edge, lit, {5, 4}, k_triangle);
}

void TestJXStylePainting::image()
{
    QFETCH(ImageData, data);
    QFETCH(QSize, size);
    QFETCH(QRgb, border);
    QFETCH(QRgb, inside);
    QFETCH(QPoint, inner);
    QFETCH(int, innerCount);
    const QImage picture(data);
    QCOMPARE(picture.size(), size);
    for (int x = 0; x < size.width(); ++x) {
        QCOMPARE(picture.pixel(x, 0), border);
        QCOMPARE(picture.pixel(x, size.height() - 1), border);
    }
    for (int y = 0; y < size.height(); ++y) {
        QCOMPARE(picture.pixel(0, y), border);
        QCOMPARE(picture.pixel(size.width() - 1, y), border);
    }
    QCOMPARE(picture.pixel(inner), inside);
    int found = 0;
    for (int x = 0; x < size.width(); ++x)
        for (int y = 0; y < size.height(); ++y)
            found += picture.pixel(x, y) == inside ? 1 : 0;
    QCOMPARE(found, innerCount);
}

void TestJXStylePainting::nothingIsDrawn_data()
{
    QTest::addColumn<QStyle::PrimitiveElement>("element");
    QTest::newRow("PE_FrameFocusRect") << QStyle::PE_FrameFocusRect;
    QTest::newRow("PE_PanelMenuBar") << QStyle::PE_PanelMenuBar;
    QTest::newRow("PE_PanelLineEdit") << QStyle::PE_PanelLineEdit;
}

void TestJXStylePainting::nothingIsDrawn()
{
    QFETCH(QStyle::PrimitiveElement, element);
    QLineEdit edit;
    CStyleCanvas canvas({40, 20});
    canvas.draw([&](QPainter* painter) {
        QStyleOptionFrame option;
        option.rect = QRect(0, 0, 40, 20);
        m_style->drawPrimitive(element, &option, painter, &edit);
    });
    QCOMPARE(canvas.colors(), QSet<QRgb>{CStyleCanvas::k_untouched.rgb()});
    QVERIFY(!canvas.smoothsText());
}

void TestJXStylePainting::frameIsFilled_data()
{
    QTest::addColumn<QStyle::PrimitiveElement>("element");
    QTest::newRow("PE_Frame") << QStyle::PE_Frame;
    QTest::newRow("PE_FrameMenu") << QStyle::PE_FrameMenu;
}

void TestJXStylePainting::frameIsFilled()
{
    QFETCH(QStyle::PrimitiveElement, element);
    QMenu menu;
    CStyleCanvas canvas({40, 20});
    const QRect rect(3, 4, 20, 10);
    canvas.draw([&](QPainter* painter) {
        QStyleOptionFrame option;
        option.rect = rect;
        m_style->drawPrimitive(element, &option, painter, &menu);
    });
    QCOMPARE(canvas.bounds(colorPaletteFrame, canvas.image().rect()), rect);
    QCOMPARE(canvas.colors(rect), QSet<QRgb>{colorPaletteFrame.rgb()});
}

void TestJXStylePainting::focusRectOfPaintersWidget()
{
    CFocused<QLineEdit> custom;
    CFocused<QWidget> other;
    custom.show();
    other.show();
    QVERIFY(QTest::qWaitForWindowExposed(&custom));
    QVERIFY(QTest::qWaitForWindowExposed(&other));

    m_previous->calls().clear();
    custom.repaint();
    QVERIFY(!m_previous->calls().contains(QStringLiteral("drawPrimitive")));
    other.repaint();
    QVERIFY(m_previous->calls().contains(QStringLiteral("drawPrimitive")));
}

void TestJXStylePainting::branch_data() // cell of 20 x 18 at (4, 2): its centre is at (14, 11)
{
    QTest::addColumn<QStyle::State>("state");
    QTest::addColumn<Qt::LayoutDirection>("direction");
    QTest::addColumn<bool>("up");
    QTest::addColumn<bool>("down");
    QTest::addColumn<bool>("left");
    QTest::addColumn<bool>("right");
    const auto row = [](const char* name, QStyle::State state, bool up, bool down, bool right) {
        QTest::newRow(name) << state << Qt::LeftToRight << up << down << false << right;
    };
    row("empty column", QStyle::State_None, false, false, false);
    row("item with siblings below", QStyle::State_Item | QStyle::State_Sibling, true, true, true);
    row("last item", QStyle::State_Item, true, false, true);
    row("column of an outer level", QStyle::State_Sibling, true, true, false);
    QTest::newRow("last item, right to left")
        << QStyle::State(QStyle::State_Item) << Qt::RightToLeft << true << false << true << false;
}

void TestJXStylePainting::branch()
{
    QFETCH(QStyle::State, state);
    QFETCH(Qt::LayoutDirection, direction);
    QFETCH(bool, up);
    QFETCH(bool, down);
    QFETCH(bool, left);
    QFETCH(bool, right);
    QTreeWidget tree;
    tree.setObjectName(QStringLiteral("CPopupTreeWidget"));
    CStyleCanvas canvas({30, 24});
    canvas.draw([&](QPainter* painter) {
        QStyleOption option;
        option.rect = QRect(4, 2, 20, 18);
        option.state = state;
        option.direction = direction;
        m_style->drawPrimitive(QStyle::PE_IndicatorBranch, &option, painter, &tree);
    });
    const QRect box = canvas.bounds(colorListViewLine, canvas.image().rect());
    QCOMPARE(canvas.at(14, 2) == colorListViewLine, up);
    QCOMPARE(canvas.at(14, 19) == colorListViewLine, down);
    QCOMPARE(canvas.at(4, 11) == colorListViewLine, left);
    QCOMPARE(canvas.at(23, 11) == colorListViewLine, right);
    QCOMPARE(canvas.at(14, 11) == colorListViewLine, up || down || left || right);
    QVERIFY(box.isEmpty() || QRect(4, 2, 20, 18).contains(box));
}

void TestJXStylePainting::branchBox_data()
{
    QTest::addColumn<QStyle::State>("state");
    QTest::addColumn<ImageData>("box");
    QTest::newRow("open") << (QStyle::State_Item | QStyle::State_Children | QStyle::State_Open)
                          << ImageData(list_open_image);
    QTest::newRow("closed") << (QStyle::State_Item | QStyle::State_Children) << ImageData(list_close_image);
}

void TestJXStylePainting::branchBox()
{
    QFETCH(QStyle::State, state);
    QFETCH(ImageData, box);
    QTreeWidget tree;
    tree.setObjectName(QStringLiteral("CPopupTreeWidget"));
    CStyleCanvas canvas({30, 24});
    canvas.draw([&](QPainter* painter) {
        QStyleOption option;
        option.rect = QRect(4, 2, 20, 18);
        option.state = state;
        m_style->drawPrimitive(QStyle::PE_IndicatorBranch, &option, painter, &tree);
    });
    QCOMPARE(canvas.image().copy(10, 7, 9, 9), QImage(box).convertToFormat(QImage::Format_RGB32));
    QCOMPARE(canvas.at(14, 6), colorListViewLine);
    QCOMPARE(canvas.at(19, 11), colorListViewLine);
}

void TestJXStylePainting::everythingElseIsTheWindowsStyles()
{
    const std::unique_ptr<QStyle> windows(QStyleFactory::create(QStringLiteral("Windows")));
    QMenu menu;
    const auto drawWith = [&menu](const QStyle& style) {
        CStyleCanvas canvas({60, 40});
        canvas.draw([&](QPainter* painter) {
            QStyleOptionMenuItem item;
            item.rect = QRect(0, 0, 60, 20);
            item.state = QStyle::State_Enabled;
            style.drawControl(QStyle::CE_MenuTearoff, &item, painter, &menu);
            QStyleOptionSlider slider;
            slider.rect = QRect(0, 20, 60, 10);
            style.drawComplexControl(QStyle::CC_Slider, &slider, painter, &menu);
            QStyleOption arrow;
            arrow.rect = QRect(0, 30, 10, 10);
            style.drawPrimitive(QStyle::PE_IndicatorArrowDown, &arrow, painter, &menu);
        });
        return canvas;
    };
    const CStyleCanvas ours = drawWith(*m_style);
    QCOMPARE(ours.image(), drawWith(*windows).image());
    QVERIFY(ours.colors().size() > 1);

    QStyleOptionSlider slider;
    slider.rect = QRect(0, 0, 80, 20);
    QCOMPARE(m_style->subControlRect(QStyle::CC_Slider, &slider, QStyle::SC_SliderHandle, &menu),
             windows->subControlRect(QStyle::CC_Slider, &slider, QStyle::SC_SliderHandle, &menu));
}

KTZ_TEST(QApplication, TestJXStylePainting)
#include "TestJXStylePainting.moc"
