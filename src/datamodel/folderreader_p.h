#pragma once

#include "datamodel/folderlisting_p.h"
#include "datamodel/folderwatch_p.h"

#include <QTimer>

#include <memory>

namespace tools::datamodel
{

/// Decides when a folder is read: after a change of the query, and when the folder changes on disk.
/// One listing runs at a time, in a thread of its own pool. After a listing that took long, the
/// next one waits, so that the reader is busy for at most a fifth of the time.
class FolderReader : public QObject
{
    Q_OBJECT

public:
    /// The rows are those of the model, with which each listing is compared.
    explicit FolderReader(const FolderRows& rows);
    /// Does not wait for a running listing.
    ~FolderReader() override;

    const FolderQuery& query() const { return m_query; }
    /// Sets the folder of the query and drops the listing of the old one, whether it runs or is
    /// due. refresh() begins the first listing of the new folder.
    void setFolder(const QString& path);
    /// Sets another member of the query. The running listing is cancelled, and the next one begins
    /// when it has ended: a disk that hangs blocks one thread only. Returns false if the member has
    /// this value already.
    template <typename Value>
    bool set(Value FolderQuery::*member, const Value& value)
    {
        if (m_query.*member == value)
            return false;
        m_query.*member = value;
        if (m_listing)
            m_listing->cancel();
        refresh();
        return true;
    }
    void refresh() { schedule(0); }

    /// Between pause() and resume(), the rows change and no listing begins.
    void pause() { m_isPaused = true; }
    void resume();
    bool isPaused() const { return m_isPaused; }

Q_SIGNALS:
    /// A listing has ended. Its changes lead from the rows to its own rows.
    void listed(const tools::datamodel::FolderListing& listing);
    /// Follows listed(), unless a receiver of that set another folder or a newer listing has begun.
    /// Changes of the folder are detected from now on.
    void followed(const tools::datamodel::FolderListing& listing);

private:
    void schedule(int delay_ms);
    void list();
    void finish(int serial);

    const FolderRows& m_rows;
    FolderQuery m_query;
    FolderWatch m_watch;
    std::shared_ptr<FolderListing> m_listing; // the running listing
    int m_serial = 0;                         // of the running listing, or of the next one
    QTimer m_timer{this};
    int m_pause_ms = 0;     // between two listings
    bool m_isStale = false; // A listing was due while none could begin.
    bool m_isPaused = false;
};

} // namespace tools::datamodel
