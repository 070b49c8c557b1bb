#include "quick/access.h"

#include "support.h"

#include <QtTest>

using support::LineRecorder;
using support::TemporaryLayout;
using zeltools::quick::Access;

class TestAccess : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nothingMayBeChangedUnlessTheHostSaysSo()
    {
        Access* const access = Access::instance();
        QVERIFY(!access->refusal(Access::Operator).isEmpty());
        QVERIFY(!access->refusal(Access::Technician).isEmpty());

        access->setLevel(Access::Operator);
        QVERIFY(access->refusal(Access::Operator).contains("folders")); // no event line without
        const TemporaryLayout layout;
        QCOMPARE(access->refusal(Access::Operator), QString());
        QVERIFY(!access->refusal(Access::Technician).isEmpty());

        access->setLevel(Access::Level(99));
        QCOMPARE(access->level(), Access::ReadOnly);
        QVERIFY(!access->allows(Access::Level(-1)));
    }

    void aChangeIsOneEventLineThatSaysWho()
    {
        const TemporaryLayout layout; // for the log manager, which announces each event
        LineRecorder lines;
        Access::instance()->recordChange(QStringLiteral("Switch A set"));
        Access::instance()->setUser(QStringLiteral("Anna\nforged|line"));
        Access::instance()->recordChange(QStringLiteral("Switch B set"));
        const QVector<LineRecorder::Line> recorded = lines.take();
        QCOMPARE(recorded.size(), 2);
        QCOMPARE(recorded[0].level, LogLevel::Event);
        QVERIFY2(recorded[0].message.endsWith(
                     QStringLiteral("| Service: Switch A set (by unknown user)")),
                 qPrintable(recorded[0].message));
        QVERIFY2(recorded[1].message.endsWith(
                     QStringLiteral("| Service: Switch B set (by Anna forged/line)")),
                 qPrintable(recorded[1].message));
    }
};

QTEST_GUILESS_MAIN(TestAccess)
#include "tst_quick_access.moc"
