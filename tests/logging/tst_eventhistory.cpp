#include "logging/eventhistory.h"
#include "logging/rotatinglogfile.h"
#include "support.h"
#include "support/rows.h"

#include <QRandomGenerator>
#include <QtTest>

using support::writeFile;

namespace
{

QByteArray eventLine(int day, const char* kind, const QByteArray& text)
{
    return QByteArray::number(day).rightJustified(2, '0') + "/11/2026 03:37:40:123| " + kind +
           "| " + text + '\n';
}

using Match = std::tuple<const char*, EventSelection, QVector<int>>;
using PageOfTen = std::tuple<const char*, int, int, int, QString, int>;
using Appended = std::tuple<const char*, QVector<int>, int, int, QString, int>;

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
        support::addRows<Match>({
            {"everything", {}, {0, 1, 2, 3, 4, 5, 6}},
            {"one kind, in any field, without dates",
             {"MenuAccess", "02/11/2026", ""},
             {0, 2, 3, 4}},
            {"both ends included", {"", "02/11/2026", "03/11/2026"}, {1, 2, 3}},
            {"kind and dates", {"MenuAccess", "02/11/2026", "03/11/2026"}, {2, 3}},
            {"the stop before the start", {"", "03/11/2026", "02/11/2026"}, {}},
            {"invalid dates match lines without a date", {"", "x", "y"}, {4, 5, 6}},
        });
    }
    void matches()
    {
        const auto& [name, selection, expected] = support::currentRow<Match>();
        writeFile(m_new, eventLine(1, "MenuAccess", "a") +
                             eventLine(2, "MenuAccessX", "b| MenuAccess x") +
                             eventLine(3, "CleaningEvent", "c| MenuAccess|d") +
                             eventLine(3, "WasteLevel", "MenuAccess") +
                             "3/11/2026 half| MenuAccess\n" + "\n" + "31/02/2026 no date");
        QString error;
        QCOMPARE(EventHistory::matches(m_new, selection, error), expected);
        QCOMPARE(error, QString());
    }

    void pages_data()
    {
        support::addRows<PageOfTen>({
            {"the newest", 0, 4, 3, "6789", 0},
            {"across the files", 1, 4, 3, "2345", 0},
            {"the last page has the rest", 2, 4, 3, "01", 0},
            {"behind the oldest", 3, 4, 3, "", 0},
            {"the largest numbers", INT_MAX, INT_MAX, 1, "", 0},
            {"before the newest", -1, 4, 3, "", 1},
            {"no room on a page", 0, 0, 0, "", 1},
        });
    }
    void pages()
    {
        const auto& [name, index, perPage, pages, texts, errors] = support::currentRow<PageOfTen>();
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
        support::addRows<Appended>({
            {"a part", {0, 2, 3}, 1, 2, "before\nc\nd", 0},
            {"behind the end", {0, 2, 3}, 2, 2, "before\nd", 1},
            {"any order, twice, unknown", {3, 0, 9, -1, 3}, 0, 5, "before\nd\na\nd", 0},
            {"empty lines", {1, 1, 2}, 0, 3, "before\n\n\nc", 0},
        });
    }
    void appendedLines()
    {
        const auto& [name, indexes, first, count, expected, errors] =
            support::currentRow<Appended>();
        writeFile(m_new, "a\n\nc\nd");
        QString text = "before";
        QString error;
        support::LineRecorder recorder;
        EventHistory::appendLines(text, m_new, indexes, first, count, error);
        QCOMPARE(text, expected);
        QCOMPARE(recorder.takeMessages().size(), errors);
    }

    // Power cuts and other programs may leave anything between the lines.
    void damagedFilesKeepTheirGoodLines()
    {
        QRandomGenerator random(1);
        const QByteArray good = eventLine(2, "MenuAccess", "good");
        QByteArray noise(3000, '\0');
        random.generate(noise.begin(), noise.end());
        const QByteArrayList junk{QByteArray(5000, '\0'),
                                  "\n\n" + QByteArray(1, '\0'),
                                  good.left(20) + '\0',
                                  "\xff\xfe\xc3\n",
                                  "\xc3" + QByteArray(1, '\0'),
                                  QByteArray(1 << 20, 'x') + '\n',
                                  QByteArray("| MenuAccess|\n").repeated(9000),
                                  noise + '\n',
                                  "99/99/9999 \xe2\x82|\r\n"};
        QByteArray content;
        QStringList expected;
        for (int i = 0; i < 120; ++i) {
            const QByteArray line = eventLine(2 + i / 60, "MenuAccess", QByteArray::number(i));
            content += junk[int(random.bounded(uint(junk.size())))] + line;
            expected.append(line.trimmed());
        }
        writeFile(m_new, content.chopped(1));
        const EventSelection day{"MenuAccess", "02/11/2026", "02/11/2026"};
        // The system refuses to read the first bytes of the last file.
        const auto page = EventHistory::page({m_old + '0', m_new, "/proc/self/mem"}, day, 0, 99);
        QCOMPARE(page.lines, expected.mid(0, 60));
        QCOMPARE(page.error, "cannot read /proc/self/mem: Input/output error");
        for (const QString& line : RotatingLogFile::getLogLines(m_new))
            expected.removeOne(line);
        QCOMPARE(expected, QStringList());
    }
};

QTEST_GUILESS_MAIN(TestEventHistory)
#include "tst_eventhistory.moc"
