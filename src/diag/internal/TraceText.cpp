#include "diag/internal/TraceText.h"
#include <windows.h>
#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <string_view>

namespace tvk
{
namespace
{
template <class Number>
void AppendDigits(std::string& record, Number value, int base)
{
    char digits[24];
    record.append(digits, std::to_chars(digits, std::end(digits), value, base).ptr);
}
} // namespace

void AppendNumber(std::string& record, const char* tag, long value)
{
    record += tag;
    AppendDigits(record, value, 10);
    record += '\n';
}

void AppendHex(std::string& record, unsigned long value)
{
    record += "(DWORD)";
    AppendDigits(record, value, 16);
    record += '\n';
}

void AppendFloat(std::string& record, float value)
{
    char digits[64]; // the longest float has 39 digits before the point
    std::snprintf(digits, sizeof digits, "(float)%f\n", static_cast<double>(value));
    record += digits;
}

void AppendText(std::string& record, const char* text, std::size_t size)
{
    record += "(char)";
    if (!text)
        text = "NULL";
    const char* const end = text + (size == std::string::npos ? std::strlen(text) : strnlen(text, size));
    record.append(text, end);
    record += '\n';
}

void AppendBytes(std::string& record, const unsigned char* bytes, int count)
{
    record += "(LPBYTE)";
    if (!bytes)
        record += "NULL";
    for (int i = 0; bytes && i < count; ++i)
    {
        AppendDigits(record, static_cast<unsigned>(bytes[i]), 16);
        record += "  ";
    }
    record += '\n';
}

TimeStamp CurrentTimeStamp()
{
    // Put together by hand: formatting by the C library costs as much as ten look-ups of a setting.
    static constexpr std::array<const char*, 12> Months = {"January",   "February", "March",    "April",
                                                           "May",       "June",     "July",     "August",
                                                           "September", "October",  "November", "December"};
    SYSTEMTIME now;
    GetLocalTime(&now);
    TimeStamp stamp;
    char* out = stamp.text;
    const auto put = [&out](std::string_view text) { out = std::copy(text.begin(), text.end(), out); };
    const auto putTwoDigits = [&out](unsigned value)
    {
        *out++ = static_cast<char>('0' + value / 10 % 10);
        *out++ = static_cast<char>('0' + value % 10);
    };
    putTwoDigits(now.wHour);
    put(":");
    putTwoDigits(now.wMinute);
    put(":");
    putTwoDigits(now.wSecond);
    put(" <");
    put(Months[(now.wMonth + 11u) % 12]);
    put(" ");
    putTwoDigits(now.wDay);
    put(", ");
    putTwoDigits(now.wYear / 100u);
    putTwoDigits(now.wYear);
    put(">");
    *out = '\0';
    return stamp;
}
} // namespace tvk
