#pragma once

#include <QElapsedTimer>
#include <QtGlobal>

/// Shows one line on a terminal for work that takes longer than half a second. Without a terminal
/// it shows nothing.
class ProgressBar
{
public:
    /// The label must outlive the object.
    explicit ProgressBar(const char* label);
    /// Clears the line.
    ~ProgressBar();
    Q_DISABLE_COPY(ProgressBar)

    void show(qint64 done_B, qint64 total_B);

private:
    const char* m_label;
    bool m_isTerminal;
    QElapsedTimer m_start;
    qint64 m_next_ms = 500;
    bool m_isShown = false;
};
