// The address of a supplies link against the look-ups that it is made of: what is asked, in the same order, with
// nothing composed.
#include "Harness.h"
#include <afx.h>
#include "links/CGUIUrlLink.h"
#include "locale/CountryLanguage.h"
#include "settings/TvkIniFile.h"
#include "settings/TvkProduct.h"
#include <cstdio>

namespace
{
constexpr const char* Texts[] = {
    // which kind of link
    "IDO_SPECIALOFFER_SUBURL", "IDO_SUPPORT_SUBURL", "IDO_SOFTWARE_SUBURL", "IDO_REGISTRATION_SUBURL",
    "IDO_SUPPLIES_SUBURL", "IDO_SUPPLIES_URL_OVERRIDE",
    // which format
    "IDO_OEM_URL_OVERRIDE", "IDO_TORVANEURL",
    // the parameters
    "IDO_TORVANEURL", "IDO_FUNC_URLPARAM", "IDO_LANG_URLPARAM", "IDO_PRTR_URLPARAM", "IDO_URL_PRINTER_CODE",
    "IDO_CTRY_URLPARAM", "IDO_OS_URLPARAM", "IDO_URL_OSWINXP_CODE", "IDO_SRC_URLPARAM", "IDO_URL_RZB_SOURCEVAR",
    // the retailer's file
    "IDO_RZB_EXECUTABLENAME_PATH", "IDO_RETAILERSPECIFIC_INIFILE_NAME", "IDO_PARTNER_KEY_NAME",
    "IDO_RETAILER_SPECIFIC_SECTION_NAME", "IDO_PARTNER_URLPARAM",
    // the cartridges
    "IDO_SUPPLIES_SUBURL", "IDO_C1_URLPARAM", "IDO_L1_URLPARAM", "IDO_C2_URLPARAM", "IDO_L2_URLPARAM"};
constexpr const char* Numbers[] = {"IDO_CARTRIDGEINFO_WEBLINKURL", "IDO_INKSTYLE"};

/// A link that makes its address without a browser.
class AddressLink : public CGUIUrlLink
{
public:
    explicit AddressLink(INKINFO* ink)
    {
        m_bReadIniURL = 1; // as once a supplies link was followed
        m_pInkInfo = ink;
        m_InkDisplay.SetInkInfo(ink, nullptr);
    }
    const CString& Make(const CString& subUrl)
    {
        GetURL(subUrl);
        return m_strURL;
    }
};

/// The sample product's retailer file where the library looks for it, for as long as the object lives.
class RetailerFile
{
public:
    RetailerFile()
    {
        char system[MAX_PATH] = "";
        GetSystemDirectoryA(system, MAX_PATH);
        TvkProduct product;
        CString value;
        path = system;
        path += "\\" + product.GetSetting("IDO_RZB_EXECUTABLENAME_PATH", value);
        path += product.GetSetting("IDO_RETAILERSPECIFIC_INIFILE_NAME", value);
        product.GetSetting("IDO_RETAILER_SPECIFIC_SECTION_NAME", section);
        product.GetSetting("IDO_PARTNER_KEY_NAME", key);
        WritePrivateProfileStringA(section, key, "bench", path);
    }
    ~RetailerFile() { DeleteFileA(path); }
    RetailerFile(const RetailerFile&) = delete;
    RetailerFile& operator=(const RetailerFile&) = delete;

    CString path, section, key;
};

bool SuppliesAddress()
{
    const HMODULE resident = LoadLibraryA(TvkProduct::GetProductPrefix() + "jswr.dll");
    const RetailerFile retailer;
    INKINFO ink{};
    ink.iLogCartID1 = 80;
    ink.iLogCartID2 = 48;
    ink.InkPercent1 = ink.InkPercent2 = ink.InkPercent3 = ink.InkPercent4 = 50;
    TvkProduct product;
    CString supplies;
    product.GetSetting("IDO_SUPPLIES_SUBURL", supplies);
    AddressLink link(&ink);
    const CString address = link.Make(supplies);
    std::printf("%s\n", static_cast<LPCSTR>(address));
    if (address.Find("bench") < 0 || address.Find("50") < 0)
    {
        std::printf("the address lacks the retailer or the cartridges\n");
        return false;
    }
    const bench::Contender ours = {"CGUIUrlLink::GetURL", [&](int count)
                                   {
                                       for (int i = 0; i < count; ++i)
                                           link.Make(supplies);
                                   }};
    const bench::Contender lookUps = {"the look-ups: 30 settings, 1 INI value, locale, version", [&](int count)
                                      {
                                          CString text;
                                          unsigned long number = 0;
                                          char country[COUNTRYLANGUAGE_LOCALE_SIZE], name[COUNTRYLANGUAGE_NAME_SIZE];
                                          for (int i = 0; i < count; ++i)
                                          {
                                              for (const char* key : Texts)
                                                  product.GetSetting(key, text);
                                              for (const char* key : Numbers)
                                                  product.GetSetting(key, number);
                                              Get32CountryLanguage(country, name);
                                              CRegistry().GetOSVer();
                                              TvkIniFile().ReadINI(retailer.path, retailer.key, retailer.section);
                                          }
                                      }};
    static_assert(std::size(Texts) + std::size(Numbers) == 30);
    const bool met =
        bench::Compare("whole supplies address, trace off", ours, {{lookUps, bench::Goal::AtMost, 1.1}}, 10);
    FreeLibrary(resident);
    return met;
}

const bench::Registration Registered("links", SuppliesAddress);
} // namespace
