// Keeps writers of one log file apart for the length of one record: to find the end and to write there are two steps,
// between which another process would write to the same place.
#pragma once

#include <windows.h>

namespace tvk
{
/// A lock on one byte far behind the end of a file, held while the object lives. Nobody reads or writes there, so
/// viewers and writers that do not know the lock are left alone. The wait is bounded: when it is over, or when the file
/// cannot be locked at all, the object holds nothing and the record is written all the same.
class RecordLock
{
public:
    explicit RecordLock(HANDLE file);
    ~RecordLock();
    RecordLock(const RecordLock&) = delete;
    RecordLock& operator=(const RecordLock&) = delete;

private:
    HANDLE m_file;
    bool m_held;
};
} // namespace tvk
