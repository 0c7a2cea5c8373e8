// The message boxes of the library under test, or of another module, noted in place of being shown.
#pragma once

#include "support/IatPatch.h"
#include "support/TestProduct.h"
#include <cstdio>
#include <functional>
#include <utility>

class MessageBoxes
{
public:
    explicit MessageBoxes(HMODULE caller = LibraryUnderTest()) : m_patch(caller, "MessageBoxA", &Note)
    {
        s_shown.clear();
    }
    ~MessageBoxes() { whileOpen = nullptr; }
    MessageBoxes(const MessageBoxes&) = delete;
    MessageBoxes& operator=(const MessageBoxes&) = delete;

    /// The boxes since the last call: "text|caption|style in hexadecimal|owner". Each is answered with IDRETRY.
    static std::vector<std::string> Shown() { return std::exchange(s_shown, {}); }
    /// Called once, while the next box is open.
    static inline std::function<void()> whileOpen;

private:
    static int WINAPI Note(HWND owner, LPCSTR text, LPCSTR caption, UINT style)
    {
        char numbers[40];
        std::snprintf(numbers, sizeof numbers, "|%x|%llu", style, reinterpret_cast<unsigned long long>(owner));
        s_shown.push_back(std::string(text ? text : "null") + "|" + (caption ? caption : "null") + numbers);
        if (const auto call = std::exchange(whileOpen, nullptr))
            call();
        return IDRETRY;
    }
    static inline std::vector<std::string> s_shown;
    const IatPatch m_patch;
};
