#include "diag/internal/RecordLock.h"
#include <atomic>

namespace tvk
{
namespace
{
// A writer holds the lock for some 50 microseconds, on a loaded machine for as long as it waits for its turn. Who holds
// it longer is stopped, in a debugger perhaps: after one long wait the others go on with short ones, so that a
// process that writes hundreds of records does not stand still, until the lock has been free again.
constexpr ULONGLONG LongWait = 500; // milliseconds
constexpr ULONGLONG ShortWait = 2;
std::atomic<bool> HolderStopped = false;

OVERLAPPED LockedByte()
{
    OVERLAPPED place = {};
    place.Offset = 0;
    place.OffsetHigh = 0x7FFF0000; // 2^63 less 2^48: no log grows there
    return place;
}

bool Acquire(HANDLE file)
{
    ULONGLONG deadline = 0;
    for (unsigned attempt = 0;; ++attempt)
    {
        OVERLAPPED place = LockedByte();
        if (::LockFileEx(file, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &place))
        {
            HolderStopped = false;
            return true;
        }
        if (::GetLastError() != ERROR_LOCK_VIOLATION)
            return false;
        const ULONGLONG now = ::GetTickCount64();
        if (!deadline)
            deadline = now + (HolderStopped ? ShortWait : LongWait);
        if (now >= deadline)
        {
            HolderStopped = true;
            return false;
        }
        ::Sleep(attempt < 4 ? 0 : 1);
    }
}
} // namespace

RecordLock::RecordLock(HANDLE file) : m_file(file), m_held(Acquire(file)) {}

RecordLock::~RecordLock()
{
    OVERLAPPED place = LockedByte();
    if (m_held)
        ::UnlockFileEx(m_file, 0, 1, 0, &place);
}
} // namespace tvk
