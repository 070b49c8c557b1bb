#pragma once

#include "eventpage.h"
#include "logreader.h"

#include <memory>

/// Reads a page of the event history of a folder, and then the events that the machine adds to it.
class EventFollow
{
public:
    EventFollow(const QString& folder, const EventRequest& request);

    /// Reads the page. Returns the reason if there is none, or an empty text.
    QString readPage(EventHistory::Page& page);
    /// The lines that match the request and have been added since the call before.
    QStringList takeNewLines();

private:
    const QString m_folder;
    const EventRequest m_request;
    LogSelection m_selection;
    LossLedger m_ledger; // stays empty: no general file is read
    std::unique_ptr<LogReader> m_reader;
};
