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

    /// The process-wide object, destroyed at exit. Safe to call from any thread.
    static Dimensions* get();

    /// Rounded to one decimal, halves away from zero.
    Q_INVOKABLE double celsiusToFahrenheit(double celsius) const;

private:
    Dimensions() = default;
};

} // namespace zeltools
