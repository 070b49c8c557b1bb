#pragma once

/// Waits for what a followed file gets, until SIGINT or SIGTERM comes or the reader of the standard
/// output goes. From its construction on these signals no longer end the process.
class Follow
{
public:
    Follow();
    /// Waits a tenth of a second. Returns false when following is to end.
    bool wait() const;
    /// Whether one of the signals has come.
    bool isInterrupted() const;
};

/// Whether nobody reads the standard output any more. It waits up to the given time for that.
bool isReaderGone(int patience_ms);
