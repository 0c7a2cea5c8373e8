// Texts put together with one allocation, for the records and keys that every look-up makes.
#pragma once

#include <afx.h>
#include <algorithm>
#include <initializer_list>
#include <string_view>

namespace tvk
{
/// The characters of a text, without a copy; valid as long as the text stays as it is.
inline std::string_view View(const CString& text)
{
    return {static_cast<LPCSTR>(text), static_cast<size_t>(text.GetLength())};
}

/// The parts in one text.
inline CString Joined(std::initializer_list<std::string_view> parts)
{
    size_t length = 0;
    for (const std::string_view part : parts)
        length += part.size();
    CString text;
    char* end = text.GetBuffer(static_cast<int>(length));
    for (const std::string_view part : parts)
        end = std::copy(part.begin(), part.end(), end);
    text.ReleaseBuffer(static_cast<int>(length));
    return text;
}
} // namespace tvk
