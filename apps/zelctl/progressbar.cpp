#include "progressbar.h"

#include "words.h"

#include <QByteArray>

#include <cstdio>

#include <unistd.h>

ProgressBar::ProgressBar(const char* label)
    : m_label(label)
    , m_isTerminal(isatty(STDERR_FILENO) != 0)
{
    m_start.start();
}

ProgressBar::~ProgressBar()
{
    if (m_isShown)
        std::fputs("\r\x1b[K", stderr);
}

void ProgressBar::show(qint64 done_B, qint64 total_B)
{
    if (!m_isTerminal || total_B <= 0 || m_start.elapsed() < m_next_ms)
        return;
    constexpr int interval_ms = 100;
    constexpr int width = 40;
    m_next_ms = m_start.elapsed() + interval_ms;
    m_isShown = true;
    const auto filled = static_cast<int>(done_B * width / total_B);
    std::fprintf(stderr, "\r%s [%s%s] %3d %%", qUtf8Printable(Zelctl::tr(m_label)),
                 QByteArray(filled, '#').constData(), QByteArray(width - filled, '.').constData(),
                 static_cast<int>(done_B * 100 / total_B));
}
