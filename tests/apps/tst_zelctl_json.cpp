#include "shell.h"
#include "support.h"

#include <QRegularExpression>

namespace
{

/// A row of a table in docs/format-json.md.
struct Member
{
    QString path;
    QStringList types;
    QString meaning;
    bool mayBeMissing;
};

/// The tables by the commands in their headings.
QMap<QString, QVector<Member>> readPage()
{
    QMap<QString, QVector<Member>> tables;
    QString command;
    const QStringList lines = QString(support::readFile(JSON_PAGE)).split('\n');
    for (const QString& line : lines) {
        if (line.startsWith("## "))
            command = line.mid(3).remove("zelctl ");
        const QStringList cells = line.split(QRegularExpression(" *\\| *"));
        if (cells.size() == 6 && cells[1].startsWith('`'))
            tables[command].append(
                {QString(cells[1]).remove('`'), cells[2].split(", "), cells[3], cells[4] != ""});
    }
    return tables;
}

QString typeOf(const QJsonValue& value)
{
    const QStringList types{"null", "boolean", "number", "text", "array", "object"};
    return types.value(value.type());
}

/// Whether a text has the form that its meaning demands.
bool hasForm(const QString& text, const QString& meaning)
{
    QString form;
    if (meaning.startsWith("time ") && meaning.contains("UTC"))
        form = "Z";
    else if (meaning.startsWith("time ") && meaning.contains("offset"))
        form = "(Z|[+-]\\d\\d:\\d\\d)";
    if (meaning.startsWith("time "))
        form = "\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d(\\.\\d{3})?" + form;
    else if (meaning == "hexadecimal" || meaning.startsWith("hexadecimal:"))
        form = "0x[0-9a-f]+";
    return form.isEmpty() || QRegularExpression('^' + form + '$').match(text).hasMatch();
}

QString difference(const QJsonObject& object, const QVector<Member>& table, const QString& parent,
                   QSet<QString>& seen);

QString elementDifference(const QJsonValue& element, const QVector<Member>& table,
                          const Member& member, QSet<QString>& seen)
{
    if (element.isObject())
        return difference(element.toObject(), table, member.path + "[].", seen);
    if (element.isString() && member.meaning.startsWith("texts"))
        return QString();
    return member.path + " has elements of another type";
}

/// Compares an object with the members of a table below a path, which is empty or ends with "[].".
/// Returns the first difference, or an empty text.
QString difference(const QJsonObject& object, const QVector<Member>& table, const QString& parent,
                   QSet<QString>& seen)
{
    QStringList unknown = object.keys();
    for (const Member& member : table) {
        const QString name = member.path.mid(parent.size());
        if (!member.path.startsWith(parent) || name.contains('.'))
            continue;
        unknown.removeAll(name);
        const QJsonValue value = object[name];
        if (value.isUndefined() && member.mayBeMissing)
            continue;
        seen.insert(member.path);
        if (!member.types.contains(typeOf(value)) ||
            (value.isString() && !hasForm(value.toString(), member.meaning)))
            return member.path + " is " + QJsonDocument(QJsonObject{{name, value}}).toJson();
        const QJsonArray elements = value.toArray();
        for (const QJsonValue& element : elements) {
            QString found = elementDifference(element, table, member, seen);
            if (!found.isEmpty())
                return found;
        }
    }
    return unknown.isEmpty() ? QString() : parent + unknown.first() + " is not in the table";
}

} // namespace

/// Compares what the commands print with the page for readers of their JSON.
class TestZelctlJson : public QObject
{
    Q_OBJECT

    const QMap<QString, QVector<Member>> m_tables = readPage();
    QTemporaryDir m_dir;
    QStringList m_tested;

private Q_SLOTS:
    void initTestCase()
    {
        const QByteArray report =
            "ZelTools crash report 1\n[process]\npid 12\nprogram /opt/zel/machine\nlibrary 0.1.0\n"
            "application 4.2.1\nboot b\nstarted 1732262400123\n[crash]\nsignal 11 SIGSEGV\ncode 1\n"
            "address 0x8\nthread 13\ntime 1732262500456\nuptime 100333\nreason r\n[registers]\nrip "
            "0x15\n[modules]\n0x10000 0x20000 9e53 /opt/zel/machine\n[log]\nline\n[stack 13 A "
            "crashed]\n"
            "0x10015\n[threads]\nGrinder|14|on time|12\n[section tank]\nwater 17\n[end]\n";
        QVERIFY(QDir(m_dir.path()).mkpath("crashes"));
        support::writeFile(m_dir.filePath("crashes/crash-1.report"), report);
        support::writeFile(m_dir.filePath("crashes/crash-2.report"), "none");
        support::writeFile(m_dir.filePath("env"), "LAB_TEST=1\n");
        support::writeFile(m_dir.filePath("zel_events.log"),
                           "01/03/2026 10:00:00:000| MenuAccess| a\n02/03");
        support::writeFile(m_dir.filePath("zel_logs.log"),
                           "half\n01/03/2026 10:00:00:000| Warning  | 12 lines were lost (30 since "
                           "the start of process 4711): x\n");
        support::writeFile(m_dir.filePath("script"),
                           "zelsim script 1\nconnected answer \"2026/01/02 03:04:05\"\n"
                           "connected after 10ms answer \"soon\"\n");
    }

