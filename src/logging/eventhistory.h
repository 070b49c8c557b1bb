#pragma once

#include <zeltools/zeltools_export.h>

#include <QByteArray>
#include <QStringList>
#include <QVector>

#include <optional>

/// The events that a page consists of.
struct EventSelection
{
    /// The kind as the file has it ("MenuAccess"); an empty text selects every kind.
    QString kind;
    /// The first day as "dd/MM/yyyy". Dates only filter if both are given.
    QString startDate;
    /// The last day in the same form, which is part of the selection.
    QString stopDate;
};

/// Reads event files back: the numbers of the lines that match a selection, and pages of such
/// lines. The time is linear in the size of the files for any content, and the memory use is small.
/// A line ends with a line feed or at a run of NUL characters, which a power cut leaves.
///
/// A file that does not exist has no lines. If a file cannot be read to its end, the functions
/// return what they have read and set `error`, which is empty otherwise, to the reason; they do not
/// log it. They use no lock: the caller prevents changes of the files meanwhile.
class ZELTOOLS_EXPORT EventHistory
{
public:
    /// A page of a selection, see page().
    struct Page
    {
        int pagesCount;    ///< The number of pages of the whole selection.
        QStringList lines; ///< The oldest line first.
        QString error;     ///< "cannot read PATH: REASON" for the first file that failed.
    };

    /// Page 0 has the newest `eventsPerPage` matches, and the last page has the rest. There are no
    /// pages, and an Error line is logged, if `eventsPerPage` is less than 1.
    static Page page(const QStringList& filesOldestFirst, const EventSelection& selection,
                     int pageIndex, int eventsPerPage);

    /// The numbers of the matching lines, counted from 0.
    static QVector<int> matches(const QString& fileName, const EventSelection& selection,
                                QString& error);

    /// Appends the line with the number lineIndexes[first] and the `count` - 1 lines that follow in
    /// `lineIndexes`, in this order and separated by "\n". Positions outside `lineIndexes` are
    /// skipped, and an Error line is logged.
    static void appendLines(QString& text, const QString& fileName, const QVector<int>& lineIndexes,
                            int first, int count, QString& error);
};
