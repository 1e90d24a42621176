#include "app/common/CMessageBox.h"
#include "app/common/Constants.h"
#include "app/common/SkinPixmap.h"
#include "app/common/Utilities.h"
#include "tests/support/CMessageBoxAnswer.h"
#include "tests/support/CTestCase.h"

#include <QAccessible>
#include <QLabel>
#include <QPushButton>
#include <QTimer>

namespace
{
/// Shows a box with one of the editor's texts, calls look(box) while it is open, and closes it.
template <class Look> void whileOpen(QMessageBox::Icon icon, const QString& text, const Look& look)
{
    QTimer::singleShot(0, [&look] {
        QWidget* box = QApplication::activeModalWidget();
        look(box);
        box->close();
    });
    CMessageBox::showMessageBox(nullptr, icon, QString(), text, QMessageBox::Yes | QMessageBox::No, QMessageBox::No);
}
} // namespace

class TestMessageBox : public CTestCase
{
    Q_OBJECT

  private slots:
    void texts_data();
    void texts();
    void questionShowsWhatItIsGiven();
    void warningShowsWhatItIsGiven();
    void returnAnswersNoWhenNoIsTheDefault();
    void yesAnswersYes();
    void closedBoxIsNoYes();
    void longestLineStaysWhole();
    void skinIconTakesThePlaceOfTheDesktops_data();
    void skinIconTakesThePlaceOfTheDesktops();
    void buttonsShowTextAlone();
    void textIsShownAsItStands_data();
    void textIsShownAsItStands();
    void isToldByTitleOrText_data();
    void isToldByTitleOrText();
};

void TestMessageBox::texts_data()
{
    QTest::addColumn<QString>("constant");
    QTest::addColumn<QString>("text");
    QTest::newRow("unsaved changes") << k_checkSave << "The parameter is modified.\r\nSave?";
    QTest::newRow("existing file") << k_fileExists.arg("a.CJX")
                                   << "\"a.CJX\" already exists.\r\nThe data will be overwritten.\r\nContinue?";
    QTest::newRow("open failed") << k_openError << "Failed to open the data.";
    QTest::newRow("save failed") << k_saveError << "Failed to save.";
    QTest::newRow("revert title") << k_revertTitle << "";
    QTest::newRow("revert") << k_revertMessage
                            << "All parameters will be restored to their initial state.\r\nContinue?";
    QTest::newRow("reset title") << k_resetTitle << "";
    QTest::newRow("reset") << k_resetMessage
                           << "All the current parameters will be restored to the factory settings.\r\nContinue?";
    QTest::newRow("manual") << k_errorManual << "Failed to open the manual.";
    QTest::newRow("lost connection title") << k_connectionErrorTitle << "";
    QTest::newRow("lost connection") << k_connectionErrorMessage
                                     << "Lost the connection.\r\nPlease connect the device properly to the computer, "
                                        "and restart this editor.";
    QTest::newRow("editor name") << k_editorName << "KTZ-JX";
    QTest::newRow("version") << k_version << "KTZ-JX ZANDO_CONTROLLER Editor Ver." KTZ_PROJECT_VERSION;
    QTest::newRow("device") << k_jxPortName << "Trellwick KTZ-JX";
    QTest::newRow("editor port") << k_jxEditorPortName << "Trellwick KTZ-JX Port3";
    QTest::newRow("7 point font") << k_fontGLT7Bold << "Morlan GLT7 Bold";
    QTest::newRow("8 point font") << k_fontGLT8 << "Morlan GLT8 Regular";
    QTest::newRow("10 point font") << k_fontGLT10Bold << "Morlan GLT10 Bold";
    QTest::newRow("copied knob") << k_mimeType_Knob << "application/x-morlan-ktz-jx-konb";
    QTest::newRow("copied CC number") << k_mimeType_CCNum << "application/x-morlan-ktz-jx-ccnum";
    QTest::newRow("copied MIDI channel") << k_mimeType_MIDICh << "application/x-morlan-ktz-jx-midich";
    QTest::newRow("copied maximum") << k_mimeType_Max << "application/x-morlan-ktz-jx-max";
    QTest::newRow("copied minimum") << k_mimeType_Min << "application/x-morlan-ktz-jx-min";
    QTest::newRow("copied LED type") << k_mimeType_LEDType << "application/x-morlan-ktz-jx-led-type";
}

void TestMessageBox::texts()
{
    QFETCH(QString, constant);
    QFETCH(QString, text);
    QCOMPARE(constant, text);
}

void TestMessageBox::questionShowsWhatItIsGiven()
{
    CMessageBoxAnswer answer(QMessageBox::No);
    QWidget parent;
    QCOMPARE(
        CMessageBox::question(&parent, QString(), k_revertMessage, QMessageBox::Yes | QMessageBox::No, QMessageBox::No),
        int(QMessageBox::No));
    QCOMPARE(answer.boxes().size(), 1);
    const CMessageBoxAnswer::Box& box = answer.boxes().first();
    QCOMPARE(box.icon, QMessageBox::Question);
    QCOMPARE(box.title, QString());
    QCOMPARE(box.text, k_revertMessage);
    QCOMPARE(box.buttons, QMessageBox::Yes | QMessageBox::No);
    QCOMPARE(box.defaultButton, QMessageBox::No);
    QCOMPARE(box.buttonWidths, (QList<int>{90, 90}));
    QCOMPARE(box.parent, &parent);
}

