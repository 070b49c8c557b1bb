#pragma once

#include <zeltools/zeltools_export.h>

#include <QObject>

namespace zeltools
{

/// Converts units for the user interface.
class ZELTOOLS_EXPORT Dimensions : public QObject
{
    Q_OBJECT

public:
    ~Dimensions() override;

    /// The process-wide object, destroyed at exit. Any thread may call it.
    static Dimensions* get();

    /// Converts a temperature and rounds it to one decimal, with halves away from zero.
    Q_INVOKABLE double celsiusToFahrenheit(double celsius) const;

private:
    Dimensions() = default;
};

} // namespace zeltools
