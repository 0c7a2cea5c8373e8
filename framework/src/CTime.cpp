// Times: seconds since 1970, taken apart and formatted by the C library.
#include "afx/CTime.h"
#include "afx/CException.h"
#include <array>
#include <cstdio>

namespace
{
constexpr LONGLONG FileTimeUnitsPerSecond = 10'000'000;
constexpr LONGLONG SecondsFrom1601To1970 = 11'644'473'600;

time_t FromLocal(int year, int month, int day, int hour, int minute, int second, int dst)
{
    struct tm parts = {};
    parts.tm_year = year - 1900;
    parts.tm_mon = month - 1;
    parts.tm_mday = day;
    parts.tm_hour = hour;
    parts.tm_min = minute;
    parts.tm_sec = second;
    parts.tm_isdst = dst;
    return std::mktime(&parts);
}

// The formats come from the callers: there is nothing for the compiler to check.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
CString FormatParts(LPCSTR format, const struct tm* parts)
{
    CString result;
    if (!parts || !format || !*format)
        return result;
    // strftime answers 0 both for a buffer too small and for an empty result: a character in front tells them apart
    CString guarded(' ');
    guarded += format;
    for (int size = 128; size <= 65536; size *= 2)
    {
        const size_t length = std::strftime(result.GetBuffer(size), static_cast<size_t>(size), guarded, parts);
        result.ReleaseBuffer(static_cast<int>(length));
        if (length)
            return result.Mid(1);
    }
    return result;
}
#pragma GCC diagnostic pop

CString TextOf(UINT id)
{
    CString text;
    text.LoadString(id);
    return text;
}
} // namespace

CTime::CTime() : m_time(0) {}

CTime::CTime(time_t time) : m_time(time) {}

CTime::CTime(int year, int month, int day, int hour, int minute, int second, int dst)
    : m_time(FromLocal(year, month, day, hour, minute, second, dst))
{
}

CTime::CTime(WORD dosDate, WORD dosTime, int dst)
    : CTime((dosDate >> 9) + 1980, (dosDate >> 5) & 0x0F, dosDate & 0x1F, dosTime >> 11, (dosTime >> 5) & 0x3F,
            (dosTime & 0x1F) * 2, dst)
{
}

CTime::CTime(const SYSTEMTIME& systemTime, int dst)
    : m_time(systemTime.wYear < 1900 ? 0
                                     : FromLocal(systemTime.wYear, systemTime.wMonth, systemTime.wDay, systemTime.wHour,
                                                 systemTime.wMinute, systemTime.wSecond, dst))
{
}

CTime::CTime(const FILETIME& fileTime, int)
    : m_time(static_cast<time_t>(
          static_cast<LONGLONG>((static_cast<ULONGLONG>(fileTime.dwHighDateTime) << 32) | fileTime.dwLowDateTime) /
              FileTimeUnitsPerSecond -
          SecondsFrom1601To1970))
{
}

CTime CTime::GetCurrentTime()
{
    return std::time(nullptr);
}

time_t CTime::GetTime() const
{
    return m_time;
}

struct tm* CTime::GetGmtTm(struct tm* result) const
{
    const struct tm* parts = std::gmtime(&m_time);
    if (!parts || !result)
        return nullptr;
    *result = *parts;
    return result;
}

struct tm* CTime::GetLocalTm(struct tm* result) const
{
    const struct tm* parts = std::localtime(&m_time);
    if (!parts || !result)
        return nullptr;
    *result = *parts;
    return result;
}

bool CTime::GetAsSystemTime(SYSTEMTIME& result) const
{
    struct tm parts;
    if (!GetLocalTm(&parts))
        return false;
    result = {static_cast<WORD>(parts.tm_year + 1900), static_cast<WORD>(parts.tm_mon + 1),
              static_cast<WORD>(parts.tm_wday),        static_cast<WORD>(parts.tm_mday),
              static_cast<WORD>(parts.tm_hour),        static_cast<WORD>(parts.tm_min),
              static_cast<WORD>(parts.tm_sec),         0};
    return true;
}

int CTime::GetYear() const
{
    struct tm parts;
    return GetLocalTm(&parts) ? parts.tm_year + 1900 : 0;
}

int CTime::GetMonth() const
{
    struct tm parts;
    return GetLocalTm(&parts) ? parts.tm_mon + 1 : 0;
}

int CTime::GetDay() const
{
    struct tm parts;
    return GetLocalTm(&parts) ? parts.tm_mday : 0;
}

int CTime::GetHour() const
{
    struct tm parts;
    return GetLocalTm(&parts) ? parts.tm_hour : -1;
}

int CTime::GetMinute() const
{
    struct tm parts;
    return GetLocalTm(&parts) ? parts.tm_min : -1;
}

int CTime::GetSecond() const
{
    struct tm parts;
    return GetLocalTm(&parts) ? parts.tm_sec : -1;
}

int CTime::GetDayOfWeek() const
{
    struct tm parts;
    return GetLocalTm(&parts) ? parts.tm_wday + 1 : 0;
}

#define COMPARISON(symbol)                                                                                             \
    bool CTime::operator symbol(CTime time) const                                                                      \
    {                                                                                                                  \
        return m_time symbol time.m_time;                                                                              \
    }
COMPARISON(==)
COMPARISON(!=)
COMPARISON(<)
COMPARISON(>)
COMPARISON(<=)
COMPARISON(>=)
#undef COMPARISON

CString CTime::Format(LPCSTR format) const
{
    struct tm parts;
    return FormatParts(format, GetLocalTm(&parts));
}

CString CTime::Format(UINT formatId) const
{
    return Format(static_cast<LPCSTR>(TextOf(formatId)));
}

CString CTime::FormatGmt(LPCSTR format) const
{
    struct tm parts;
    return FormatParts(format, GetGmtTm(&parts));
}

CString CTime::FormatGmt(UINT formatId) const
{
    return FormatGmt(static_cast<LPCSTR>(TextOf(formatId)));
}
