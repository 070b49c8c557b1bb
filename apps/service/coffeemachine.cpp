#include "coffeemachine.h"

#include <zeltools/logging/log.h>
#include <zeltools/logging/logformatter.h>
#include <zeltools/quick/viewedmachines.h>

using namespace zeltools::declarativestatemachine;
using Transition = TransitionDescription;

namespace
{

// In each series of three drinks, the first one gets too small a dose at first, and the second one
// has no flow.
QByteArray answers()
{
    return QByteArray("wgg"
                      "g-g"
                      "gg")
        .repeated(1000);
}

const QString s_standby = QStringLiteral("Standby");
const QString s_grinding = QStringLiteral("Grinding");
const QString s_brewing = QStringLiteral("Brewing");
const QString s_pouring = QStringLiteral("Pouring");
const QString s_venting = QStringLiteral("Venting");
const QString s_rinsing = QStringLiteral("Rinsing");
const QString s_off = QStringLiteral("Off");

Transition labelled(const QString& label, Transition transition)
{
    transition.description = label;
    return transition;
}

} // namespace

CoffeeMachine::CoffeeMachine(std::chrono::milliseconds pace)
    : m_pace(pace)
    , m_board(answers(), pace / 2)
    , m_machine(Log::Beverage)
{
    const StateMachineDescription description = describe();
    m_machine.setObjectName(description.name);
    m_machine.setDescription(description);
    constexpr int entries = 1000;
    m_machine.setRecording(entries);
    zeltools::quick::ViewedMachines::offer(description.name, &m_machine, description);
}

CoffeeMachine::~CoffeeMachine() = default;

void CoffeeMachine::start()
{
    m_machine.start();
}

StateMachineDescription CoffeeMachine::describe()
{
    const QString drink = QStringLiteral("Drink");
    const State heating{QStringLiteral("Heating"), {}, {Transition::after(m_pace * 2, s_grinding)}};
    const State venting{s_venting, {}, {Transition::after(m_pace, s_brewing)}};
    const auto rinse = [] {
        LogFormatter(LogLevel::Event).logEvent(LogEventModule::CleaningEvent).noquote()
            << "Rinsing";
    };
    return {{{s_standby,
              {},
              {labelled(QStringLiteral("order"), Transition::after(m_pace * 2, drink)),
               Transition::on(this, SIGNAL(switchedOff()), s_off)}},
             {drink,
              {},
              {},
              {},
              {heating, describeGrinding(), describeBrewing(), venting, describePouring()}},
             {s_rinsing, rinse, {Transition::after(m_pace * 3, s_standby)}},
             {s_off}},
            QStringLiteral("Coffee machine")};
}

StateDescription CoffeeMachine::describeGrinding()
{
    constexpr int least_g = 7;
    const auto isEnough = [this] { return m_board.dose_g() >= least_g; };
    const auto isTooLittle = [this] { return m_board.dose_g() < least_g; };
    return {s_grinding,
            [this] { m_board.grind(); },
            {labelled(QStringLiteral("enough"),
                      Transition::on(&m_board, SIGNAL(ground()), s_brewing, isEnough)),
             labelled(QStringLiteral("too little"),
                      Transition::on(&m_board, SIGNAL(ground()), s_grinding, isTooLittle))}};
}

StateDescription CoffeeMachine::describeBrewing()
{
    Transition noFlow = Transition::after(m_pace * 4, s_venting);
    noFlow.guard = [this] { return !isHeld(); };
    return {s_brewing,
            [this] { brew(); },
            {Transition::on(&m_board, SIGNAL(brewed()), s_pouring),
             labelled(QStringLiteral("no flow"), noFlow)},
            [this] { m_isBrewing = false; }};
}

StateDescription CoffeeMachine::describePouring()
{
    constexpr int drinksPerRinse = 3;
    Transition rinse =
        labelled(QStringLiteral("every third"), Transition::after(m_pace, s_rinsing));
    rinse.guard = [this] { return m_drinks % drinksPerRinse == 0; };
    Transition end = Transition::after(m_pace, s_standby);
    end.guard = [this] { return m_drinks % drinksPerRinse != 0; };
    return {s_pouring, [this] { serve(); }, {rinse, end}};
}

void CoffeeMachine::brew()
{
    m_isBrewing = true;
    if (!isHeld())
        m_board.brew();
    LogFormatter(LogLevel::Info).log(Log::Beverage).noquote()
        << "Brewing espresso" << m_drinks + 1 << "with" << m_board.dose_g() << "g";
}

void CoffeeMachine::serve()
{
    ++m_drinks;
    LogFormatter(LogLevel::Event).logEvent(LogEventModule::DispensedDrinkEvent).noquote()
        << "espresso" << m_drinks;
}
