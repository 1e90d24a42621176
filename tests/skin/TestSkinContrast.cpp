#include "device/DeviceParams.h"
#include "style/CAboutView.h"
#include "tests/skin/CSkinScenes.h"
#include "tests/skin/TextContrast.h"
#include "tests/support/CTestCase.h"
#include "widgets/CLineEdit.h"
#include "widgets/CSpinButton.h"
#include "widgets/CTextSlider.h"

#include <QLabel>
#include <QListView>
#include <QMenu>
#include <QPushButton>
#include <QStringListModel>
#include <QTreeView>

namespace
{
constexpr double k_readable = 4.5;
constexpr double k_drawing = 3; ///< the bars of an LED type, each against the line that it stands on
/// What the editor's colours give a disabled entry: it need not be read, but seen, and seen to be disabled.
constexpr double k_seen = 1.7;
/// The entry of the bar whose menu is open, or that the pointer is on, is cyan on white. These two are given colours;
/// the entry has been read before, in black.
constexpr double k_openBarEntry = 1.5;

/// The same area in the coordinates of a window around the widget.
QRect inWindow(const QWidget* widget, const QRect& area)
{
    return {widget->mapTo(widget->window(), area.topLeft()), area.size()};
}

/// Where a text centred in an area is, without the font's empty rows.
QRect centredText(const QWidget* widget, const QRect& area, const QString& text)
{
    QRect tight = QFontMetrics(widget->font()).boundingRect(text);
    tight.moveCenter(area.center());
    return tight;
}
} // namespace

/// The contrast of everything that the editor writes, measured in pictures of its real widgets at device pixel ratio 1.
class TestSkinContrast : public CTestCase
{
    Q_OBJECT

  private slots:
    void initTestCase();
    void textIsReadable_data();
    void textIsReadable();

  private:
    struct Text
    {
        QString name;
        QImage picture;
        QRect area;
        double least;
    };

    void add(const QString& name, const QImage& picture, const QRect& area, double least = k_readable);
    void addPrint(const QImage& window);
    void addValues(const CSkinScenes& editor);
    void addEditing(CSkinScenes& editor);
    void addMenuBar(const CSkinScenes& editor, const QString& state, double least);
    void addMenus(CSkinScenes& editor);
    void addMenu(const QString& name, QMenu* menu);
    void addContextMenus(CSkinScenes& editor);
    void addLines(const QString& name, const CSkinScenes& editor, const QWidget* view);
    void addMessageBoxes(const CSkinScenes& editor);
    void addItemView(const QString& name, QAbstractItemView& view);

    QList<Text> m_texts;
};

void TestSkinContrast::initTestCase()
{
    {
        CSkinScenes editor;
        const CMainWindow& window = editor.startSplash();
        addLines(QStringLiteral("splash"), editor, window.findChild<CSplashView*>());
    }
    {
        CSkinScenes editor;
        const CMainWindow& window = editor.startOnline();
        addPrint(editor.picture());
        addValues(editor);
        addMenuBar(editor, QStringLiteral("enabled"), k_readable);
        addMenus(editor);
        addContextMenus(editor);
        addEditing(editor);
        addMessageBoxes(editor);
        editor.openAbout();
        addLines(QStringLiteral("about"), editor, window.findChild<CAboutView*>());
        addMenuBar(editor, QStringLiteral("disabled"), k_seen);
    }
    QListView list;
    list.setObjectName(QStringLiteral("CPopupListWidget"));
    addItemView(QStringLiteral("popup list"), list);
    QTreeView tree;
    tree.setObjectName(QStringLiteral("CPopupTreeWidget"));
    tree.setHeaderHidden(true);
    addItemView(QStringLiteral("popup tree"), tree);
}

void TestSkinContrast::add(const QString& name, const QImage& picture, const QRect& area, double least)
{
    m_texts.append({name, picture, area, least});
}

