// Text: the characters lie behind a header with the number of sharers, the length and the capacity.
#include "afx/CString.h"
#include "afx/CException.h"
#include "afx/Resources.h"
#include <mbstring.h>
#include <algorithm>
#include <atomic>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>

namespace
{
struct Header
{
    std::atomic<LONG> sharers; // Locked: one owner that does not share
    int length;
    int capacity; // characters without the NUL
};

constexpr LONG Locked = -1;

// The text of every empty CString: never counted, never freed, never written to.
struct NilBuffer
{
    Header header;
    char text[sizeof(Header)];
};
constinit NilBuffer Nil{{1, 0, 0}, {}};

LPSTR NilText()
{
    return reinterpret_cast<LPSTR>(&Nil.header + 1);
}

Header* HeaderOf(LPCSTR text)
{
    return reinterpret_cast<Header*>(const_cast<LPSTR>(text)) - 1;
}

LPSTR Allocate(size_t length, size_t capacity)
{
    if (capacity > static_cast<size_t>(INT_MAX) - sizeof(Header) - 1)
        AfxThrowMemoryException();
    void* memory = std::malloc(sizeof(Header) + capacity + 1);
    if (!memory)
        AfxThrowMemoryException();
    auto* header = new (memory) Header{{1}, static_cast<int>(length), static_cast<int>(capacity)};
    auto* text = reinterpret_cast<LPSTR>(header + 1);
    text[length] = '\0';
    return text;
}

void Release(LPSTR text)
{
    if (text == NilText())
        return;
    Header* header = HeaderOf(text);
    if (header->sharers.load(std::memory_order_relaxed) == Locked ||
        header->sharers.fetch_sub(1, std::memory_order_acq_rel) == 1)
        std::free(header);
}

// A buffer for a copy of `text`: the same one where it can be shared.
LPSTR Share(LPSTR text)
{
    if (text == NilText())
        return text;
    Header* header = HeaderOf(text);
    if (header->sharers.load(std::memory_order_relaxed) != Locked)
    {
        header->sharers.fetch_add(1, std::memory_order_relaxed);
        return text;
    }
    const auto length = static_cast<size_t>(header->length);
    LPSTR copy = Allocate(length, length);
    std::memcpy(copy, text, length);
    return copy;
}

size_t LengthOf(LPCSTR text)
{
    return text ? std::strlen(text) : 0;
}

const unsigned char* Bytes(LPCSTR text)
{
    return reinterpret_cast<const unsigned char*>(text);
}

bool IsBlank(char character)
{
    return character == ' ' || (character >= '\t' && character <= '\r');
}

int Sign(int value)
{
    return (value > 0) - (value < 0);
}

int CollateTexts(LPCSTR left, LPCSTR right, DWORD flags)
{
    const int result = CompareStringA(LOCALE_USER_DEFAULT, flags, left, -1, right, -1);
    return result ? result - CSTR_EQUAL : 0;
}
} // namespace

CString::CString() : m_text(NilText()) {}

CString::CString(const CString& source) : m_text(Share(source.m_text)) {}

CString::CString(char character, int repeat) : m_text(NilText())
{
    if (repeat > 0)
    {
        m_text = Allocate(static_cast<size_t>(repeat), static_cast<size_t>(repeat));
        std::memset(m_text, character, static_cast<size_t>(repeat));
    }
}

CString::CString(LPCSTR text) : m_text(NilText())
{
    Assign(text, LengthOf(text));
}

CString::CString(const unsigned char* text) : CString(reinterpret_cast<LPCSTR>(text)) {}

CString::CString(LPCWSTR text) : m_text(NilText())
{
    *this = text;
}

CString::CString(LPCSTR text, int length) : m_text(NilText())
{
    if (text && length > 0)
        Assign(text, static_cast<size_t>(length));
}

CString::~CString()
{
    Release(m_text);
}

// Replaces the text, which `text` may point into.
void CString::Assign(LPCSTR text, size_t length)
{
    Header* header = HeaderOf(m_text);
    const LONG sharers = m_text == NilText() ? 0 : header->sharers.load(std::memory_order_acquire);
    if ((sharers == 1 || sharers == Locked) && static_cast<size_t>(header->capacity) >= length)
    {
        std::memmove(m_text, text, length);
        m_text[length] = '\0';
        header->length = static_cast<int>(length);
        return;
    }
    LPSTR fresh = NilText();
    if (length)
    {
        fresh = Allocate(length, length);
        std::memcpy(fresh, text, length);
    }
    Release(m_text);
    m_text = fresh;
}

