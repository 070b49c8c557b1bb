#pragma once

#include "command.h"
#include <zeltools/simulationinterface/simulationinterface.h>

#include <QDateTime>
#include <QElapsedTimer>

#include <chrono>

/// The request of a `zelctl clock` command line.
struct ClockRequest
{
    QString address;
    QDateTime dateTime; ///< to set, in the machine's zone; invalid if the command only listens
    bool isFollowing = false;
    bool isJson = false;
    std::chrono::seconds timeLimit{};
};

/// The simulator's side of a link to a machine: sends the time to set, or prints the times that the
/// machine asks for. It ends the event loop with the exit status of the command.
class ClockLink
{
public:
    /// Both objects must outlive this one.
    ClockLink(const ClockRequest& request,
              zeltools::simulationinterface::SimulationInterface& link);

    /// Handle the signals of the link, and the end of the time limit.
    void onConnectedChanged();
    void onReceived(const QByteArray& data);
    void onTimeout();

private:
    void onClosed();
    void send();
    ExitStatus printSet(const QDateTime& time) const;

    const ClockRequest& m_request;
    zeltools::simulationinterface::SimulationInterface& m_link;
    QElapsedTimer m_sinceSet;
    QElapsedTimer m_sinceConnected;
    QString m_closing; ///< how the last connection ended
    bool m_isSent = false;
};
