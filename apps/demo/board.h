#pragma once

#include <QByteArray>
#include <QObject>
#include <QVariant>

#include <chrono>
#include <functional>

/// Simulates the boards of the machine. Signals answer the requests, most of them from the event
/// loop; some answers are wrong, late or missing.
class Board : public QObject
{
    Q_OBJECT

public:
    /// Each letter determines the answer to one request: "g" a good one, "w" a wrong one, "l" one
    /// after the timeout of the caller, "-" none. Further requests get a good answer. An answer
    /// comes after the delay.
    explicit Board(const QByteArray& answers,
                   std::chrono::milliseconds delay = std::chrono::milliseconds(5));

    void grind();   ///< emits ground(); a wrong dose is too small
    void brew();    ///< emits brewed()
    void fill();    ///< emits tankFull()
    void drain();   ///< emits tankEmpty() before it returns
    void command(); ///< emits answered()

    double dose_g() const { return m_dose_g; }

Q_SIGNALS:
    void ground();
    void brewed();
    void tankFull();
    void tankEmpty();
    void answered(const QVariant& isAccepted);

private:
    void answer(const std::function<void(bool isWell)>& emitAnswer);

    QByteArray m_answers;
    std::chrono::milliseconds m_delay;
    double m_dose_g = 0;
};
