#pragma once

#include <zeltools/envvar/envvarint.h>

#include <QString>

//! [switches]
/// The switches that this machine adds to the catalogue of the library.
namespace switches
{
extern zeltools::envvar::EnvVarInt dose_g;
}
//! [switches]

//! [class]
/// Loads the switches, prepares the folders and opens the log of the machine. The destructor closes
/// the log. A process has one object, which lives in main().
class Machine
{
    Q_DISABLE_COPY(Machine)

public:
    /// A wrong environment file is one Error line; the machine then works with the switches that
    /// come before the wrong one in the order of their names.
    Machine(const QString& folder, const QString& environmentFile);
    ~Machine();
};
//! [class]
