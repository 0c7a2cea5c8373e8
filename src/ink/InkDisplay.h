// The ink display for hosts without product settings.
#pragma once

#include "ink/CGUIInkDisplay.h"
#include "ink/InkTank.h"
#include <map>

/// A CGUIInkDisplay that asks the host, not the product, for its settings: no settings library is looked for. Before
/// use the host sets those of the keys that matter to it; CGUIInkDisplay names them. A key that is not set reads as a
/// missing setting does, 0 or "ERROR".
class AFX_EXT_CLASS InkDisplay : public CGUIInkDisplay
{
public:
    InkDisplay();
    ~InkDisplay() override;

    /// Sets a number, such as "IDO_PRINTHEADFORMAT" or "IDO_SUPPORT_SMARTMESSAGING".
    void SetSetting(const char* key, unsigned long value);
    /// Sets a text, such as the parts of the ordering program's command line.
    void SetSetting(const char* key, const char* value);

protected:
    unsigned long NumberSetting(const char* key) override;
    CString TextSetting(const char* key) override;

private:
    std::map<CString, unsigned long> m_Numbers;
    std::map<CString, CString> m_Texts;
};
