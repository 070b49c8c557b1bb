#pragma once

#include "logging/logrecord.h"

#include <QVector>

/// The fields of the journal for a line, each as "NAME=value"; JournalSink describes them. An empty
/// identifier is left out.
QVector<QByteArray> journalEntry(const LogRecord& record, const QByteArray& identifier);
