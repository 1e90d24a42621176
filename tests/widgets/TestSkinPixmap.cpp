#include "app/common/SkinPixmap.h"
#include "tests/support/CTestCase.h"

#include <QGuiApplication>
#include <QTemporaryDir>

class TestSkinPixmap : public CTestCase
{
    Q_OBJECT

  private slots:
    void initTestCase();
    void variantFitsTheScreen_data();
    void variantFitsTheScreen();
    void missingVariantsFallBackToTheNextOne();
    void missingPictureIsNull();
    void withoutARatioTheDensestScreenCounts();

  private:
    void save(const QString& name, int density);
    [[nodiscard]] QString path(const QString& name) const;

    QTemporaryDir m_folder;
};

void TestSkinPixmap::initTestCase()
{
    QVERIFY(m_folder.isValid());
    save(QStringLiteral("all.png"), 1);
    save(QStringLiteral("all@2x.png"), 2);
    save(QStringLiteral("all@3x.png"), 3);
    save(QStringLiteral("two.png"), 1);
    save(QStringLiteral("two@2x.png"), 2);
}

QString TestSkinPixmap::path(const QString& name) const
{
    return m_folder.filePath(name);
}

void TestSkinPixmap::save(const QString& name, int density)
{
    QPixmap pixmap(10 * density, 6 * density);
    pixmap.fill(Qt::red);
    QVERIFY(pixmap.save(path(name)));
}

void TestSkinPixmap::variantFitsTheScreen_data()
{
    QTest::addColumn<qreal>("ratio");
    QTest::addColumn<int>("density");
    QTest::newRow("1") << 1.0 << 1;
    QTest::newRow("1.25") << 1.25 << 2;
    QTest::newRow("1.5") << 1.5 << 2;
    QTest::newRow("2") << 2.0 << 2;
    QTest::newRow("2.5") << 2.5 << 3;
    QTest::newRow("3") << 3.0 << 3;
    QTest::newRow("4, denser than any picture") << 4.0 << 3;
}

void TestSkinPixmap::variantFitsTheScreen()
{
    QFETCH(qreal, ratio);
    QFETCH(int, density);
    const QPixmap pixmap = skinPixmap(path(QStringLiteral("all.png")), ratio);
    QCOMPARE(pixmap.size(), QSize(10, 6) * density);
    QCOMPARE(pixmap.devicePixelRatio(), qreal(density));
    QCOMPARE(pixmap.deviceIndependentSize(), QSizeF(10, 6));
}

void TestSkinPixmap::missingVariantsFallBackToTheNextOne()
{
    QCOMPARE(skinPixmap(path(QStringLiteral("two.png")), 3.0).devicePixelRatio(), 2.0);
}

void TestSkinPixmap::missingPictureIsNull()
{
    QVERIFY(skinPixmap(path(QStringLiteral("none.png")), 2.0).isNull());
}

void TestSkinPixmap::withoutARatioTheDensestScreenCounts()
{
    const QPixmap expected = skinPixmap(path(QStringLiteral("all.png")), qGuiApp->devicePixelRatio());
    QCOMPARE(skinPixmap(path(QStringLiteral("all.png"))).size(), expected.size());
}

KTZ_TEST(QApplication, TestSkinPixmap)
#include "TestSkinPixmap.moc"