    void keepsThePage_data()
    {
        QTest::addColumn<QString>("commands");
        const auto row = [this](const char* command, const char* commands) {
            QTest::newRow(command) << commands;
            m_tested.append(command);
        };
        const char* const bundle = "zelctl bundle . b.tar.gz --environment no >&2 && ";
        row("bundle list", qPrintable(bundle + QString("zelctl bundle list b.tar.gz --json")));
        row("bundle verify", qPrintable(bundle + QString("zelctl bundle verify b.tar.gz --json")));
        row("clock",
            "zelctl sim serve script unixserver/$PWD/s >started & until [ -s started ]; do "
            "sleep 0.1; done; zelctl clock unixclient/$PWD/s --follow --json --set "
            "'2024/03/01 08:30:00' | head -n 3; kill $!");
        row("crash list", "zelctl crash list crashes --json; true");
        row("crash show", "zelctl crash show crashes/crash-1.report --json");
        row("crypt info",
            "export ZEL_KEY=0123456789abcdef; zelctl crypt encrypt env c --metadata m "
            "&& zelctl crypt info c --json");
        row("env catalogue", "zelctl env catalogue --json");
        row("env get", "zelctl env env get LAB_TEST --json");
        row("env list", "zelctl env env list --json");
        row("events", "zelctl events . --json");
        row("hex", "printf 'a0\\n\\n' | zelctl hex - --json; zelctl hex --from-bytes x --json");
        row("kmsg", "zelctl kmsg --json | head -n 20");
        row("log", "zelctl log . --json");
        row("log recover", "zelctl log recover . --json");
        row("sim", "timeout 1 zelctl sim serve script --json; "
                   "timeout 1 zelctl sim serve script unixclient/$PWD/none --json; true");
        row("version", "zelctl version --json; zelctl version 1 --json; zelctl version 1 2 --json");
    }
    void keepsThePage()
    {
        QFETCH(const QString, commands);
        const QVector<Member> table = m_tables[QTest::currentDataTag()];
        const QByteArray output = runInShell("exec 2>errors; " + commands, m_dir.path()).toUtf8();
        if (output.isEmpty() && QByteArray(QTest::currentDataTag()) == "kmsg")
            QSKIP("The kernel log is not open to this process", SkipSingle);
        const bool isOne = !QJsonDocument::fromJson(output).isNull();
        QSet<QString> seen;
        const QByteArrayList texts = isOne ? QByteArrayList{output} : output.trimmed().split('\n');
        for (const QByteArray& text : texts) {
            QVERIFY2(QJsonDocument::fromJson(text).isObject(), text);
            const QString found =
                difference(QJsonDocument::fromJson(text).object(), table, QString(), seen);
            QVERIFY2(found.isEmpty(), qPrintable(found));
        }
        // What only a damaged file, a bundle of a damaged disk and a device have.
        const QStringList rare{"metadataSize", "members[].padded", "members[].fault", "fields"};
        for (const Member& member : table)
            QVERIFY2(seen.contains(member.path) || rare.contains(member.path),
                     qPrintable(member.path + " is never printed"));
    }

    void hasAPageForEachCommand()
    {
        QStringList tables = m_tables.keys();
        QCOMPARE(tables, m_tested);
        const QString withJson =
            runInShell("zelctl help | sed -n 's/^  \\([a-z]\\+\\( recover\\)\\?\\)  .*/\\1/p' | "
                       "while read c; do "
                       "zelctl help $c | grep -q -e --json && echo $c; done; true");
        tables.replaceInStrings(QRegularExpression("^(bundle|crash|crypt|env) .*"), "\\1");
        tables.removeDuplicates();
        QCOMPARE(withJson.split('\n', Qt::SkipEmptyParts), tables);
    }
};

QTEST_GUILESS_MAIN(TestZelctlJson)
#include "tst_zelctl_json.moc"
