#pragma once

#include <QFile>
#include <QString>

#include <thread>
#include <vector>

/// Holds what is written to a path against a file, byte by byte, in a thread of its own.
class Comparison
{
public:
    explicit Comparison(const QString& expectedPath);
    ~Comparison();
    Q_DISABLE_COPY(Comparison)

    /// A pipe. Empty when there is none; isSame() is false then.
    QString path() const;
    /// Once all has been written and closed: whether it was the content of the file.
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
