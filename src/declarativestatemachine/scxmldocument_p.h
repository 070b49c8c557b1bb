#pragma once

#include <zeltools/declarativestatemachine/statemachinedescription.h>

#include <QStringList>

#include <optional>

namespace zeltools::declarativestatemachine
{

/// The elements of a State Chart XML document, as far as a description can say what they mean. What
/// they refer to has not been looked up. An attribute that is absent is a null text.
struct ScxmlDocument
{
    struct Transition
    {
        qint64 line = 0;
        QString event = {};
        QString condition = {};
        QString target = {};
        QString label = {};
        bool isImplied = false; ///< the description has no such transition
    };
    /// An event that a state sends to itself when it is entered.
    struct SentEvent
    {
        qint64 line = 0;
        QString event = {};
        QString id = {};
        std::optional<std::chrono::milliseconds> delay = {}; ///< none for an internal event
    };
    struct State
    {
        qint64 line = 0;
        int parent = -1;
        int depth = 0;
        StateDescription::Kind kind = StateDescription::Ordinary;
        QString id = {};
        QString name = {};
        QString initial = {};
        std::chrono::milliseconds timeLimit{0};
        std::vector<Transition> transitions = {};
        std::vector<SentEvent> sentEvents = {};
        QStringList canceledIds = {};

        bool isHistory() const
        {
            return kind == StateDescription::ShallowHistory ||
                   kind == StateDescription::DeepHistory;
        }
    };

    /// The first one is the machine itself. A state comes before its children.
    std::vector<State> states = {};

    /// Returns no value for a document that says anything else, with line and reason in `error`.
    static std::optional<ScxmlDocument> read(const QByteArray& text, QString& error);
};

} // namespace zeltools::declarativestatemachine
