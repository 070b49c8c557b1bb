#pragma once

#include <zeltools/simulationinterface/serversimulationinterface.h>

#include <QObject>
#include <QTcpServer>
#include <QTcpSocket>

#include <memory>

namespace zeltools::simulatorkit
{

/// The end of one connection at a time, for bytes as they are: it listens, and closes further
/// connections at once, or it connects when it is told to. It buffers at most 64 KiB of what
/// arrives; the peer has to wait until the owner reads.
///
/// A peer that hangs up and connects again at once is served as soon as its first connection has
/// been read to the end. A TCP peer without power or network is lost within 10 s.
class LinkEnd : public QObject
{
    Q_OBJECT

public:
    LinkEnd();
    ~LinkEnd() override;

    /// Takes an address as SimulationInterfaceAddress has it, and begins to listen if it says so.
    /// Returns the reason of a failure, or an empty text.
    QString open(const QString& rawAddress);
    bool isListening() const { return m_server != nullptr && m_server->isListening(); }
    /// The raw address with the real port.
    QString address() const;

    /// Begins to connect, unless this end listens or has a connection or begins it already.
    void connectToPeer();
    bool isConnected() const { return m_isConnected; }
    /// Whether there is neither a connection nor the rest of one.
    bool isIdle() const { return m_socket == nullptr; }
    /// Sends what was written and hangs up. The connection is closed when the peer has hung up too,
    /// or after three seconds; until then, what arrives is dropped.
    void close();
    /// While an end is held, a connection that the peer has ended counts as connected.
    void hold(bool isHeld);
    /// Closes the connection as close() does, and no longer listens.
    void closeForGood();

    /// Returns what has arrived, at most so many bytes, also after the peer has disconnected.
    QByteArray read(qint64 limit_B);
    /// Sends the bytes, or as many as the system takes, and keeps the others.
    void write(const QByteArray& bytes);
    qint64 unsent_B() const { return m_socket != nullptr ? m_socket->bytesToWrite() : 0; }

Q_SIGNALS:
    void connected();
    /// No connection could be made.
    void failed(const QString& error);
    /// Bytes have arrived, or there is room for more.
    void changed();
    /// The peer has disconnected. The bytes that it had sent can be read while the receivers run.
    void disconnected();
    /// The end is idle again: close() is done, or one of failed() and disconnected() was emitted.
    void ended();

private:
    void accept();
    void take(QTcpSocket* socket);
    void attach(QTcpSocket* socket);
    void begin(QTcpSocket* socket);
    void end(QTcpSocket* socket);
    void change();
    void hangUp();

    QString m_address;
    // The endpoint makes the socket that listens; it gets no connection.
    std::unique_ptr<simulationinterface::ServerSimulationInterface> m_listener;
    QTcpServer* m_server = nullptr;
    QTcpSocket* m_socket = nullptr;
    QTcpSocket* m_waiting = nullptr; // accepted while the peer of m_socket has already hung up
    QString m_error;
    bool m_isConnected = false;
    bool m_isClosing = false;
    bool m_isHeld = false;
};

} // namespace zeltools::simulatorkit
