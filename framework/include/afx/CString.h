// The framework's text: one pointer wide, copies share one buffer until one of them is changed.
#pragma once

#include "afx/Platform.h"

/// A NUL-terminated text of 8-bit characters that knows its length. Passed by value across modules. Operations that
/// need memory throw a CMemoryException when there is none. An index must lie in the text.
class FRAMEWORK_API CString
{
public:
    CString();
    CString(const CString& source);
    CString(char character, int repeat = 1);
    CString(LPCSTR text); ///< null makes an empty text
    CString(const unsigned char* text);
    CString(LPCWSTR text); ///< converted to the ANSI code page
    CString(LPCSTR text, int length);
    ~CString();

    const CString& operator=(const CString& source);
    const CString& operator=(char character);
    const CString& operator=(LPCSTR text);
    const CString& operator=(const unsigned char* text);
    const CString& operator=(LPCWSTR text);

    int GetLength() const;
    BOOL IsEmpty() const;
    void Empty();
    char operator[](int index) const;
    void SetAt(int index, char character);
    operator LPCSTR() const;

    const CString& operator+=(const CString& text);
    const CString& operator+=(LPCSTR text);
    const CString& operator+=(char character);

    /// -1, 0 or 1: by byte values; without regard to case; by the user's locale (Collate).
    int Compare(LPCSTR text) const;
    int CompareNoCase(LPCSTR text) const;
    int Collate(LPCSTR text) const;

    /// Parts of the text; counts are cut to what there is.
    CString Mid(int first) const;
    CString Mid(int first, int count) const;
    CString Left(int count) const;
    CString Right(int count) const;
    /// The longest beginning that consists of (or is free of) the given characters.
    CString SpanIncluding(LPCSTR characters) const;
    CString SpanExcluding(LPCSTR characters) const;

    void MakeUpper();
    void MakeLower();
    void MakeReverse();
    /// Takes blanks (or the given characters) away from one end.
    void TrimLeft();
    void TrimLeft(char character);
    void TrimLeft(LPCSTR characters);
    void TrimRight();
    void TrimRight(char character);
    void TrimRight(LPCSTR characters);

    /// Each returns the number of replacements or removed characters; Insert and Delete the new length.
    int Replace(char oldCharacter, char newCharacter);
    int Replace(LPCSTR oldText, LPCSTR newText);
    int Remove(char character);
    int Insert(int index, char character);
    int Insert(int index, LPCSTR text);
    int Delete(int index, int count = 1);

    /// The index of the first (ReverseFind: last) match, -1 when there is none.
    int Find(char character) const;
    int Find(char character, int start) const;
    int Find(LPCSTR text) const;
    int Find(LPCSTR text, int start) const;
    int ReverseFind(char character) const;
    int FindOneOf(LPCSTR characters) const;

    /// Formats like printf, to any length; the second form takes the format from a string resource. The arguments
    /// may point into this very text.
    void Format(LPCSTR format, ...) __attribute__((format(gnu_printf, 2, 3)));
    void Format(UINT formatId, ...);
    void FormatV(LPCSTR format, va_list arguments) __attribute__((format(gnu_printf, 2, 0)));

    /// Loads a string resource of any length, found by AfxFindResourceHandle; FALSE, and an empty text, without it.
    BOOL LoadString(UINT id);

    /// A buffer of at least `minimum` characters and a NUL to write to; ReleaseBuffer makes it the text again, with
    /// the length up to the NUL (-1) or the given one.
    LPSTR GetBuffer(int minimum);
    LPSTR GetBufferSetLength(int length);
    void ReleaseBuffer(int newLength = -1);
    void FreeExtra();
    /// From LockBuffer to UnlockBuffer the buffer is not shared with copies.
    LPSTR LockBuffer();
    void UnlockBuffer();

private:
    void Assign(LPCSTR text, size_t length);
    void Append(LPCSTR text, size_t length);
    void MakeOwn(size_t capacity);

    LPSTR m_text; // behind the buffer's header
};

FRAMEWORK_API CString operator+(const CString& left, const CString& right);
FRAMEWORK_API CString operator+(const CString& left, char right);
FRAMEWORK_API CString operator+(char left, const CString& right);
FRAMEWORK_API CString operator+(const CString& left, LPCSTR right);
FRAMEWORK_API CString operator+(LPCSTR left, const CString& right);

FRAMEWORK_API bool operator==(const CString& left, const CString& right);
FRAMEWORK_API bool operator==(const CString& left, LPCSTR right);
FRAMEWORK_API bool operator==(LPCSTR left, const CString& right);
FRAMEWORK_API bool operator!=(const CString& left, const CString& right);
FRAMEWORK_API bool operator!=(const CString& left, LPCSTR right);
FRAMEWORK_API bool operator!=(LPCSTR left, const CString& right);
FRAMEWORK_API bool operator<(const CString& left, const CString& right);
FRAMEWORK_API bool operator<(const CString& left, LPCSTR right);
FRAMEWORK_API bool operator<(LPCSTR left, const CString& right);
FRAMEWORK_API bool operator>(const CString& left, const CString& right);
FRAMEWORK_API bool operator>(const CString& left, LPCSTR right);
FRAMEWORK_API bool operator>(LPCSTR left, const CString& right);
FRAMEWORK_API bool operator<=(const CString& left, const CString& right);
FRAMEWORK_API bool operator<=(const CString& left, LPCSTR right);
FRAMEWORK_API bool operator<=(LPCSTR left, const CString& right);
FRAMEWORK_API bool operator>=(const CString& left, const CString& right);
FRAMEWORK_API bool operator>=(const CString& left, LPCSTR right);
FRAMEWORK_API bool operator>=(LPCSTR left, const CString& right);
