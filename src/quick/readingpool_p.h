#pragma once

class QThreadPool;

namespace zeltools::quick
{

/// The threads that read files for models. They are not those of the application's global pool, so
/// that a storage that hangs blocks neither the application nor its end, which waits for one second
/// at most.
QThreadPool& readingPool();

} // namespace zeltools::quick