void TestSkinContrast::addPrint(const QImage& window)
{
    for (int knob = 0; knob < 8; ++knob) {
        const QPoint page(23 + 103 * (knob % 4), 58 + 283 * (knob / 4));
        add(QStringLiteral("number of knob %1").arg(knob), window, QRect(page + QPoint(38, 76), QSize(12, 8)));
        for (const QRect& field : {k_ledTypeRect, k_ccNumRect, k_midiChRect, k_maxRect, k_minRect})
            add(QStringLiteral("knob %1, caption at %2").arg(knob).arg(field.y()), window,
                QRect(page + field.topLeft() - QPoint(0, 10), QSize(field.width(), 6)));
    }
    add(QStringLiteral("online caption"), window, QRect(398, 27, 38, 6));
    // Of the wordmark a letter without slants, whose smoothed edges would count.
    add(QStringLiteral("wordmark"), window, QRect(23 + 29, 645, 21, 22));
    add(QStringLiteral("foot, first line"), window, QRect(320, 649, 103, 6));
    add(QStringLiteral("foot, second line"), window, QRect(380, 661, 43, 6));
}

void TestSkinContrast::addValues(const CSkinScenes& editor)
{
    const QImage picture = editor.picture();
    for (int knob = 0; knob < 8; ++knob) {
        for (const int category : {k_ccNumCategory, k_midiChCategory, k_maxCategory, k_minCategory}) {
            const auto* slider = qobject_cast<CTextSlider*>(editor.slider(category + knob));
            add(QStringLiteral("value of %1").arg(category + knob), picture,
                inWindow(slider, centredText(slider, slider->rect(), QStringLiteral("888"))));
        }
        const QWidget* types = editor.slider(k_ledTypeCategory + knob);
        add(QStringLiteral("LED type of knob %1").arg(knob), picture, inWindow(types, types->rect()), k_drawing);
    }
}

void TestSkinContrast::addEditing(CSkinScenes& editor)
{
    auto* slider = qobject_cast<CTextSlider*>(editor.slider(k_maxCategory));
    QTest::mouseDClick(slider, Qt::LeftButton);
    CLineEdit* field = slider->lineEdit();
    const QRect area = inWindow(field, centredText(field, field->rect(), field->text()));
    add(QStringLiteral("number being typed, selected"), editor.picture(), area);
    field->deselect();
    add(QStringLiteral("number being typed"), editor.picture(), area);
    editor.whileOpen(
        [field] {
            QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(), field->mapToGlobal(QPoint()));
            QApplication::sendEvent(field, &event);
        },
        [this](QWidget* menu) { addMenu(QStringLiteral("menu of the typed number"), qobject_cast<QMenu*>(menu)); });
    QTest::keyClick(field, Qt::Key_Escape);
}

void TestSkinContrast::addMenuBar(const CSkinScenes& editor, const QString& state, double least)
{
    const QImage picture = editor.picture();
    const QMenuBar* bar = editor.menuBar();
    for (QAction* entry : bar->actions())
        add(QStringLiteral("menu bar, %1, %2").arg(entry->text(), state), picture,
            inWindow(bar, bar->actionGeometry(entry)), least);
}

void TestSkinContrast::addMenus(CSkinScenes& editor)
{
    const QMenuBar* bar = editor.menuBar();
    for (QAction* entry : bar->actions()) {
        QMenu* menu = editor.openMenu(entry->text());
        add(QStringLiteral("menu bar, %1, open").arg(entry->text()), editor.picture(),
            inWindow(bar, bar->actionGeometry(entry)), k_openBarEntry);
        addMenu(entry->text(), menu);
        menu->close();
    }
}

void TestSkinContrast::addMenu(const QString& name, QMenu* menu)
{
    const auto actions = menu->actions();
    for (QAction* action : actions) {
        if (action->isSeparator())
            continue;
        const QString label = QStringLiteral("%1, %2, ").arg(name, action->text().section(u'\t', 0, 0));
        const QRect area = menu->actionGeometry(action);
        menu->setActiveAction(nullptr);
        if (action->isEnabled())
            add(label + QStringLiteral("enabled"), CSkinScenes::pictureOf(menu), area);
        else
            add(label + QStringLiteral("disabled"), CSkinScenes::pictureOf(menu), area, k_seen);
        menu->setActiveAction(action);
        add(label + (action->isEnabled() ? QStringLiteral("selected") : QStringLiteral("selected though disabled")),
            CSkinScenes::pictureOf(menu), area, action->isEnabled() ? k_readable : k_seen);
    }
}

