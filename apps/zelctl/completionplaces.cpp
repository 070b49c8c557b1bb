#include "completionplaces.h"

#include <algorithm>

namespace
{

void add(CompletionPlace& place, const CommandParser::Value& value)
{
    place.hasFiles = place.hasFiles || value.kind == CommandParser::File;
    place.hasFolders = place.hasFolders || value.kind == CommandParser::Folder;
    place.words += value.words;
}

} // namespace

QVector<CompletionPlace> completionPlaces(const CommandParser& parser)
{
    QVector<CompletionPlace> places;
    for (const CommandParser::Row& usage : parser.description().usages) {
        CompletionPlace next;
        const QStringList words = CommandParser::wordsOf(QString::fromLatin1(usage.name));
        for (const QString& word : words) {
            auto place = std::find_if(places.begin(), places.end(), [&next](const auto& other) {
                return other.position == next.position && other.wordsBefore == next.wordsBefore;
            });
            if (place == places.end())
                place = places.insert(place, next);
            const bool isTyped = CommandParser::isTyped(word);
            add(*place, isTyped ? CommandParser::Value{"", "", CommandParser::OneOf, {word}}
                                : parser.valueOf(word));
            place->words.removeDuplicates();
            if (isTyped)
                next.wordsBefore.append({next.position, word});
            ++next.position;
        }
    }
    return places;
}

CompletionPlace valuePlace(const CommandParser& parser, const CommandParser::Option& option)
{
    CompletionPlace place;
    add(place, parser.valueOf(QString::fromLatin1(option.valueName)));
    return place;
}
