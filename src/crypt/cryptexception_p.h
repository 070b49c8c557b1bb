#pragma once

#include "simplecrypt.h"

#include <exception>
#include <new>
#include <utility>

/// Ends an operation of SimpleCrypt from any depth, as memory that runs out does. No caller sees
/// it: SimpleCrypt::guarded() turns it into a failed result.
class CryptException : public std::exception
{
public:
    explicit CryptException(SimpleCrypt::Failure failure)
        : m_failure(std::move(failure))
    {
    }
    const SimpleCrypt::Failure& failure() const { return m_failure; }

private:
    SimpleCrypt::Failure m_failure;
};

// The handlers must not allocate: the text of the missing memory is a constant.
template <typename Result, typename Operation>
Result SimpleCrypt::guarded(Result failed, const Operation& operation)
{
    m_failure = Failure();
    try {
        return operation();
    } catch (const CryptException& exception) {
        m_failure = exception.failure();
    } catch (const std::bad_alloc&) {
        m_failure = {CryptFileAccess, {}, QStringLiteral("Cannot allocate memory")};
    } catch (const std::exception&) { // of the random source or of a caller's Progress
        m_failure = {CryptFileAccess, {}, {}};
    }
    m_lastError = m_failure.code;
    return failed;
}
