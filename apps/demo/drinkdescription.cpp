#include "drinkdescription.h"

#include "board.h"

using namespace zeltools::declarativestatemachine;
using namespace std::chrono_literals;
using Way = TransitionDescription;

namespace
{

Way labelled(const QString& label, Way way)
{
    way.description = label;
    return way;
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

    return {
        {{heating, enter(heating), {Way::after(20ms, grinding)}},
         {grinding,
          enter(grinding, [&board] { board.grind(); }),
          {labelled(QStringLiteral("enough"), Way::on(&board, SIGNAL(ground()), brewing, isEnough)),
           labelled(QStringLiteral("too little"),
                    Way::on(&board, SIGNAL(ground()), grinding, isTooLittle))}},
         {brewing,
          enter(brewing, [&board] { board.brew(); }),
          {Way::on(&board, SIGNAL(brewed()), ready),
           labelled(QStringLiteral("no flow"), Way::after(200ms, venting))}},
         {venting, enter(venting), {Way::direct(brewing)}},
         {ready, enter(ready)}},
        QStringLiteral("Drink cycle")};
}
