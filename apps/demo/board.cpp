#include "board.h"

#include <QTimer>

Board::Board(const QByteArray& answers, std::chrono::milliseconds delay)
    : m_answers(answers)
    , m_delay(delay)
{
}

void Board::grind()
{
    answer([this](bool isWell) {
        m_dose_g = isWell ? 7.2 : 5.9;
        Q_EMIT ground();
    });
}

void Board::brew()
{
    answer([this](bool) { Q_EMIT brewed(); });
}

void Board::fill()
{
    answer([this](bool) { Q_EMIT tankFull(); });
}

void Board::drain()
{
    Q_EMIT tankEmpty();
}

void Board::command()
{
    answer([this](bool isWell) { Q_EMIT answered(isWell); });
}

void Board::answer(const std::function<void(bool isWell)>& emitAnswer)
{
    using std::chrono_literals::operator""ms;
    const char how = m_answers.isEmpty() ? 'g' : m_answers[0];
    m_answers.remove(0, 1);
    if (how != '-')
        QTimer::singleShot(how == 'l' ? 1500ms : m_delay, this, [=] { emitAnswer(how != 'w'); });
}
