#include "dimensions.h"

#include <cmath>

namespace zeltools
{

Dimensions::~Dimensions() = default;

Dimensions* Dimensions::get()
{
    static Dimensions dimensions;
    return &dimensions;
}

double Dimensions::celsiusToFahrenheit(double celsius) const
{
    return std::round((1.8 * celsius + 32) * 10) / 10;
}

} // namespace zeltools
