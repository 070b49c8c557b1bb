#pragma once

#include "declarativestatemachine/declarativestatemachine.h"
#include "logging/log.h"
#include "logging/lognode.h"
#include "signalemitter.h"

#include <QPointer>

using namespace zeltools::declarativestatemachine;

/// A machine with a list of its log lines and of the actions of its states.
class Story : public QObject
{
public:
    Story()
    {
        connect(LogNode::instance(), &LogNode::logged, this,
                [this](LogLevel::Level level, const LogModules& modules, const QString& line) {
                    const bool isRight = modules == Log::Cleaning || level == LogLevel::Error;
                    events.append(isRight ? line.section(", file", 0, 0) : "wrong module");
                });
    }
    ~Story() override { delete machine; }

    StateDescription state(const QString& name,
                           const std::vector<TransitionDescription>& transitions = {})
    {
        return {name, [=] { add(name); }, transitions, [=] { add("out of " + name); }};
    }
    TransitionDescription onNotify(const QString& target, const std::function<bool()>& guard = {})
    {
        return TransitionDescription::on(&emitter, SIGNAL(notify()), target, guard);
    }
    /// A transition that the emitter triggers when it gets this name.
    TransitionDescription onName(const QString& name, const QString& target)
    {
        auto transition =
            TransitionDescription::on(&emitter, SIGNAL(objectNameChanged(QString)), target);
        transition.argumentsGuard = [name](const QVariantList& all) {
            return all == QVariantList{name};
        };
        return transition;
    }
    void run(const std::vector<StateDescription>& states)
    {
        machine->setDescription({states});
        machine->start();
    }
    QString text() const { return events.join('\n') + '\n'; }
    void add(const QString& event)
    {
        events.append(event);
        if (event == when)
            then();
    }

    QPointer<DeclarativeStateMachine> machine{new DeclarativeStateMachine(Log::Cleaning)};
    zeltools::SignalEmitter emitter;
    QStringList events;
    QString when; // The event after which then() is called.
    std::function<void()> then;
};
