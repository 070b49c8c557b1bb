#include "logging/eventhistory_p.h"
#include "support.h"

#include <QtTest>

using support::writeFile;

namespace
{

QByteArray eventLine(int day, const char* kind, const QByteArray& text)
{
    return QByteArray::number(day).rightJustified(2, '0') + "/11/2026 03:37:40:123| " + kind +
           "| " + text + '\n';
}

} // namespace

class TestEventHistory : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_folder;
    const QString m_old = m_folder.filePath(QStringLiteral("e.log.1"));
    const QString m_new = m_folder.filePath(QStringLiteral("e.log"));

private Q_SLOTS:
    void matches_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("start");
        QTest::addColumn<QString>("stop");
        QTest::addColumn<QVector<int>>("numbers");
        const QString menu = QStringLiteral("MenuAccess");
        const QString second = QStringLiteral("02/11/2026");
        const QString third = QStringLiteral("03/11/2026");
        QTest::newRow("everything")
            << QString() << QString() << QString() << QVector<int>{0, 1, 2, 3, 4, 5, 6};
        QTest::newRow("one kind, also as a later field")
            << menu << QString() << QString() << QVector<int>{0, 2, 3, 4};
        QTest::newRow("both ends included")
            << QString() << second << third << QVector<int>{1, 2, 3};
        QTest::newRow("kind and dates") << menu << second << third << QVector<int>{2, 3};
        QTest::newRow("one date alone does not filter")
            << menu << second << QString() << QVector<int>{0, 2, 3, 4};
        QTest::newRow("dates the wrong way round")
            << QString() << third << second << QVector<int>{};
        QTest::newRow("a date that is none")
            << QString() << QStringLiteral("x") << QStringLiteral("y") << QVector<int>{4, 5, 6};
    }
    void matches()
    {
        QFETCH(QString, kind);
        QFETCH(QString, start);
        QFETCH(QString, stop);
        QFETCH(QVector<int>, numbers);
        writeFile(m_new, eventLine(1, "MenuAccess", "a") +
                             eventLine(2, "MenuAccessX", "b| MenuAccess x") +
                             eventLine(3, "CleaningEvent", "c| MenuAccess|d") +
                             eventLine(3, "WasteLevel", "MenuAccess") +
                             "3/11/2026 half| MenuAccess\n" + "\n" + "31/02/2026 no date");
        QCOMPARE(EventHistory::matches(m_new, {kind, start, stop}), numbers);
    }

    void pages_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<int>("perPage");
        QTest::addColumn<int>("pages");
        QTest::addColumn<QString>("texts");
        QTest::addColumn<int>("errors");
        QTest::newRow("the newest") << 0 << 4 << 3 << QStringLiteral("6789") << 0;
        QTest::newRow("across the files") << 1 << 4 << 3 << QStringLiteral("2345") << 0;
        QTest::newRow("the rest is the oldest") << 2 << 4 << 3 << QStringLiteral("01") << 0;
        QTest::newRow("all in one") << 0 << 100 << 1 << QStringLiteral("0123456789") << 0;
        QTest::newRow("beyond the oldest") << 3 << 4 << 3 << QString() << 0;
        QTest::newRow("far beyond") << INT_MAX << INT_MAX << 1 << QString() << 0;
        QTest::newRow("before the newest") << -1 << 4 << 3 << QString() << 1;
        QTest::newRow("no room on a page") << 0 << 0 << 0 << QString() << 1;
    }
    void pages()
    {
        QFETCH(int, index);
        QFETCH(int, perPage);
        QFETCH(int, pages);
        QFETCH(QString, texts);
        QFETCH(int, errors);
        QByteArray contents[2];
        for (int i = 0; i < 10; ++i)
            contents[i / 5] += eventLine(1 + i, "MenuAccess", QByteArray::number(i)) +
                               eventLine(1, "WasteLevel", "between");
        writeFile(m_old, contents[0]);
        writeFile(m_new, contents[1]);
        support::LineRecorder recorder;
        const auto page = EventHistory::page({m_old, m_new}, {QStringLiteral("MenuAccess"), {}, {}},
                                             index, perPage);
        QCOMPARE(page.pagesCount, pages);
        QString lastCharacters;
        for (const QString& line : page.text.split(QLatin1Char('\n'), Qt::SkipEmptyParts))
            lastCharacters += line.right(1);
        QCOMPARE(lastCharacters, texts);
        QCOMPARE(recorder.takeMessages().size(), errors);
    }

    void appendedLines()
    {
        writeFile(m_new, "a\nb\nc\nd");
        QString text = QStringLiteral("before");
        EventHistory::appendLines(text, m_new, {0, 2, 3}, 1, 2);
        QCOMPARE(text, QStringLiteral("before\nc\nd"));
        support::LineRecorder recorder;
        text.clear();
        EventHistory::appendLines(text, m_new, {0, 2, 3}, 2, 2);
        QCOMPARE(text, QStringLiteral("d"));
        QVERIFY(recorder.takeMessages().value(0).endsWith(
            QStringLiteral("QVector<int>, int, int) Index is out of bounds !")));
    }

    void aLargeFileComesBackWhole()
    {
        QStringList lines;
        for (int i = 0; i < 4000; ++i)
            lines.append(QString(i % 97, QLatin1Char('x')) + QString::number(i));
        lines[2000] = QString(200000, QLatin1Char('y'));
        const QString content = lines.join(QLatin1Char('\n'));
        writeFile(m_new, content.toUtf8());
        const auto page = EventHistory::page({m_new}, {}, 0, 9999);
        QCOMPARE(page.pagesCount, 1);
        QVERIFY(page.text == content);
        QVERIFY(EventHistory::page({m_new}, {}, 1, 2000).text + QLatin1Char('\n') +
                    EventHistory::page({m_new}, {}, 0, 2000).text ==
                content);
    }

    void damagedFilesKeepTheirGoodLines()
    {
        const QByteArray good = eventLine(2, "MenuAccess", "good").chopped(1);
        writeFile(m_new, QByteArray(5000, '\0') + good + QByteArray(3, '\0') + "02/11/20" + '\n' +
                             QByteArray(1 << 20, 'x') + '\n' + "\xff\xfe\xc3\n" + good +
                             QByteArray(9, '\0') + '\n' + "\xc3" + good.mid(1));
        const QString line = QString::fromLatin1(good);
        const EventSelection selection{QStringLiteral("MenuAccess"), QStringLiteral("01/11/2026"),
                                       QStringLiteral("03/11/2026")};
        QCOMPARE(EventHistory::page({m_new}, selection, 0, 10).text,
                 line + QLatin1Char('\n') + line);
        QCOMPARE(EventHistory::page({m_old + m_new}, selection, 0, 10).pagesCount, 0);
    }
};

QTEST_GUILESS_MAIN(TestEventHistory)
#include "tst_eventhistory.moc"
