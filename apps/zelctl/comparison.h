#pragma once

#include <QFile>
#include <QString>

#include <thread>
#include <vector>

/// Compares the bytes that are written to a path with a file, in a thread of its own.
class Comparison
{
public:
    explicit Comparison(const QString& expectedPath);
    ~Comparison();
    Q_DISABLE_COPY(Comparison)

    /// The path of a pipe to write to. Empty if there is none; isSame() is false then.
    QString path() const;
    /// Whether the bytes were the content of the file. Call it once all is written and closed.
    bool isSame();

private:
    void compare();

    QFile m_expected;
    // Allocated before the thread, which must not throw.
    std::vector<char> m_found;
    std::vector<char> m_wanted;
    int m_ends[2]{-1, -1};
    bool m_isSame = true;
    std::thread m_thread;
};