void TestMessageBox::warningShowsWhatItIsGiven()
{
    CMessageBoxAnswer answer(QMessageBox::Ok);
    QCOMPARE(CMessageBox::warning(nullptr, QStringLiteral("Save file"), k_saveError, QMessageBox::Ok, QMessageBox::Ok),
             int(QMessageBox::Ok));
    const CMessageBoxAnswer::Box& box = answer.boxes().first();
    QCOMPARE(box.icon, QMessageBox::Warning);
    QCOMPARE(box.title, QStringLiteral("Save file"));
    QCOMPARE(box.buttonWidths, QList<int>{90});
}

void TestMessageBox::returnAnswersNoWhenNoIsTheDefault()
{
    QTimer::singleShot(0, [] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Return); });
    QCOMPARE(
        CMessageBox::question(nullptr, QString(), k_resetMessage, QMessageBox::Yes | QMessageBox::No, QMessageBox::No),
        int(QMessageBox::No));
}

void TestMessageBox::yesAnswersYes()
{
    CMessageBoxAnswer answer(QMessageBox::Yes);
    QCOMPARE(
        CMessageBox::question(nullptr, QString(), k_resetMessage, QMessageBox::Yes | QMessageBox::No, QMessageBox::No),
        int(QMessageBox::Yes));
}

void TestMessageBox::closedBoxIsNoYes()
{
    QTimer::singleShot(0, [] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape); });
    QVERIFY(CMessageBox::question(nullptr, QString(), k_resetMessage, QMessageBox::Yes | QMessageBox::No,
                                  QMessageBox::Yes) != QMessageBox::Yes);
}

void TestMessageBox::longestLineStaysWhole()
{
    Q_INIT_RESOURCE(common_images);
    QVERIFY(Utilities::registerSkinFonts());
    const QFont desktopFont = QApplication::font();
    QFont font(k_fontGLT10Bold); // in which the line is longer than a box is by itself
    font.setPixelSize(12);
    QApplication::setFont(font);
    QRect label;
    whileOpen(QMessageBox::Warning, k_connectionErrorMessage, [&](const QWidget* box) {
        label = box->findChild<QLabel*>(QStringLiteral("qt_msgbox_label"))->geometry();
    });
    QApplication::setFont(desktopFont);
    const QSize text = QFontMetrics(font).size(0, k_connectionErrorMessage);
    QVERIFY(text.width() > 500);
    QVERIFY(label.width() >= text.width());
    QVERIFY(label.height() < text.height() * 3 / 2); // two lines, not three
}

void TestMessageBox::skinIconTakesThePlaceOfTheDesktops_data()
{
    QTest::addColumn<QMessageBox::Icon>("icon");
    QTest::addColumn<QString>("picture");
    QTest::newRow("question") << QMessageBox::Question << ":/images/ktz_box_question.png";
    QTest::newRow("warning") << QMessageBox::Warning << ":/images/ktz_box_warning.png";
}

void TestMessageBox::skinIconTakesThePlaceOfTheDesktops()
{
    QFETCH(QMessageBox::Icon, icon);
    QFETCH(QString, picture);
    const QImage expected = skinPixmap(picture).toImage();
    QVERIFY(!expected.isNull());
    QImage shown;
    whileOpen(icon, k_saveError, [&](const QWidget* box) {
        shown = box->findChild<QLabel*>(QStringLiteral("qt_msgboxex_icon_label"))->pixmap().toImage();
    });
    QCOMPARE(shown, expected);
}

void TestMessageBox::textIsShownAsItStands_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("tags") << "a<b>bold</b>.CJX";
    QTest::newRow("tags at the name's begin") << "<h1>big</h1>.CJX";
    QTest::newRow("entity") << "a&lt;b.CJX";
}

/// The text takes as much room as its letters do: tags would vanish, and a heading would be larger.
void TestMessageBox::textIsShownAsItStands()
{
    QFETCH(QString, name);
    const QString text = k_fileExists.arg(name);
    QSize needed;
    QSize letters;
    whileOpen(QMessageBox::Question, text, [&](const QWidget* box) {
        const auto* label = box->findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
        needed = label->sizeHint();
        QLabel plain(text);
        plain.setTextFormat(Qt::PlainText);
        plain.setFont(label->font());
        plain.setContentsMargins(label->contentsMargins());
        plain.setWordWrap(label->wordWrap());
        plain.setMinimumWidth(label->minimumWidth());
        letters = plain.sizeHint();
    });
    QCOMPARE(needed, letters);
}

void TestMessageBox::buttonsShowTextAlone()
{
    whileOpen(QMessageBox::Question, k_checkSave, [](const QWidget* box) {
        const auto buttons = box->findChildren<QPushButton*>();
        QCOMPARE(buttons.size(), 2);
        for (const QPushButton* button : buttons)
            QVERIFY(button->icon().isNull());
    });
}

void TestMessageBox::isToldByTitleOrText_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("name");
    QTest::newRow("title") << k_saveDialogTitle << k_saveDialogTitle;
    QTest::newRow("no title") << QString() << k_saveError;
}

// To a screen reader; one without a name would be passed over.
void TestMessageBox::isToldByTitleOrText()
{
    QFETCH(QString, title);
    QAccessible::Role role{};
    QString name;
    QStringList parts;
    QTimer::singleShot(0, [&] {
        QWidget* box = QApplication::activeModalWidget();
        const QAccessibleInterface* told = QAccessible::queryAccessibleInterface(box);
        role = told->role();
        name = told->text(QAccessible::Name);
        for (int i = 0; i < told->childCount(); ++i)
            parts.append(told->child(i)->text(QAccessible::Name));
        box->close();
    });
    CMessageBox::warning(nullptr, title, k_saveError, QMessageBox::Ok, QMessageBox::Ok);
    QCOMPARE(role, QAccessible::AlertMessage);
    QTEST(name, "name");
    QVERIFY(parts.contains(k_saveError));
}

KTZ_TEST(QApplication, TestMessageBox)
#include "TestMessageBox.moc"
