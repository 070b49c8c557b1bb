#include "drinkrecording.h"

#include "board.h"
#include "drinkdescription.h"

#include <zeltools/declarativestatemachine/dotwriter.h>
#include <zeltools/declarativestatemachine/machineplayer.h>
#include <zeltools/declarativestatemachine/scxmlwriter.h>
#include <zeltools/declarativestatemachine/svgwriter.h>

#include <QDir>
#include <QFile>

using namespace zeltools::declarativestatemachine;

namespace
{

bool writeFile(const QString& name, const QByteArray& content, QTextStream& out)
{
    QFile file(name);
    const bool isWritten =
        file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && file.flush();
    out << (isWritten ? "Wrote " : "Cannot write ") << name << '\n';
    return isWritten;
}

// Without Graphviz, the text from which it draws must do.
bool drawFile(const QString& name, const QString& dot, QTextStream& out)
{
    QString error;
    const std::optional<QByteArray> picture = toSvg(dot, error);
    if (picture)
        return writeFile(name + QLatin1String(".svg"), *picture, out);
    out << "No picture: " << error << '\n';
    return writeFile(name + QLatin1String(".dot"), dot.toUtf8(), out);
}

} // namespace

bool playBackDrink(const MachineRecording& recording, QTextStream& out)
{
    QString error;
    const std::optional<MachineRecording> read =
        MachineRecording::fromText(recording.toText(), error);
    if (!read) {
        out << "The recording cannot be read: " << error << '\n';
        return false;
    }
    Board bench("g"); // The boards of the engineer work; the recording has the fault.
    QStringList journal;
    StateMachineDescription drink = describeDrink(bench, journal);
    const QString difference = playBack(*read, drink);
    out << "Recorded " << read->entries.size() << " entries; played back: "
        << (difference.isEmpty() ? QStringLiteral("the same way") : difference) << '\n';

    std::vector<TransitionDescription>& brewing = drink.states[2].transitions;
    brewing.pop_back(); // "no flow"
    const QString missing = playBack(*read, drink);
    out << "Played back into a machine that waits for ever: " << missing << '\n';
    return difference.isEmpty() && !missing.isEmpty();
}

bool drawDrink(const StateMachineDescription& drink, const MachineRecording& recording,
               const QString& folder, QTextStream& out)
{
    const QString name = folder + QLatin1String("/drink-cycle");
    return QDir().mkpath(folder) && drawFile(name, toDot(drink), out) &&
           drawFile(name + QLatin1String("-run"), toDot(drink, recording), out) &&
           writeFile(name + QLatin1String(".scxml"), toScxml(drink).toUtf8(), out) &&
           writeFile(name + QLatin1String(".recording"), recording.toText(), out);
}
