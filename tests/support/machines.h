#pragma once

#include "machine.h"

#include <QTest>

#include <utility>

/// Helpers for tests that run the library on another machine than this one.
namespace support
{

/// A class of the library whose protected constructors a test may call.
template <typename Class>
class Opened final : public Class
{
public:
    template <typename... Arguments>
    explicit Opened(Arguments&&... arguments)
        : Class(std::forward<Arguments>(arguments)...)
    {
    }
};

inline zeltools::Machine machine(bool isBoard)
{
    zeltools::Machine machine;
    machine.isBoard = isBoard;
    return machine;
}

inline void addMachineRows()
{
    QTest::addColumn<bool>("isBoard");
    QTest::newRow("desktop") << false;
    QTest::newRow("board") << true;
}

} // namespace support
