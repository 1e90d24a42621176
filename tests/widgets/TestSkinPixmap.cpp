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
    void windowsPicturesAreShownWhereTheyWereUnpacked_data();
    void windowsPicturesAreShownWhereTheyWereUnpacked();

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

void TestSkinPixmap::windowsPicturesAreShownWhereTheyWereUnpacked_data()
{
    QTest::addColumn<QString>("picture");
    QTest::addColumn<QSize>("size");
    QTest::newRow("ground") << QStringLiteral(":/images/ktz_back.png") << QSize(446, 48);
    QTest::newRow("window") << QStringLiteral(":/images/ktz_jx_main_window.png") << QSize(446, 640);
    QTest::newRow("splash and about") << QStringLiteral(":/images/ktz_jx_info_view.png") << QSize(421, 580);
}

void TestSkinPixmap::windowsPicturesAreShownWhereTheyWereUnpacked()
{
    QFETCH(QString, picture);
    QFETCH(QSize, size);
    for (const int density : {1, 2, 3}) {
        const QImage image = largeSkinPixmap(picture, density).toImage();
        QCOMPARE(image.size(), size * density);
        QCOMPARE(image.devicePixelRatio(), qreal(density));
        QCOMPARE(image.format(), QImage::Format_RGB888);
        QCOMPARE(image.bytesPerLine(), 3 * image.width()); // of its own it would be rounded up
    }
}

KTZ_TEST(QApplication, TestSkinPixmap)
#include "TestSkinPixmap.moc"
