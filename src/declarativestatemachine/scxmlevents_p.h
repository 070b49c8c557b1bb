#pragma once

#include "declarativestatemachine/scxmldocument_p.h"

#include <QHash>
#include <QSet>

namespace zeltools::declarativestatemachine
{

/// The events that the states of a document send to themselves, and which transitions take them.
/// The document must outlive this object. All functions return false for what a description cannot
/// say, with line and reason in `error`.
class ScxmlEvents
{
public:
    struct Sender
    {
        int state = 0;
        std::optional<std::chrono::milliseconds> delay = {}; ///< none for an internal event
        int receivers = 0;
    };

    ScxmlEvents(const ScxmlDocument& document, QString& error);

    /// Finds all events. Each is sent by one state, which cancels it if it has a delay.
    bool collect();

    /// Counts the transition of that state as a receiver of its event. A timeout has one receiver.
    /// `sender` is null for an event from outside.
    bool receive(int state, const ScxmlDocument::Transition& transition, const Sender*& sender);

    /// Whether each event has a receiver, once all transitions have been counted.
    bool areAllReceived();

    /// Whether the state sends itself an internal event.
    bool raises(int state) const { return m_raises[size_t(state)]; }

private:
    bool fail(qint64 line, const QString& reason, const QString& event);
    bool collect(int state);
    bool isAlone(const QString& event, qint64 line);

    const ScxmlDocument& m_document;
    QString& m_error;
    QHash<QString, Sender> m_senders;
    QSet<QString> m_received;
    QSet<QString> m_ids;
    std::vector<bool> m_raises;
};

} // namespace zeltools::declarativestatemachine
