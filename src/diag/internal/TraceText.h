// The forms in which values stand in a trace record: a type tag, the value, a line feed.
#pragma once

#include <cstddef>
#include <string>

namespace tvk
{
/// `tag` and the value as a signed decimal number.
void AppendNumber(std::string& record, const char* tag, long value);
/// "(DWORD)" and the value in lower-case hexadecimal without leading zeros.
void AppendHex(std::string& record, unsigned long value);
/// "(float)" and the value with six digits behind the point.
void AppendFloat(std::string& record, float value);
/// "(char)" and the text up to its NUL, at most `size` characters; NULL for a null pointer.
void AppendText(std::string& record, const char* text, std::size_t size = std::string::npos);
/// "(LPBYTE)" and the bytes; NULL for a null pointer, whatever the count.
void AppendBytes(std::string& record, const unsigned char* bytes, int count);

/// "HH:MM:SS <Month DD, YYYY>", the local time, NUL-terminated.
struct TimeStamp
{
    char text[40];
};
TimeStamp CurrentTimeStamp();
} // namespace tvk
