#include "tests/widgets/CTextSliderTest.h"

#include "tests/widgets/ActiveWindow.h"
#include "tests/widgets/WidgetEvents.h"
#include "widgets/CLineEdit.h"

#include <QMessageBox>
#include <QTimer>
#include <QValidator>

class TestTextSliderTyping : public CTextSliderTest
{
    Q_OBJECT

  private slots:
    void valueIsShownByTheFormula_data();
    void valueIsShownByTheFormula();
    void nothingIsDrawnBehindTheEditField();

    void typedNumberIsSetByTheFormula_data();
    void typedNumberIsSetByTheFormula();
    void textThatIsNoNumberLeavesTheValueAndClosesTheField();
    void hugeNumberAndZeroMultiplierAreHarmless();
    void escapeAbortsTyping();
    void acceptAfterAbortChangesNothing();
    void clickOnAnotherSliderEndsTypingAndKeepsTheFocus();
    void clickOnTheSliderItselfEndsTyping();
    void windowChangeEndsTypingAndLeavesTheFocusToTheSlider();
    void returnInAnEmptiedFieldClosesItAndKeepsTheValue();
    void rightClickInAnEmptiedFieldKeepsItOpen();
    void fieldTakesOverTheSlidersLook();
    void fieldAcceptsWholeNumbersUnlessTheFormulaHasFractions_data();
    void fieldAcceptsWholeNumbersUnlessTheFormulaHasFractions();
    void doubleClickIsIgnored_data();
    void doubleClickIsIgnored();

  private:
    void type(const QString& text);
};

void TestTextSliderTyping::valueIsShownByTheFormula_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<double>("multiplier");
    QTest::addColumn<double>("offset");
    QTest::addColumn<QString>("text");
    QTest::newRow("64 shows 64") << "%.0f" << 1.0 << 0.0 << "64";
    QTest::newRow("a channel counts from 1") << "%.0f" << 1.0 << 1.0 << "65";
    QTest::newRow("multiplier before offset") << "%.2f" << 0.5 << 0.25 << "32.25";
    QTest::newRow("text around") << "%.0f dB" << -1.0 << 0.0 << "-64 dB";
}

void TestTextSliderTyping::valueIsShownByTheFormula()
{
    QFETCH(QString, format);
    QFETCH(double, multiplier);
    QFETCH(double, offset);
    m_slider->setFormat(format);
    m_slider->setMultiplier(multiplier);
    m_slider->setOffset(offset);
    m_slider->setDirectEdit(true);
    static_cast<void>(m_slider->grab());
    // The field for typing begins with the text shown.
    sendMouse(*m_slider, QEvent::MouseButtonDblClick, centreOf(*m_slider), Qt::LeftButton, Qt::LeftButton);
    QTEST(m_slider->lineEdit()->text(), "text");
}