// Appends; `text` may point into this very text.
void CString::Append(LPCSTR text, size_t length)
{
    if (!length)
        return;
    const auto oldLength = static_cast<size_t>(GetLength());
    const size_t newLength = oldLength + length;
    Header* header = HeaderOf(m_text);
    const LONG sharers = m_text == NilText() ? 0 : header->sharers.load(std::memory_order_acquire);
    if ((sharers == 1 || sharers == Locked) && static_cast<size_t>(header->capacity) >= newLength)
    {
        std::memmove(m_text + oldLength, text, length);
        m_text[newLength] = '\0';
        header->length = static_cast<int>(newLength);
        return;
    }
    // Room to spare, so that a text built piece by piece is not copied for every piece.
    LPSTR fresh = Allocate(newLength, oldLength ? newLength + newLength / 2 : newLength);
    std::memcpy(fresh, m_text, oldLength);
    std::memcpy(fresh + oldLength, text, length);
    Release(m_text);
    m_text = fresh;
}

// Makes the buffer this object's own, with room for `capacity` characters; the text stays.
void CString::MakeOwn(size_t capacity)
{
    Header* header = HeaderOf(m_text);
    const LONG sharers = m_text == NilText() ? 0 : header->sharers.load(std::memory_order_acquire);
    if ((sharers == 1 || sharers == Locked) && static_cast<size_t>(header->capacity) >= capacity)
        return;
    const auto length = static_cast<size_t>(header->length);
    LPSTR fresh = Allocate(length, std::max(length, capacity));
    std::memcpy(fresh, m_text, length);
    if (sharers == Locked)
        HeaderOf(fresh)->sharers = Locked;
    Release(m_text);
    m_text = fresh;
}

const CString& CString::operator=(const CString& source)
{
    if (m_text == source.m_text)
        return *this;
    if (m_text != NilText() && HeaderOf(m_text)->sharers.load(std::memory_order_relaxed) == Locked)
    {
        Assign(source.m_text, static_cast<size_t>(source.GetLength()));
        return *this;
    }
    LPSTR shared = Share(source.m_text);
    Release(m_text);
    m_text = shared;
    return *this;
}

const CString& CString::operator=(char character)
{
    Assign(&character, 1);
    return *this;
}

const CString& CString::operator=(LPCSTR text)
{
    Assign(text, LengthOf(text));
    return *this;
}

const CString& CString::operator=(const unsigned char* text)
{
    return *this = reinterpret_cast<LPCSTR>(text);
}

const CString& CString::operator=(LPCWSTR text)
{
    const int size = text ? WideCharToMultiByte(CP_ACP, 0, text, -1, nullptr, 0, nullptr, nullptr) : 0;
    if (size <= 1)
    {
        Empty();
        return *this;
    }
    WideCharToMultiByte(CP_ACP, 0, text, -1, GetBuffer(size - 1), size, nullptr, nullptr);
    ReleaseBuffer(size - 1);
    return *this;
}

int CString::GetLength() const
{
    return HeaderOf(m_text)->length;
}

BOOL CString::IsEmpty() const
{
    return GetLength() == 0;
}

void CString::Empty()
{
    if (m_text != NilText() && HeaderOf(m_text)->sharers.load(std::memory_order_relaxed) == Locked)
    {
        Assign("", 0);
        return;
    }
    Release(m_text);
    m_text = NilText();
}

char CString::operator[](int index) const
{
    ASSERT(index >= 0 && index <= GetLength()); // the NUL may be looked at
    return m_text[index];
}

void CString::SetAt(int index, char character)
{
    ASSERT(index >= 0 && index < GetLength());
    MakeOwn(static_cast<size_t>(GetLength()));
    m_text[index] = character;
}

CString::operator LPCSTR() const
{
    return m_text;
}

const CString& CString::operator+=(const CString& text)
{
    Append(text.m_text, static_cast<size_t>(text.GetLength()));
    return *this;
}

const CString& CString::operator+=(LPCSTR text)
{
    Append(text, LengthOf(text));
    return *this;
}

const CString& CString::operator+=(char character)
{
    Append(&character, 1);
    return *this;
}

int CString::Compare(LPCSTR text) const
{
    return Sign(std::strcmp(m_text, text ? text : ""));
}

int CString::CompareNoCase(LPCSTR text) const
{
    return Sign(_mbsicmp(Bytes(m_text), Bytes(text ? text : "")));
}

int CString::Collate(LPCSTR text) const
{
    return CollateTexts(m_text, text ? text : "", 0);
}

CString CString::Mid(int first) const
{
    return Mid(first, GetLength());
}

CString CString::Mid(int first, int count) const
{
    const int length = GetLength();
    first = std::clamp(first, 0, length);
    count = std::clamp(count, 0, length - first);
    return count == length ? *this : CString(m_text + first, count);
}

CString CString::Left(int count) const
{
    return Mid(0, count);
}

