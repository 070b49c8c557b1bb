#pragma once

#include <zeltools/logging/eventhistory.h>

#include <QString>

/// The selection and the page of a `zelctl events` command line.
struct EventRequest
{
    QStringList kinds;   ///< as the files have them; none selects every kind
    EventSelection days; ///< without a kind
    int page = 0;
    int perPage = 0;
};

/// Reads a page of the event files in a folder, without empty lines, which count, and again if the
/// machine has rotated them meanwhile, because events would be missing or doubled. Returns the
/// reason if there is no page, or an empty text.
QString readEventPage(const QString& folder, const EventRequest& request, EventHistory::Page& page);
