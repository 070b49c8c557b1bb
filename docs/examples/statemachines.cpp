// The code of docs/state-machines.md: a drink as data, its recording and its pictures.

//! [drink]
#include <zeltools/declarativestatemachine/declarativestatemachine.h>
#include <zeltools/logging/log.h>

#include <QEventLoop>
#include <QTimer>

using namespace zeltools::declarativestatemachine;
using namespace std::chrono_literals;
using Transition = TransitionDescription;

/// The boards of the machine: a request comes back as a signal.
class Board : public QObject
{
    Q_OBJECT

public:
    void brew() { QTimer::singleShot(20ms, this, &Board::brewed); }

Q_SIGNALS:
    void brewed();
};

StateMachineDescription drinkDescription(Board& board)
{
    const QString heating = QStringLiteral("Heating");
    const QString brewing = QStringLiteral("Brewing");
    const QString venting = QStringLiteral("Venting");
    const QString ready = QStringLiteral("Ready");
    return {{{heating, {}, {Transition::after(20ms, brewing)}},
             {brewing,
              [&board] { board.brew(); },
              {Transition::on(&board, SIGNAL(brewed()), ready), Transition::after(2s, venting)}},
             {venting, {}, {Transition::direct(brewing)}},
             {ready}},
            QStringLiteral("Drink")};
}

MachineRecording makeDrink(Board& board)
{
    DeclarativeStateMachine machine(Log::Beverage);
    machine.setDescription(drinkDescription(board));
    machine.setRecording(1000); // keeps what the machine does; see Recordings
    QEventLoop loop;
    QObject::connect(&machine, &DeclarativeStateMachine::finished, &loop, &QEventLoop::quit);
    machine.start();
    loop.exec();
    return machine.recording();
}
//! [drink]

//! [pause]
class Keys : public QObject
{
    Q_OBJECT

Q_SIGNALS:
    void pause();
    void resume();
};

StateMachineDescription pausableDrink(Board& board, Keys& keys)
{
    const QString preparing = QStringLiteral("Preparing");
    const QString paused = QStringLiteral("Paused");
    const QString whereItWas = QStringLiteral("Where it was");
    std::vector<StateDescription> steps = drinkDescription(board).states;
    const StateDescription ready = steps.back();
    steps.pop_back();
    steps.push_back({whereItWas, {}, {}, {}, {}, StateDescription::DeepHistory});
    return {{{preparing, {}, {Transition::on(&keys, SIGNAL(pause()), paused)}, {}, steps},
             {paused, {}, {Transition::on(&keys, SIGNAL(resume()), whereItWas)}},
             ready}};
}
//! [pause]

//! [save]
#include <QFile>

bool saveRecording(const QString& name, const MachineRecording& recording)
{
    const QByteArray text = recording.toText();
    QFile file(name);
    return file.open(QIODevice::WriteOnly) && file.write(text) == text.size();
}
//! [save]

//! [playback]
#include <zeltools/declarativestatemachine/machineplayer.h>

QString firstDifference(const QByteArray& file)
{
    QString error;
    const std::optional<MachineRecording> recording = MachineRecording::fromText(file, error);
    Board board;
    return recording ? playBack(*recording, drinkDescription(board)) : error;
}
//! [playback]

//! [picture]
#include <zeltools/declarativestatemachine/dotwriter.h>
#include <zeltools/declarativestatemachine/svgwriter.h>

QByteArray picture(const StateMachineDescription& description, const MachineRecording& recording)
{
    QString error; // such as: dot is not installed
    const std::optional<QByteArray> svg = toSvg(toDot(description, recording), error);
    return svg ? *svg : error.toUtf8();
}
//! [picture]

//! [scxml]
#include <zeltools/declarativestatemachine/scxmlreader.h>
#include <zeltools/declarativestatemachine/scxmlwriter.h>

std::optional<StateMachineDescription> readDrink(const QByteArray& document, Board& board,
                                                 QString& error)
{
    ScxmlBindings bindings;
    bindings.signal = [&board](const QString& event) {
        return event == QLatin1String("Board.brewed") ? ExpectedSignal{&board, SIGNAL(brewed())}
                                                      : ExpectedSignal{};
    };
    bindings.guard = [](const QString& condition) -> std::function<bool()> {
        if (condition == QLatin1String("guard1"))
            return [] { return true; };
        return {}; // refuses the document
    };
    return fromScxml(document, bindings, error); // error, such as: line 12: ...
}
//! [scxml]

#include <QCoreApplication>
#include <QTextStream>

namespace
{

void pauseDrink(Board& board)
{
    Keys keys;
    DeclarativeStateMachine machine(Log::Beverage);
    machine.setDescription(pausableDrink(board, keys));
    QEventLoop loop;
    QObject::connect(&machine, &DeclarativeStateMachine::finished, &loop, &QEventLoop::quit);
    machine.start();
    QTimer::singleShot(10ms, &keys, &Keys::pause);
    QTimer::singleShot(50ms, &keys, &Keys::resume);
    loop.exec();
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    Board board;
    QTextStream out(stdout);
    const MachineRecording recording = makeDrink(board);
    const bool isSaved = saveRecording(QStringLiteral("drink.recording"), recording);
    const StateMachineDescription drink = drinkDescription(board);
    out << "The difference to the recording: \"" << firstDifference(recording.toText()) << "\"\n"
        << picture(drink, recording).size() << " bytes of picture\n";
    QString error;
    const auto read = readDrink(toScxml(drink).toUtf8(), board, error);
    out << "From the document: " << (read ? read->states.size() : 0) << " states" << error
        << Qt::endl;
    pauseDrink(board);
    return isSaved && read ? 0 : 1;
}

#include "statemachines.moc"
