// Points in time, to the second.
#pragma once

#include "afx/CString.h"
#include <ctime>

/// A point in time: seconds since 1 January 1970, UTC. The getters answer local time.
class FRAMEWORK_API CTime
{
public:
    CTime(); ///< 0
    CTime(time_t time);
    /// Local time; `dst`: 0 standard time, above 0 daylight time, below 0 the system decides.
    CTime(int year, int month, int day, int hour, int minute, int second, int dst = -1);
    CTime(WORD dosDate, WORD dosTime, int dst = -1);
    CTime(const SYSTEMTIME& systemTime, int dst = -1); ///< local time
    CTime(const FILETIME& fileTime, int dst = -1);     ///< universal time

    static CTime GetCurrentTime();

    time_t GetTime() const;
    int GetYear() const;
    int GetMonth() const; ///< 1 to 12
    int GetDay() const;   ///< 1 to 31
    int GetHour() const;
    int GetMinute() const;
    int GetSecond() const;
    int GetDayOfWeek() const;                     ///< 1 Sunday to 7 Saturday
    struct tm* GetGmtTm(struct tm* result) const; ///< null when the time cannot be expressed
    struct tm* GetLocalTm(struct tm* result) const;
    bool GetAsSystemTime(SYSTEMTIME& result) const; ///< local time

    bool operator==(CTime time) const;
    bool operator!=(CTime time) const;
    bool operator<(CTime time) const;
    bool operator>(CTime time) const;
    bool operator<=(CTime time) const;
    bool operator>=(CTime time) const;

    /// Text by the codes of strftime, in local or universal time; the format may be a string resource.
    CString Format(LPCSTR format) const;
    CString Format(UINT formatId) const;
    CString FormatGmt(LPCSTR format) const;
    CString FormatGmt(UINT formatId) const;

private:
    time_t m_time;
};
