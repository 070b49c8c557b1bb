#include "options.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QStringList>
#include <QTextStream>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <iterator>

using zeltools::quick::Access;

namespace
{

const std::array<QString, 3> s_levels{QStringLiteral("readonly"), QStringLiteral("operator"),
                                      QStringLiteral("technician")};
const QString s_smallSize = QStringLiteral("800x480");
const QString s_largeSize = QStringLiteral("1280x800");

void addOptions(QCommandLineParser& parser)
{
    const auto add = [&parser](const char* name, const char* description,
                               const char* value = nullptr, const QString& fallback = {}) {
        parser.addOption(
            {QLatin1String(name), QLatin1String(description), QLatin1String(value), fallback});
    };
    add("folder", "Keep the machine's folders in <DIR>.", "DIR");
    add("size", "The size of the display: 800x480 or 1280x800, the default.", "SIZE", s_largeSize);
    add("light", "Use the light palette.");
    add("language", "The language of the screen, such as ar.", "LANGUAGE");
    add("level", "The access level: readonly (the default), operator or technician.", "LEVEL",
        s_levels[Access::ReadOnly]);
    add("offscreen", "Leave a picture of each page in <DIR>, without a display.", "DIR");
    add("measure-start", "Print the time from the start to the first frame.");
}

[[noreturn]] void refuse(const QString& reason)
{
    QTextStream(stderr) << reason << '\n';
    std::exit(2);
}

} // namespace

Options Options::parse(int argc, char** argv)
{
    QStringList arguments;
    std::transform(argv, argv + argc, std::back_inserter(arguments),
                   [](const char* argument) { return QString::fromLocal8Bit(argument); });
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("The service screen of an imaginary coffee machine."));
    parser.addHelpOption();
    addOptions(parser);
    if (!parser.parse(arguments))
        refuse(parser.errorText());
    if (parser.isSet(QStringLiteral("help")) || parser.isSet(QStringLiteral("help-all"))) {
        const QCoreApplication application(argc, argv); // The parser asks it for its name.
        parser.showHelp();
    }
    if (!parser.positionalArguments().isEmpty())
        refuse(QStringLiteral("There is nothing to do with ") +
               parser.positionalArguments().constFirst());

    Options options;
    options.folder = parser.value(QStringLiteral("folder"));
    options.isLight = parser.isSet(QStringLiteral("light"));
    options.language = parser.value(QStringLiteral("language"));
    options.pictureFolder = parser.value(QStringLiteral("offscreen"));
    options.isStartMeasured = parser.isSet(QStringLiteral("measure-start"));
    const QString size = parser.value(QStringLiteral("size"));
    if (size == s_smallSize)
        options.size = {800, 480};
    else if (size != s_largeSize)
        refuse(QStringLiteral("No such size: ") + size);
    const QString level = parser.value(QStringLiteral("level"));
    const auto* const found = std::find(s_levels.begin(), s_levels.end(), level);
    if (found == s_levels.end())
        refuse(QStringLiteral("No such level: ") + level);
    options.level = Access::Level(found - s_levels.begin());
    return options;
}
