#include "servicesocket_p.h"

int servicesocket::send(const QByteArray& socketName, const QByteArray& message,
                        std::chrono::milliseconds patience)
{
    return sendDatagram(socketName, message, patience);
}
