#include "TestLink.h"
#include "links/StoreAddress.h"
#include <algorithm>
#include <fstream>
#include <sstream>

const LinkName LinkNames[15] = {
    {"offer", "IDO_SPECIALOFFER_SUBURL", "IDO_SPECIALOFFER_URL_OVERRIDE"},
    {"support", "IDO_SUPPORT_SUBURL", "IDO_SUPPORT_URL_OVERRIDE"},
    {"software", "IDO_SOFTWARE_SUBURL", "IDO_SOFTWARE_URL_OVERRIDE"},
    {"register", "IDO_REGISTRATION_SUBURL", "IDO_REGISTRATION_URL_OVERRIDE"},
    {"supplies", "IDO_SUPPLIES_SUBURL", "IDO_SUPPLIES_URL_OVERRIDE"},
    {"contact", "IDO_MORECONTACT_SUBURL", "IDO_MORECONTACT_URL_OVERRIDE"},
    {"home", "IDO_HOMEPAGE_SUBURL", "IDO_HOMEPAGE_URL_OVERRIDE"},
    {"reward", "IDO_REWARD_SUBURL", "IDO_REWARD_URL_OVERRIDE"},
    {"skin", "IDO_SKIN_SUBURL", "IDO_SKIN_URL_OVERRIDE"},
    {"reseller", "IDO_RESELLER_SUBURL", "IDO_RESELLER_URL_OVERRIDE"},
    {"tech", "IDO_CONTACTTECH_SUBURL", "IDO_CONTACTTECH_URL_OVERRIDE"},
    {"privacy", "IDO_PRIVACY_SUBURL", "IDO_PRIVACY_URL_OVERRIDE"},
    {"business", "IDO_TORVANESMB_SUBURL", "IDO_TORVANESMB_URL_OVERRIDE"},
    {"tutorial", "IDO_WEBTUTORIAL_SUBURL", "IDO_WEBTUTORIAL_URL_OVERRIDE"},
    {"genuine", "IDO_GENUINE_SUBURL", "IDO_GENUINE_URL_OVERRIDE"},
};

SettingList AddressSettings(const SettingList& changes)
{
    SettingList settings = {
        {"IDO_CARTRIDGEINFO_WEBLINKURL", 1ul}, {"IDO_INKSTYLE", 2ul}, {"IDO_ONECLICK_INK_ORDER", 0ul}};
    std::istringstream texts("TORVANEURL=http://base/go OEM_URL_OVERRIDE=1 FUNC_URLPARAM=?f= LANG_URLPARAM=&l= "
                             "PRTR_URLPARAM=&p= CTRY_URLPARAM=&c= OS_URLPARAM=&o= SRC_URLPARAM=&s= "
                             "PARTNER_URLPARAM=&r= C1_URLPARAM=&c1= L1_URLPARAM=&l1= C2_URLPARAM=&c2= "
                             "L2_URLPARAM=&l2= URL_PRINTER_CODE=PC URL_RZB_SOURCEVAR=SV URL_OS9x_CODE=w9x "
                             "URL_OSNT4_CODE=nt4 URL_OSWIN2000_CODE=w2k URL_OSWINXP_CODE=wxp DEFAULTSTRING=Default "
                             "RZB_EXECUTABLENAME_9X_PATH=nine\\ RZB_EXECUTABLENAME_NT_PATH=four\\ "
                             "RZB_EXECUTABLENAME_WIN2000_PATH=spool\\ RETAILERSPECIFIC_INIFILE_NAME=linkstest.ini "
                             "RETAILER_SPECIFIC_SECTION_NAME=Retailer PARTNER_KEY_NAME=Partner PRINTER_MODEL=M1 "
                             "SUPPLIES_REG_PATH=SOFTWARE\\TorvaneTest\\Own\\ "
                             "MORVAY_SUPPLIES_REG_PATH=SOFTWARE\\TorvaneTest\\Store\\ KEY_NAME_SERVICETAG=Tag "
                             "KEY_NAME_INFORMATION_ONLY=Only KEY_NAME_ORDER_INFORMATION_FILE=File");
    for (std::string key, text; std::getline(texts, key, '=') && texts >> text; texts >> std::ws)
        settings.emplace_back(("IDO_" + key).c_str(), text.c_str());
    for (const LinkName& name : LinkNames)
    {
        settings.emplace_back(name.subUrlKey, name.subUrl);
        settings.emplace_back(name.overrideKey, "0");
    }
    for (const TestSetting& change : changes)
    {
        const auto known = std::find_if(settings.begin(), settings.end(),
                                        [&](const TestSetting& setting) { return setting.key == change.key; });
        if (known == settings.end())
            settings.push_back(change);
        else
            *known = change;
    }
    return settings;
}

std::string StandardAddress(const std::string& subUrl, const std::string& windows)
{
    return "http://base/go?f=" + subUrl + "&l=0&p=PC&c=00000409&o=" + windows + "&s=SV";
}

SettingList StoreSettings(SettingList changes)
{
    changes.emplace_back("IDO_TORVANEURL", OEM_ACCESSORIES_ADDRESS);
    changes.emplace_back("IDO_CTRY_URLPARAM", "?c=");
    return AddressSettings(changes);
}

std::string StoreAddress(const std::string& tag, const std::string& rest)
{
    return OEM_ACCESSORIES_ADDRESS + std::string("?c=00000409&ST=") + tag + "&p=PC" + rest;
}

RetailerFile::RetailerFile(const std::string& text)
{
    std::ofstream(m_path, std::ios::binary) << text;
}

TestBrowser::TestBrowser(const std::string& arguments)
{
    Register(quoted + arguments);
}

void TestBrowser::Register(const std::string& command, DWORD type)
{
    world.SetText(HKEY_CLASSES_ROOT, ".htm", "", "webdoc");
    world.Set(HKEY_CLASSES_ROOT, "webdoc\\shell\\open\\command", "", type,
              command + (type == REG_SZ ? std::string(1, '\0') : ""));
}