void TestSkinContrast::addContextMenus(CSkinScenes& editor)
{
    editor.whileOpen([&editor] { editor.page(0)->showContextMenu(editor.window->mapToGlobal(QPoint(50, 100))); },
                     [this](QWidget* menu) { addMenu(QStringLiteral("context menu"), qobject_cast<QMenu*>(menu)); });
}

void TestSkinContrast::addLines(const QString& name, const CSkinScenes& editor, const QWidget* view)
{
    const QImage picture = editor.picture();
    const QFontMetrics metrics(view->font());
    for (const auto& [text, baseline] :
         {std::pair{k_editorName, k_editorNamePos}, {k_version, k_versionPos}, {k_copyright, k_copyrightPos}})
        add(QStringLiteral("%1, %2").arg(name, text), picture,
            inWindow(view, metrics.tightBoundingRect(text).translated(baseline)));
}

void TestSkinContrast::addMessageBoxes(const CSkinScenes& editor)
{
    const QStringList texts{k_checkSave,     k_fileExists,   k_openError,   k_saveError,
                            k_revertMessage, k_resetMessage, k_errorManual, k_connectionErrorMessage};
    for (const QString& text : texts) {
        editor.whileOpen([&] { editor.openMessageBox(text); },
                         [&, this](QWidget* box) {
                             const QImage picture = CSkinScenes::pictureOf(box);
                             const auto* label = box->findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
                             add(QStringLiteral("box \"%1\"").arg(text), picture, inWindow(label, label->rect()));
                             const auto buttons = box->findChildren<QPushButton*>();
                             for (const QPushButton* button : buttons)
                                 add(QStringLiteral("box \"%1\", %2").arg(text, button->text()), picture,
                                     inWindow(button, centredText(button, button->rect(), button->text())));
                         });
    }
}

void TestSkinContrast::addItemView(const QString& name, QAbstractItemView& view)
{
    QStringListModel model({QStringLiteral("Ascent"), QStringLiteral("Descend")});
    view.setModel(&model);
    QApplication::style()->polish(&view);
    view.setCurrentIndex(model.index(1));
    view.resize(120, 60);
    const QImage picture = CSkinScenes::pictureOf(&view);
    for (const auto& [row, state] : {std::pair{0, "normal"}, {1, "selected"}}) {
        const QRect area = view.visualRect(model.index(row)).translated(view.viewport()->pos());
        add(QStringLiteral("%1, %2").arg(name, QLatin1String(state)), picture, area);
    }
}

void TestSkinContrast::textIsReadable_data()
{
    QTest::addColumn<QImage>("picture");
    QTest::addColumn<QRect>("area");
    QTest::addColumn<double>("least");
    for (const Text& text : std::as_const(m_texts))
        QTest::newRow(qPrintable(text.name.simplified())) << text.picture << text.area << text.least;
}

void TestSkinContrast::textIsReadable()
{
    QFETCH(QImage, picture);
    QFETCH(QRect, area);
    QFETCH(double, least);
    const TextContrast contrast = TextContrast::measure(picture, area);
    QVERIFY2(contrast.textPixels > 0, "there is no text");
    QVERIFY2(contrast.ratio >= least,
             qPrintable(QStringLiteral("%1 : 1, %2 on %3")
                            .arg(contrast.ratio)
                            .arg(QColor(contrast.text).name(), QColor(contrast.ground).name())));
}

KTZ_TEST_MAIN(TestSkinContrast)(int argc, char** argv)
{
    CSkinScenes::prepareProcess();
    QApplication application(argc, argv);
    TestSkinContrast test;
    return QTest::qExec(&test, argc, argv);
}
#include "TestSkinContrast.moc"
