#include "quick/bundlewriter_p.h"

namespace zeltools::quick
{

BundleWriter::~BundleWriter() = default;

} // namespace zeltools::quick
