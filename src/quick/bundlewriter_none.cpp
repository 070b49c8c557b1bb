#include "quick/bundlewriter_p.h"

namespace zeltools::quick
{

std::unique_ptr<BundleWriter> BundleWriter::create()
{
    return nullptr;
}

} // namespace zeltools::quick
