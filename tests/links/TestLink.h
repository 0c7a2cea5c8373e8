// A link whose address can be looked at, and the product that it belongs to.
#pragma once

#include "links/CGUIUrlLink.h"
#include "support/TestProduct.h"
#include <string>

class TestLink : public CGUIUrlLink
{
public:
    std::string Address() const { return static_cast<LPCSTR>(m_strURL); }
    using CGUIUrlLink::m_bReadIniURL;

    /// The address of a link made from scratch.
    std::string Get(const char* subUrl)
    {
        m_strURL = "(old)";
        GetURL(subUrl);
        return Address();
    }
    void SetInk(INKINFO* ink)
    {
        m_pInkInfo = ink;
        m_InkDisplay.SetInkInfo(ink, nullptr);
    }
};

/// All settings of addresses: sub-URLs "offer", "support", ... as LinkNames has them, composed. `changes` come in place
/// of, or beside, these.
SettingList AddressSettings(const SettingList& changes = {});

/// The names of the fifteen kinds in the order in which they are looked for, and their settings' keys.
struct LinkName
{
    const char* subUrl;
    const char* subUrlKey;
    const char* overrideKey;
};
extern const LinkName LinkNames[15];
