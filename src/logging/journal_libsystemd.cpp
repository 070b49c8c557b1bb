// The place in this file where an entry is sent would be the CODE_FILE of all entries.
#define SD_JOURNAL_SUPPRESS_LOCATION

#include "logging/journal_p.h"

#include "loadedfunction.h"

#include <QVarLengthArray>

#include <systemd/sd-journal.h>
#include <unistd.h>

namespace
{

decltype(&sd_journal_sendv) sender()
{
    static zeltools::KeptFunction<decltype(sd_journal_sendv)> send("libsystemd.so.0",
                                                                   "sd_journal_sendv");
    return send.get();
}

} // namespace

void journal::load()
{
    sender();
}

bool journal::isAvailable()
{
    return access("/run/systemd/journal/socket", F_OK) == 0 && sender() != nullptr;
}

bool journal::send(const QVector<QByteArray>& fields)
{
    QVarLengthArray<iovec, 16> pieces;
    for (const QByteArray& field : fields)
        pieces.append({const_cast<char*>(field.constData()), size_t(field.size())});
    return sender() != nullptr && sender()(pieces.constData(), int(pieces.size())) >= 0;
}
