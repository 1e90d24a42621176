#include "tests/skin/CSkinScenes.h"
#include "tests/skin/PictureDifference.h"
#include "tests/support/CTestCase.h"

#include <QDir>

namespace
{
QString fileName(const QString& scene)
{
    return QStringLiteral("%1@%2x.png").arg(scene).arg(qGuiApp->devicePixelRatio());
}
} // namespace

/// Pictures of the editor against those in references/, which `./test.sh --references` makes anew.
class TestSkinReferences : public CTestCase
{
    Q_OBJECT

  private slots:
    void sceneLooksAsItDid_data();
    void sceneLooksAsItDid();
};

void TestSkinReferences::sceneLooksAsItDid_data()
{
    QTest::addColumn<QString>("scene");
    for (const QString& scene : CSkinScenes::names())
        QTest::newRow(qPrintable(scene)) << scene;
}

void TestSkinReferences::sceneLooksAsItDid()
{
    QFETCH(QString, scene);
    const QImage actual = CSkinScenes::take(scene);
    const QImage expected(QStringLiteral(KTZ_REFERENCES "/") + fileName(scene));
    const PictureDifference difference(actual, expected);
    if (difference.isSmall())
        return;

    QDir folder(QCoreApplication::applicationDirPath());
    QVERIFY(folder.mkpath(QStringLiteral("differences")) && folder.cd(QStringLiteral("differences")));
    const QString actualPath = folder.filePath(QStringLiteral("actual-") + fileName(scene));
    const QString markedPath = folder.filePath(QStringLiteral("marked-") + fileName(scene));
    QVERIFY(actual.save(actualPath) && difference.marked.save(markedPath));
    QFAIL(qPrintable(QStringLiteral("%1 pixels differ, %2 may; see\n%3\n%4")
                         .arg(difference.sameSize ? QString::number(difference.pixels) : QStringLiteral("all"))
                         .arg(difference.allowed)
                         .arg(actualPath, markedPath)));
}

KTZ_TEST_MAIN(TestSkinReferences)(int argc, char** argv)
{
    CSkinScenes::prepareProcess();
    QApplication application(argc, argv);
    if (argc == 2 && argv[1] == QByteArray("--make")) {
        for (const QString& scene : CSkinScenes::names()) {
            if (!CSkinScenes::take(scene).save(QStringLiteral(KTZ_REFERENCES "/") + fileName(scene)))
                return 1;
        }
        return 0;
    }
    TestSkinReferences test;
    return QTest::qExec(&test, argc, argv);
}
#include "TestSkinReferences.moc"
