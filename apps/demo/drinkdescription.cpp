#include "drinkdescription.h"

#include "board.h"

using namespace zeltools::declarativestatemachine;
using namespace std::chrono_literals;
using Transition = TransitionDescription;

namespace
{

Transition labelled(const QString& label, Transition transition)
{
    transition.description = label;
    return transition;
}

} // namespace

StateMachineDescription describeDrink(Board& board, QStringList& journal)
{
    const QString heating = QStringLiteral("Heating");
    const QString grinding = QStringLiteral("Grinding");
    const QString brewing = QStringLiteral("Brewing");
    const QString venting = QStringLiteral("Venting");
    const QString ready = QStringLiteral("Ready");
    const auto enter = [&](const QString& state, const std::function<void()>& action = {}) {
        return [&journal, state, action] {
            journal.append(state);
            if (action)
                action();
        };
    };
    const auto isEnough = [&board] { return board.dose_g() >= 7; };
    const auto isTooLittle = [&board] { return board.dose_g() < 7; };

    return {{{heating, enter(heating), {Transition::after(20ms, grinding)}},
             {grinding,
              enter(grinding, [&board] { board.grind(); }),
              {labelled(QStringLiteral("enough"),
                        Transition::on(&board, SIGNAL(ground()), brewing, isEnough)),
               labelled(QStringLiteral("too little"),
                        Transition::on(&board, SIGNAL(ground()), grinding, isTooLittle))}},
             {brewing,
              enter(brewing, [&board] { board.brew(); }),
              {Transition::on(&board, SIGNAL(brewed()), ready),
               labelled(QStringLiteral("no flow"), Transition::after(200ms, venting))}},
             {venting, enter(venting), {Transition::direct(brewing)}},
             {ready, enter(ready)}},
            QStringLiteral("Drink cycle")};
}
