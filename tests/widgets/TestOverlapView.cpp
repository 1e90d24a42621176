#include "tests/support/CTestCase.h"
#include "tests/widgets/ActiveWindow.h"
#include "widgets/COverlapView.h"

#include <QAction>

namespace
{
/// A main window that records its locks.
class CLockedWindow : public QWidget
{
    Q_OBJECT

  public:
    QStringList* m_log = nullptr; ///< borrowed, outlives the window

  public slots:
    void windowLock()
    {
        m_log->append(QStringLiteral("lock"));
    }

    void windowUnlock()
    {
        m_log->append(QStringLiteral("unlock"));
    }
};

class CCountingView : public COverlapView
{
    Q_OBJECT

  public:
    using COverlapView::COverlapView;
    int m_triggered = 0;

  public slots:
    void count()
    {
        ++m_triggered;
    }
};
} // namespace

class TestOverlapView : public CTestCase
{
    Q_OBJECT

  private slots:
    void windowIsLockedWhileTheViewLives();
    void twoViewsLockTwice();
    void viewTakesTheFocus();
    void windowMayGoWithItsViews();
    void nullSlotAddsNoShortcut();
    void shortcutsAreSwitchedTogether();
};

void TestOverlapView::windowIsLockedWhileTheViewLives()
{
    QStringList log;
    CLockedWindow window;
    window.m_log = &log;
    auto view = std::make_unique<COverlapView>(&window, &window);
    QCOMPARE(view->parentWidget(), &window);
    QVERIFY(!view->isWindow());
    QCOMPARE(log, QStringList({"lock"}));
    view.reset();
    QCOMPARE(log, QStringList({"lock", "unlock"}));
}

void TestOverlapView::twoViewsLockTwice()
{
    QStringList log;
    CLockedWindow window;
    window.m_log = &log;
    auto first = std::make_unique<COverlapView>(&window, &window);
    auto second = std::make_unique<COverlapView>(&window, &window);
    QCOMPARE(log, QStringList({"lock", "lock"}));
    first.reset();
    QCOMPARE(log, QStringList({"lock", "lock", "unlock"}));
    second.reset();
    QCOMPARE(log, QStringList({"lock", "lock", "unlock", "unlock"}));
}

void TestOverlapView::viewTakesTheFocus()
{
    QStringList log;
    CLockedWindow window;
    window.m_log = &log;
    QWidget field(&window);
    QVERIFY(showActive(window));
    field.setFocus();
    COverlapView view(&window, &window);
    view.show();
    QTRY_VERIFY(view.hasFocus());
}

void TestOverlapView::windowMayGoWithItsViews()
{
    QStringList log;
    auto window = std::make_unique<CLockedWindow>();
    window->m_log = &log;
    const QPointer<COverlapView> view = new COverlapView(window.get(), window.get());
    window.reset();
    QVERIFY(view.isNull());
    QCOMPARE(log, QStringList({"lock"}));
}

void TestOverlapView::nullSlotAddsNoShortcut()
{
    QStringList log;
    CLockedWindow window;
    window.m_log = &log;
    COverlapView view(&window, &window);
    view.installShortcut(QStringLiteral("Ctrl+O"), nullptr);
    QVERIFY(view.actions().isEmpty());
    QVERIFY(view.findChildren<QAction*>().isEmpty());
}

void TestOverlapView::shortcutsAreSwitchedTogether()
{
    QStringList log;
    CLockedWindow window;
    window.m_log = &log;
    CCountingView view(&window, &window);
    view.installShortcut(QStringLiteral("Ctrl+O"), SLOT(count()));
    view.installShortcut(QStringLiteral("F1"), SLOT(count()));
    QCOMPARE(view.actions().size(), 2);
    QCOMPARE(view.findChildren<QAction*>(), view.actions());
    QCOMPARE(view.actions().first()->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_O));
    QVERIFY(showActive(window));
    const auto pressBoth = [&view] {
        QTest::keyClick(&view, Qt::Key_O, Qt::ControlModifier);
        QTest::keyClick(&view, Qt::Key_F1);
    };
    pressBoth();
    QCOMPARE(view.m_triggered, 2);
    view.disableShortcut();
    pressBoth();
    QCOMPARE(view.m_triggered, 2);
    view.enableShortcut();
    pressBoth();
    QCOMPARE(view.m_triggered, 4);
}

KTZ_TEST(QApplication, TestOverlapView)
#include "TestOverlapView.moc"