CString CString::Right(int count) const
{
    count = std::clamp(count, 0, GetLength());
    return Mid(GetLength() - count, count);
}

CString CString::SpanIncluding(LPCSTR characters) const
{
    return Left(static_cast<int>(std::strspn(m_text, characters)));
}

CString CString::SpanExcluding(LPCSTR characters) const
{
    return Left(static_cast<int>(std::strcspn(m_text, characters)));
}

void CString::MakeUpper()
{
    MakeOwn(static_cast<size_t>(GetLength()));
    CharUpperBuffA(m_text, static_cast<DWORD>(GetLength()));
}

void CString::MakeLower()
{
    MakeOwn(static_cast<size_t>(GetLength()));
    CharLowerBuffA(m_text, static_cast<DWORD>(GetLength()));
}

void CString::MakeReverse()
{
    MakeOwn(static_cast<size_t>(GetLength()));
    std::reverse(m_text, m_text + GetLength());
}

void CString::TrimLeft()
{
    int blanks = 0;
    while (IsBlank(m_text[blanks]))
        ++blanks;
    Delete(0, blanks);
}

void CString::TrimLeft(char character)
{
    const char characters[] = {character, '\0'};
    TrimLeft(characters);
}

void CString::TrimLeft(LPCSTR characters)
{
    Delete(0, static_cast<int>(std::strspn(m_text, characters)));
}

void CString::TrimRight()
{
    int length = GetLength();
    while (length > 0 && IsBlank(m_text[length - 1]))
        --length;
    Delete(length, GetLength() - length);
}

void CString::TrimRight(char character)
{
    const char characters[] = {character, '\0'};
    TrimRight(characters);
}

void CString::TrimRight(LPCSTR characters)
{
    int length = GetLength();
    while (length > 0 && m_text[length - 1] && std::strchr(characters, m_text[length - 1]))
        --length;
    Delete(length, GetLength() - length);
}

int CString::Replace(char oldCharacter, char newCharacter)
{
    const auto count = static_cast<int>(std::count(m_text, m_text + GetLength(), oldCharacter));
    if (count && oldCharacter != newCharacter)
    {
        MakeOwn(static_cast<size_t>(GetLength()));
        std::replace(m_text, m_text + GetLength(), oldCharacter, newCharacter);
        return count;
    }
    return 0;
}

int CString::Replace(LPCSTR oldText, LPCSTR newText)
{
    const size_t oldLength = LengthOf(oldText);
    if (!oldLength)
        return 0;
    int count = 0;
    CString result;
    LPCSTR from = m_text;
    for (LPCSTR match; (match = std::strstr(from, oldText)) != nullptr; from = match + oldLength)
    {
        result.Append(from, static_cast<size_t>(match - from));
        result.Append(newText, LengthOf(newText));
        ++count;
    }
    if (count)
    {
        result.Append(from, static_cast<size_t>(m_text + GetLength() - from));
        *this = result;
    }
    return count;
}

int CString::Remove(char character)
{
    const auto count = static_cast<int>(std::count(m_text, m_text + GetLength(), character));
    if (count)
    {
        MakeOwn(static_cast<size_t>(GetLength()));
        ReleaseBuffer(static_cast<int>(std::remove(m_text, m_text + GetLength(), character) - m_text));
    }
    return count;
}

int CString::Insert(int index, char character)
{
    const char text[] = {character, '\0'};
    return Insert(index, text);
}

int CString::Insert(int index, LPCSTR text)
{
    index = std::clamp(index, 0, GetLength());
    CString result = Left(index);
    result += text;
    result.Append(m_text + index, static_cast<size_t>(GetLength() - index));
    *this = result;
    return GetLength();
}

int CString::Delete(int index, int count)
{
    const int length = GetLength();
    index = std::clamp(index, 0, length);
    count = std::clamp(count, 0, length - index);
    if (count)
    {
        MakeOwn(static_cast<size_t>(length));
        std::memmove(m_text + index, m_text + index + count, static_cast<size_t>(length - index - count));
        ReleaseBuffer(length - count);
    }
    return GetLength();
}

int CString::Find(char character) const
{
    return Find(character, 0);
}

int CString::Find(char character, int start) const
{
    if (start < 0 || start >= GetLength())
        return -1;
    const auto* match =
        static_cast<LPCSTR>(std::memchr(m_text + start, character, static_cast<size_t>(GetLength() - start)));
    return match ? static_cast<int>(match - m_text) : -1;
}

int CString::Find(LPCSTR text) const
{
    return Find(text, 0);
}

int CString::Find(LPCSTR text, int start) const
{
    if (!text || start < 0 || start > GetLength())
        return -1;
    const LPCSTR match = std::strstr(m_text + start, text);
    return match ? static_cast<int>(match - m_text) : -1;
}

