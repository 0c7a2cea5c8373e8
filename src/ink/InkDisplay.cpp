#include "ink/InkDisplay.h"

InkDisplay::InkDisplay() = default;

InkDisplay::~InkDisplay() = default;

void InkDisplay::SetSetting(const char* key, unsigned long value)
{
    m_Numbers[key] = value;
}

void InkDisplay::SetSetting(const char* key, const char* value)
{
    m_Texts[key] = value;
}

unsigned long InkDisplay::NumberSetting(const char* key)
{
    const auto found = m_Numbers.find(key);
    return found == m_Numbers.end() ? 0 : found->second;
}

CString InkDisplay::TextSetting(const char* key)
{
    const auto found = m_Texts.find(key);
    return found == m_Texts.end() ? CString("ERROR") : found->second;
}
