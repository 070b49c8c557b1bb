#pragma once

#include "logging/eventhistory.h"

class LogFileSet;

/// The pages of the event history that LogManager publishes, read from the events file and its
/// predecessor. It logs an Error if a file cannot be read. Except for page(), the functions hold
/// the lock of the events file, so that no line is written and no file rotated meanwhile.
class EventPages
{
public:
    explicit EventPages(LogFileSet& files);

    /// The published page, with the oldest line first, joined by "\n".
    const QString& text() const { return m_text; }
    QStringList lines() const;
    int pagesCount() const { return m_pagesCount; }
    /// Publishes a page. Returns whether the number of pages has changed.
    bool publish(const EventSelection& selection, int pageIndex, int eventsPerPage);

    /// Reads a page of the files that exist now, whatever becomes of them meanwhile: the lock is
    /// held for a moment only, so that no thread that logs an event waits for the storage. It logs
    /// no error but returns it. Any thread may call it.
    EventHistory::Page page(const EventSelection& selection, int pageIndex,
                            int eventsPerPage) const;
    /// Writes a page to `text` and returns the number of pages.
    int write(QString& text, const EventSelection& selection, int pageIndex,
              int eventsPerPage) const;
    /// They call the functions with these names in EventHistory and log its errors.
    QVector<int> matches(const QString& fileName, const EventSelection& selection) const;
    void appendLines(QString& text, const QString& fileName, const QVector<int>& lineIndexes,
                     int first, int count) const;

private:
    QStringList filesOldestFirst() const;

    LogFileSet& m_files;
    QString m_text;
    int m_pagesCount = 1;
};