int CString::ReverseFind(char character) const
{
    for (int index = GetLength() - 1; index >= 0; --index)
    {
        if (m_text[index] == character)
            return index;
    }
    return -1;
}

int CString::FindOneOf(LPCSTR characters) const
{
    const LPCSTR match = std::strpbrk(m_text, characters);
    return match ? static_cast<int>(match - m_text) : -1;
}

void CString::FormatV(LPCSTR format, va_list arguments)
{
    va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, arguments);
    if (length <= 0)
    {
        Empty();
    }
    else
    {
        // into a text of its own first: an argument may be this text
        CString result;
        std::vsnprintf(result.GetBuffer(length), static_cast<size_t>(length) + 1, format, again);
        result.ReleaseBuffer(length);
        *this = result;
    }
    va_end(again);
}

void CString::Format(LPCSTR format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    FormatV(format, arguments);
    va_end(arguments);
}

void CString::Format(UINT formatId, ...)
{
    CString format;
    format.LoadString(formatId);
    va_list arguments;
    va_start(arguments, formatId);
    FormatV(format, arguments);
    va_end(arguments);
}

BOOL CString::LoadString(UINT id)
{
    // Strings are stored in blocks of sixteen, numbered from one.
    const HINSTANCE module = AfxFindResourceHandle(MAKEINTRESOURCEA((id >> 4) + 1), RT_STRING);
    LPCWSTR text = nullptr; // with a size of 0 the function answers where the text lies, without a NUL
    const int length = LoadStringW(module, id, reinterpret_cast<LPWSTR>(&text), 0);
    const int size = length > 0 ? WideCharToMultiByte(CP_ACP, 0, text, length, nullptr, 0, nullptr, nullptr) : 0;
    if (size <= 0)
    {
        Empty();
        return FALSE;
    }
    WideCharToMultiByte(CP_ACP, 0, text, length, GetBuffer(size), size, nullptr, nullptr);
    ReleaseBuffer(size);
    return TRUE;
}

LPSTR CString::GetBuffer(int minimum)
{
    // never the shared empty text: the caller writes at least a NUL
    MakeOwn(static_cast<size_t>(std::max({minimum, GetLength(), 0})));
    return m_text;
}

LPSTR CString::GetBufferSetLength(int length)
{
    GetBuffer(length);
    ReleaseBuffer(std::max(length, 0));
    return m_text;
}

void CString::ReleaseBuffer(int newLength)
{
    if (m_text == NilText())
        return;
    Header* header = HeaderOf(m_text);
    const int length = newLength < 0 ? static_cast<int>(strnlen(m_text, static_cast<size_t>(header->capacity)))
                                     : std::min(newLength, header->capacity);
    header->length = length;
    m_text[length] = '\0';
}

void CString::FreeExtra()
{
    const Header* header = HeaderOf(m_text);
    if (header->capacity == header->length || header->sharers.load(std::memory_order_relaxed) == Locked)
        return;
    const CString exact(m_text, header->length);
    *this = exact;
}

LPSTR CString::LockBuffer()
{
    GetBuffer(0);
    HeaderOf(m_text)->sharers = Locked;
    return m_text;
}

void CString::UnlockBuffer()
{
    if (m_text != NilText())
        HeaderOf(m_text)->sharers = 1;
}

CString operator+(const CString& left, const CString& right)
{
    CString result(left);
    result += right;
    return result;
}

CString operator+(const CString& left, char right)
{
    CString result(left);
    result += right;
    return result;
}

CString operator+(char left, const CString& right)
{
    CString result(left);
    result += right;
    return result;
}

CString operator+(const CString& left, LPCSTR right)
{
    CString result(left);
    result += right;
    return result;
}

CString operator+(LPCSTR left, const CString& right)
{
    CString result(left);
    result += right;
    return result;
}

// The comparisons are by byte values, in all three combinations.
#define COMPARISON(symbol)                                                                                             \
    bool operator symbol(const CString& left, const CString& right)                                                    \
    {                                                                                                                  \
        return left.Compare(right) symbol 0;                                                                           \
    }                                                                                                                  \
    bool operator symbol(const CString& left, LPCSTR right)                                                            \
    {                                                                                                                  \
        return left.Compare(right) symbol 0;                                                                           \
    }                                                                                                                  \
    bool operator symbol(LPCSTR left, const CString& right)                                                            \
    {                                                                                                                  \
        return 0 symbol right.Compare(left);                                                                           \
    }
COMPARISON(==)
COMPARISON(!=)
COMPARISON(<)
COMPARISON(>)
COMPARISON(<=)
COMPARISON(>=)
#undef COMPARISON
