#pragma once

class QThreadPool;

namespace zeltools::quick
{

/// What is read. Each kind has threads of its own: readings that hang on the storage of one do not
/// keep the others waiting.
enum class Reading { Events, LogLines, CrashReports, Volumes };

/// The threads that read files for models. They are not those of the application's global pool, so
/// that a storage that hangs blocks neither the application nor its end, which waits for one second
/// at most.
QThreadPool& readingPool(Reading kind);

} // namespace zeltools::quick
