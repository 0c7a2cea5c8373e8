// A link whose address can be looked at, the product that it belongs to, and the browser that it leads to.
#pragma once

#include "links/CGUIUrlLink.h"
#include "support/RecordingProgram.h"
#include "support/RedirectedRoot.h"
#include "support/RegistryWorld.h"
#include "support/TestProduct.h"
#include <string>

class TestLink : public CGUIUrlLink
{
public:
    std::string Address() const { return static_cast<LPCSTR>(m_strURL); }
    using CGUIUrlLink::m_bReadIniURL;

    /// The address of a link made from scratch.
    std::string Get(const std::string& subUrl)
    {
        m_strURL = "(old)";
        GetURL(subUrl.c_str());
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
/// What these settings make of a sub-URL, under Windows XP in English.
std::string StandardAddress(const std::string& subUrl, const std::string& windows = "wxp");

/// The same for a product of the store.
SettingList StoreSettings(SettingList changes = {});
std::string StoreAddress(const std::string& tag, const std::string& rest = "");
/// The supplies keys of these products: that of the maker's own tool, and the store's.
constexpr char OwnKey[] = "SOFTWARE\\TorvaneTest\\Own\\M1", StoreKey[] = "SOFTWARE\\TorvaneTest\\Store\\M1";

/// A kind of link: its name and its settings' keys.
struct LinkName
{
    const char* subUrl;
    const char* subUrlKey;
    const char* overrideKey;
};
extern const LinkName LinkNames[15]; ///< in the order in which they are looked for

/// A retailer's file with this partner's code, where these settings have it, for as long as the object lives.
class RetailerFile
{
public:
    explicit RetailerFile(const std::string& text = "[Retailer]\r\nPartner=shop\r\n");
    ~RetailerFile() { DeleteFileA(m_path.c_str()); }
    RetailerFile(const RetailerFile&) = delete;
    RetailerFile& operator=(const RetailerFile&) = delete;

private:
    const std::string m_path = SystemFolder() + "spool\\linkstest.ini";
};

/// A recording program, registered as the browser for this process alone: its path in quotation marks and `arguments`.
class TestBrowser
{
public:
    explicit TestBrowser(const std::string& arguments = " \"%1\"");
    void Register(const std::string& command, DWORD type = REG_SZ);

private:
    RedirectedRoot m_classes{HKEY_CLASSES_ROOT};

public:
    RegistryWorld world;
    const RecordingProgram program{TestFolder() + "links test browser.exe"};
    const std::string quoted = "\"" + program.Path() + "\"";
};
