#pragma once

#include "simplecrypt.h"

#include <exception>
#include <new>
#include <utility>

/// Ends an operation of SimpleCrypt from any depth, as std::bad_alloc does when memory runs out. No
/// caller of SimpleCrypt sees either: recorded() turns them into a failed result.
class CryptException : public std::exception
{
public:
    explicit CryptException(SimpleCrypt::Failure failure)
        : m_failure(std::move(failure))
    {
    }
    /// For an input, possibly a file, that exceeds SimpleCrypt::largestInMemory_B.
    static CryptException tooLarge(const QString& path)
    {
        return CryptException(
            {SimpleCrypt::CryptFileAccess, path, QStringLiteral("File too large")});
    }
    const SimpleCrypt::Failure& failure() const { return m_failure; }

private:
    SimpleCrypt::Failure m_failure;
};

/// Returns the result of an operation. If the operation throws, the reason is recorded in the
/// outcome of the SimpleCrypt and `failed` is returned.
// The handlers must not allocate: the text for missing memory is a constant.
template <typename Outcome, typename Operation>
auto recorded(Outcome& outcome, const Operation& operation, decltype(operation()) failed = {})
{
    outcome.failure = {};
    try {
        return operation();
    } catch (const CryptException& exception) {
        outcome.failure = exception.failure();
    } catch (const std::bad_alloc&) {
        outcome.failure = {
            SimpleCrypt::CryptFileAccess, {}, QStringLiteral("Cannot allocate memory")};
    } catch (const std::exception&) { // thrown by the random source or a caller's Progress
        outcome.failure.code = SimpleCrypt::CryptFileAccess;
    }
    outcome.lastError = outcome.failure.code;
    return failed;
}

/// The same for an operation that records no failure: the result is then empty.
template <typename Operation>
auto unrecorded(const Operation& operation) -> decltype(operation())
{
    try {
        return operation();
    } catch (const std::exception&) {
        return {};
    }
}
