#pragma once

#include <zeltools/zeltools_export.h>

#include <QByteArray>
#include <QStringList>
#include <QVector>

#include <optional>

/// Which events a page is made of.
struct EventSelection
{
    /// The kind as it stands in the file ("MenuAccess"); empty accepts every line.
    QString kind;
    /// "dd/MM/yyyy", both ends included. Dates are looked at only when both texts are there.
    QString startDate;
    QString stopDate;
};

/// Reads event files back: which lines match a selection, and pages of them. The cost is linear in
/// the bytes, whatever they are, and little memory is taken. Lines end with a line feed; a run of
/// NUL characters, as a power cut leaves it, parts a line in two.
///
/// A file that does not exist has no lines. Where a file can't be read to its end, the functions
/// give what they read and say why in `error`, which is empty otherwise; the caller reports it.
/// Knows no lock: the caller keeps the files still.
class ZELTOOLS_EXPORT EventHistory
{
public:
    struct Page
    {
        int pagesCount;    ///< Of the whole selection.
        QStringList lines; ///< Oldest first.
        QString error;     ///< "cannot read PATH: REASON", of the first file that failed.
    };

    /// Page 0 holds the newest matches, `eventsPerPage` to a page; the last page holds the rest. No
    /// page at all, with an Error line, when `eventsPerPage` is below 1.
    static Page page(const QStringList& filesOldestFirst, const EventSelection& selection,
                     int pageIndex, int eventsPerPage);

    /// The numbers of the matching lines, counted from 0.
    static QVector<int> matches(const QString& fileName, const EventSelection& selection,
                                QString& error);

    /// Appends the lines with the numbers lineIndexes[first] and the `count` - 1 that follow, in
    /// that order, with "\n" between them. Positions outside lineIndexes are left out, with an
    /// Error line.
    static void appendLines(QString& text, const QString& fileName, const QVector<int>& lineIndexes,
                            int first, int count, QString& error);
};
