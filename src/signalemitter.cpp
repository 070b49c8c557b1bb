#include "signalemitter.h"

namespace zeltools
{

SignalEmitter::SignalEmitter(QObject* parent)
    : QObject(parent)
{
}

SignalEmitter::~SignalEmitter() = default;

} // namespace zeltools
