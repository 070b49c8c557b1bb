#include "picturecomparison.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

namespace
{

QString madePath(const QString& name)
{
    return QStringLiteral("pictures/") + name; // in the folder of the test, to look at afterwards
}

} // namespace

/// Takes the pictures of the service screen again and compares them with those of the documents. If
/// a page was changed on purpose, `./dev pictures` makes new ones.
class TestServicePictures : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void commandLine_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("status");
        QTest::addColumn<QByteArray>("output");
        const QStringList pictures{"--level", "technician", "--offscreen", madePath(QString())};
        QTest::newRow("pictures") << pictures << 0 << QByteArray();
        QTest::newRow("help") << QStringList("--help") << 0 << QByteArray("--offscreen <DIR>");
        QTest::newRow("unknown option") << QStringList("--none") << 2 << QByteArray("'none'");
        QTest::newRow("unknown language") << QStringList("--language=xx") << 2 << QByteArray("xx");
    }

    void commandLine()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QByteArray, output);
        QProcess service;
        service.setProcessChannelMode(QProcess::MergedChannels);
        service.start(SERVICE_PATH, arguments);
        QVERIFY(service.waitForFinished(240000));
        const QByteArray text = service.readAll();
        QVERIFY2(service.exitStatus() == QProcess::NormalExit && text.contains(output), text);
        QTEST(service.exitCode(), "status");
    }

    void lookAlike_data()
    {
        QTest::addColumn<QString>("name");
        const QStringList names = QDir(PICTURES_PATH).entryList({"*.png"});
        for (const QString& name : names) {
            // The numbers of threads differ from run to run.
            if (!name.startsWith("threads"))
                QTest::newRow(qPrintable(name)) << name;
        }
        QCOMPARE(names.size(), 80); // ten pages, two sizes, two palettes, two languages
    }

    void lookAlike()
    {
        QFETCH(QString, name);
        const QString difference =
            pictures::difference(QImage(madePath(name)), QImage(PICTURES_PATH "/" + name));
        QVERIFY2(difference.isEmpty(),
                 qPrintable(QFileInfo(madePath(name)).absoluteFilePath() + ": " + difference));
    }
};

QTEST_GUILESS_MAIN(TestServicePictures)
#include "tst_service_pictures.moc"
