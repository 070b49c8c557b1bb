#include "logging/eventhistory.h"
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
    const QString m_old = m_folder.filePath("e.log.1");
    const QString m_new = m_folder.filePath("e.log");

private Q_SLOTS:
    void matches_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("start");
        QTest::addColumn<QString>("stop");
        QTest::addColumn<QVector<int>>("numbers");
        const auto row = [](const char* name, const char* kind, const char* start, const char* stop,
                            const QVector<int>& numbers) {
            QTest::newRow(name) << kind << start << stop << numbers;
        };
        row("everything", "", "", "", {0, 1, 2, 3, 4, 5, 6});
        row("one kind, in any field, without dates", "MenuAccess", "02/11/2026", "", {0, 2, 3, 4});
        row("both ends included", "", "02/11/2026", "03/11/2026", {1, 2, 3});
        row("kind and dates", "MenuAccess", "02/11/2026", "03/11/2026", {2, 3});
        row("dates the wrong way round", "", "03/11/2026", "02/11/2026", {});
        row("dates that are none find what has none", "", "x", "y", {4, 5, 6});
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
        QString error;
        QCOMPARE(EventHistory::matches(m_new, {kind, start, stop}, error), numbers);
        QCOMPARE(error, QString());
    }

    void pages_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<int>("perPage");
        QTest::addColumn<int>("pages");
        QTest::addColumn<QString>("texts");
        QTest::addColumn<int>("errors");
        const auto row = [](const char* name, int index, int perPage, int pages, const char* texts,
                            int errors) {
            QTest::newRow(name) << index << perPage << pages << texts << errors;
        };
        row("the newest", 0, 4, 3, "6789", 0);
        row("across the files", 1, 4, 3, "2345", 0);
        row("the rest is the oldest", 2, 4, 3, "01", 0);
        row("beyond the oldest", 3, 4, 3, "", 0);
        row("far beyond", INT_MAX, INT_MAX, 1, "", 0);
        row("before the newest", -1, 4, 3, "", 1);
        row("no room on a page", 0, 0, 0, "", 1);
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
        const auto page =
            EventHistory::page({m_old, m_new}, {"MenuAccess", {}, {}}, index, perPage);
        QCOMPARE(page.pagesCount, pages);
        QString lastCharacters;
        for (const QString& line : page.lines)
            lastCharacters += line.right(1);
        QCOMPARE(lastCharacters, texts);
        QCOMPARE(recorder.takeMessages().size(), errors);
    }

    void appendedLines_data()
    {
        QTest::addColumn<QVector<int>>("indexes");
        QTest::addColumn<int>("first");
        QTest::addColumn<int>("count");
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("errors");
        using Indexes = QVector<int>;
        QTest::newRow("a part") << Indexes{0, 2, 3} << 1 << 2 << "before\nc\nd" << 0;
        QTest::newRow("beyond the end") << Indexes{0, 2, 3} << 2 << 2 << "before\nd" << 1;
        QTest::newRow("in any order, twice, of no line")
            << Indexes{3, 0, 9, -1, 3} << 0 << 5 << "before\nd\na\nd" << 0;
        QTest::newRow("empty lines") << Indexes{1, 1, 2} << 0 << 3 << "before\n\n\nc" << 0;
    }
    void appendedLines()
    {
        QFETCH(QVector<int>, indexes);
        QFETCH(int, first);
        QFETCH(int, count);
        writeFile(m_new, "a\n\nc\nd");
        QString text = "before";
        QString error;
        support::LineRecorder recorder;
        EventHistory::appendLines(text, m_new, indexes, first, count, error);
        QTEST(text, "text");
        QTEST(int(recorder.takeMessages().size()), "errors");
    }

    void aLargeFileComesBackWhole()
    {
        QStringList lines("");
        for (int i = 1; i < 4000; ++i)
            lines.append(QString(i % 97, 'x') + QString::number(i));
        lines[2000] = QString(200000, 'y');
        writeFile(m_new, lines.join('\n').toUtf8());
        QVERIFY(EventHistory::page({m_new}, {}, 0, 9999).lines == lines);
        QVERIFY(EventHistory::page({m_new}, {}, 1, 2000).lines == lines.mid(0, 2000));
    }

    void damagedFilesKeepTheirGoodLines()
    {
        const QByteArray good = eventLine(2, "MenuAccess", "good").chopped(1);
        writeFile(m_new, QByteArray(5000, '\0') + good + QByteArray(3, '\0') + "02/11/20" + '\n' +
                             QByteArray(1 << 20, 'x') + '\n' + "\xff\xfe\xc3\n" + good +
                             QByteArray(9, '\0') + '\n' + "\xc3" + good.mid(1));
        const QString line = QString::fromLatin1(good);
        const EventSelection selection{"MenuAccess", "01/11/2026", "03/11/2026"};
        // Reading the first bytes of this one fails.
        const auto page =
            EventHistory::page({m_old + '0', m_new, "/proc/self/mem"}, selection, 0, 9);
        QCOMPARE(page.lines, QStringList({line, line}));
        QCOMPARE(page.error, "cannot read /proc/self/mem: Input/output error");
    }
};

QTEST_GUILESS_MAIN(TestEventHistory)
#include "tst_eventhistory.moc"