void TestTextSliderTyping::nothingIsDrawnBehindTheEditField()
{
    const auto ownFace = [this] {
        QImage image(m_slider->size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        m_slider->render(&image, QPoint(), QRegion(), QWidget::RenderFlags());
        return image;
    };
    QImage empty = ownFace();
    empty.fill(Qt::transparent);
    QVERIFY(ownFace() != empty);
    m_slider->setDirectEdit(true);
    sendMouse(*m_slider, QEvent::MouseButtonDblClick, centreOf(*m_slider), Qt::LeftButton, Qt::LeftButton);
    QVERIFY(m_slider->lineEdit()->isVisible());
    QCOMPARE(ownFace(), empty);
}

void TestTextSliderTyping::type(const QString& text)
{
    m_slider->setDirectEdit(true);
    sendMouse(*m_slider, QEvent::MouseButtonDblClick, centreOf(*m_slider), Qt::LeftButton, Qt::LeftButton);
    QVERIFY(m_slider->lineEdit()->hasFocus());
    // Replaces the old text, which is selected.
    QTest::keyClicks(m_slider->lineEdit(), text);
}

void TestTextSliderTyping::typedNumberIsSetByTheFormula_data()
{
    QTest::addColumn<double>("multiplier");
    QTest::addColumn<double>("offset");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<int>("value");
    QTest::newRow("plain") << 1.0 << 0.0 << "12" << 12;
    QTest::newRow("offset 1: 64 gives 63") << 1.0 << 1.0 << "64" << 63;
    QTest::newRow("cut toward zero") << 0.5 << 0.0 << "12.3" << 24;
    QTest::newRow("the offset is taken off after the division") << 2.0 << 3.0 << "20" << 7;
    QTest::newRow("above the range") << 1.0 << 0.0 << "200" << 127;
    QTest::newRow("below the range") << 1.0 << 0.0 << "-5" << 0;
    QTest::newRow("the value it has") << 1.0 << 0.0 << "64" << 64;
}

void TestTextSliderTyping::typedNumberIsSetByTheFormula()
{
    QFETCH(double, multiplier);
    QFETCH(double, offset);
    QFETCH(QString, typed);
    m_slider->setMultiplier(multiplier);
    m_slider->setOffset(offset);
    QSignalSpy actions(m_slider, &QAbstractSlider::actionTriggered);
    type(typed);
    QTest::keyClick(m_slider->lineEdit(), Qt::Key_Return);
    QTEST(m_slider->value(), "value");
    QCOMPARE(actions.count(), 1);
    QCOMPARE(actions.at(0).at(0).toInt(), static_cast<int>(QAbstractSlider::SliderNoAction));
    QVERIFY(!m_slider->lineEdit()->isVisible());
    QVERIFY(m_slider->hasFocus());
}

void TestTextSliderTyping::textThatIsNoNumberLeavesTheValueAndClosesTheField()
{
    QSignalSpy actions(m_slider, &QAbstractSlider::actionTriggered);
    type(QStringLiteral("12"));
    m_slider->lineEdit()->setText(QStringLiteral("12 dB"));
    m_slider->acceptEdit();
    QCOMPARE(m_slider->value(), 64);
    QCOMPARE(actions.count(), 0);
    QVERIFY(!m_slider->lineEdit()->isVisible());
    QVERIFY(m_slider->hasFocus());
}

void TestTextSliderTyping::hugeNumberAndZeroMultiplierAreHarmless()
{
    m_slider->lineEdit()->setText(QStringLiteral("1e300"));
    m_slider->acceptEdit();
    QCOMPARE(m_slider->value(), 127);
    m_slider->setMultiplier(0.0);
    m_slider->lineEdit()->setText(QStringLiteral("-1"));
    m_slider->acceptEdit();
    QCOMPARE(m_slider->value(), 0);
    m_slider->setValue(64);
    m_slider->lineEdit()->setText(QStringLiteral("0"));
    m_slider->acceptEdit();
    QCOMPARE(m_slider->value(), 64);
}

void TestTextSliderTyping::escapeAbortsTyping()
{
    QSignalSpy actions(m_slider, &QAbstractSlider::actionTriggered);
    type(QStringLiteral("12"));
    QTest::keyClick(m_slider->lineEdit(), Qt::Key_Escape);
    QCOMPARE(m_slider->value(), 64);
    QCOMPARE(actions.count(), 0);
    QVERIFY(!m_slider->lineEdit()->isVisible());
    QVERIFY(m_slider->hasFocus());
}

void TestTextSliderTyping::acceptAfterAbortChangesNothing()
{
    type(QStringLiteral("12"));
    m_slider->abortEdit();
    m_slider->lineEdit()->setText(QStringLiteral("12"));
    m_slider->acceptEdit();
    QCOMPARE(m_slider->value(), 64);
    // The next edit is a new one.
    type(QStringLiteral("13"));
    QTest::keyClick(m_slider->lineEdit(), Qt::Key_Return);
    QCOMPARE(m_slider->value(), 13);
}

void TestTextSliderTyping::clickOnAnotherSliderEndsTypingAndKeepsTheFocus()
{
    auto* other = new CTextSlider(m_window.get());
    other->setGeometry(50, 100, 73, 15);
    other->setRange(0, 127);
    other->setValue(30);
    other->show();
    type(QStringLiteral("12"));
    const QPoint there = other->geometry().center();
    QTest::mousePress(m_window->windowHandle(), Qt::LeftButton, {}, there);
    QCOMPARE(m_slider->value(), 12);
    QVERIFY(!m_slider->lineEdit()->isVisible());
    QVERIFY(other->hasFocus());
    // A message box during the drag shows the pointer again.
    QMessageBox box(m_window.get());
    bool isPointerShown = false;
    QTimer::singleShot(0, &box, [&] {
        isPointerShown = QApplication::overrideCursor() == nullptr;
        box.accept();
    });
    box.exec();
    QVERIFY(isPointerShown);
    QTest::mouseRelease(m_window->windowHandle(), Qt::LeftButton, {}, there);
    m_window->activateWindow();
    QTRY_VERIFY(other->hasFocus());
    const int value = other->value();
    QTest::keyClick(m_window->windowHandle(), Qt::Key_Up);
    QCOMPARE(other->value(), value + 1);
    QCOMPARE(m_slider->value(), 12);
}

void TestTextSliderTyping::clickOnTheSliderItselfEndsTyping()
{
    // Its spin button beside the field, or whatever else of it the field does not cover.
    type(QStringLiteral("12"));
    m_slider->setFocus(Qt::MouseFocusReason);
    QCOMPARE(m_slider->value(), 12);
    QVERIFY(!m_slider->lineEdit()->isVisible());
    QVERIFY(m_slider->hasFocus());
}

void TestTextSliderTyping::windowChangeEndsTypingAndLeavesTheFocusToTheSlider()
{
    type(QStringLiteral("12"));
    QWidget other;
    other.setGeometry(400, 20, 50, 50);
    QVERIFY(showActive(other));
    QCOMPARE(m_slider->value(), 12);
    QVERIFY(!m_slider->lineEdit()->isVisible());
    other.hide();
    m_window->activateWindow();
    QTRY_VERIFY(m_slider->hasFocus());
}

void TestTextSliderTyping::returnInAnEmptiedFieldClosesItAndKeepsTheValue()
{
    QSignalSpy actions(m_slider, &QAbstractSlider::actionTriggered);
    type(QString());
    QTest::keyClick(m_slider->lineEdit(), Qt::Key_Delete);
    QCOMPARE(m_slider->lineEdit()->text(), QString());
    QTest::keyClick(m_slider->lineEdit(), Qt::Key_Return);
    QCOMPARE(m_slider->value(), 64);
    QCOMPARE(actions.count(), 0);
    QVERIFY(!m_slider->lineEdit()->isVisible());
    QVERIFY(m_slider->hasFocus());
}

void TestTextSliderTyping::rightClickInAnEmptiedFieldKeepsItOpen()
{
    static_cast<void>(m_slider->grab());
    type(QString());
    QTest::keyClick(m_slider->lineEdit(), Qt::Key_Delete);
    bool wasOpen = false;
    QTimer::singleShot(0, m_slider, [&] {
        QWidget* menu = QApplication::activePopupWidget();
        wasOpen = menu != nullptr && m_slider->lineEdit()->isVisible();
        QTest::keyClick(menu, Qt::Key_Escape);
    });
    const QPoint at = m_slider->geometry().center();
    QTest::mousePress(m_window->windowHandle(), Qt::RightButton, {}, at);
    QTest::mouseRelease(m_window->windowHandle(), Qt::RightButton, {}, at);
    QVERIFY(wasOpen);
    QVERIFY(m_slider->lineEdit()->hasFocus());
    QTest::keyClicks(m_slider->lineEdit(), QStringLiteral("7"));
    QTest::keyClick(m_slider->lineEdit(), Qt::Key_Return);
    QCOMPARE(m_slider->value(), 7);
}

void TestTextSliderTyping::fieldTakesOverTheSlidersLook()
{
    m_slider->setAlignment(Qt::AlignCenter);
    m_slider->setEditMaxLength(2);
    static_cast<void>(m_slider->grab());
    type(QString());
    const CLineEdit* field = m_slider->lineEdit();
    QCOMPARE(field->geometry(), m_slider->rect());
    QCOMPARE(field->alignment(), Qt::AlignCenter);
    QCOMPARE(field->maxLength(), 2);
    QCOMPARE(field->selectedText(), QStringLiteral("64"));
    QTest::keyClicks(m_slider->lineEdit(), QStringLiteral("123"));
    QCOMPARE(field->text(), QStringLiteral("12"));
}

void TestTextSliderTyping::fieldAcceptsWholeNumbersUnlessTheFormulaHasFractions_data()
{
    QTest::addColumn<double>("multiplier");
    QTest::addColumn<double>("offset");
    QTest::addColumn<bool>("whole");
    QTest::newRow("both whole") << 2.0 << -1.0 << true;
    QTest::newRow("fraction in the multiplier") << 0.5 << 1.0 << false;
    QTest::newRow("fraction in the offset") << 1.0 << 0.25 << false;
}

void TestTextSliderTyping::fieldAcceptsWholeNumbersUnlessTheFormulaHasFractions()
{
    QFETCH(double, multiplier);
    QFETCH(double, offset);
    QFETCH(bool, whole);
    m_slider->setMultiplier(multiplier);
    m_slider->setOffset(offset);
    type(QString());
    const QValidator* validator = m_slider->lineEdit()->validator();
    QCOMPARE(qobject_cast<const QIntValidator*>(validator) != nullptr, whole);
    QCOMPARE(qobject_cast<const QDoubleValidator*>(validator) != nullptr, !whole);
}

void TestTextSliderTyping::doubleClickIsIgnored_data()
{
    QTest::addColumn<bool>("directEdit");
    QTest::addColumn<Qt::MouseButton>("button");
    QTest::addColumn<QPoint>("offset"); // from the top left corner
    QTest::newRow("without direct editing") << false << Qt::LeftButton << QPoint(5, 5);
    QTest::newRow("with another button") << true << Qt::RightButton << QPoint(5, 5);
    QTest::newRow("outside the slider") << true << Qt::LeftButton << QPoint(5, -1);
}

void TestTextSliderTyping::doubleClickIsIgnored()
{
    QFETCH(bool, directEdit);
    QFETCH(Qt::MouseButton, button);
    QFETCH(QPoint, offset);
    m_slider->setDirectEdit(directEdit);
    QCOMPARE(m_slider->directEdit(), directEdit);
    sendMouse(*m_slider, QEvent::MouseButtonDblClick, topLeft() + offset, button, button);
    QVERIFY(m_slider->lineEdit()->isHidden());
}

KTZ_TEST(QApplication, TestTextSliderTyping)
#include "TestTextSliderTyping.moc"
