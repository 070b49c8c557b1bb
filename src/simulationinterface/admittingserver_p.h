#pragma once

#include <QTcpServer>

#include <functional>
#include <utility>

#include <unistd.h>

namespace zeltools::simulationinterface
{

/// A server that makes no objects for the connections that it closes immediately, so that a peer
/// which connects again and again costs no memory.
class AdmittingServer : public QTcpServer
{
public:
    /// `isAdmitted` decides on each new connection, whose descriptor it gets.
    AdmittingServer(std::function<bool(int)> isAdmitted, QObject* parent)
        : QTcpServer(parent)
        , m_isAdmitted(std::move(isAdmitted))
    {
    }

protected:
    void incomingConnection(qintptr descriptor) override
    {
        if (m_isAdmitted(static_cast<int>(descriptor)))
            QTcpServer::incomingConnection(descriptor);
        else
            ::close(static_cast<int>(descriptor));
    }

private:
    const std::function<bool(int)> m_isAdmitted;
};

} // namespace zeltools::simulationinterface
