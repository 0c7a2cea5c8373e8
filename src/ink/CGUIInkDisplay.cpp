#include "ink/CGUIInkDisplay.h"
#include "ink/internal/ColorTable.h"
#include "settings/internal/Directories.h"
#include "settings/internal/SuppliesKey.h"
#include "system/internal/DetachedProcess.h"
#include "system/internal/RegistryValue.h"
#include <algorithm>
#include <array>
#include <iterator>

namespace
{
using InkColor = CGUIInkTank::InkColor;

constexpr int InvalidCartridge = 16;
constexpr int MissingCartridge = 32;
constexpr int UnknownLevel = -1;

enum class Family
{
    Black,
    Color,
    Photo,
    AltColor,
};

enum class Yield
{
    Standard,
    Low,
    High,
    Generic,
};

struct Cartridge
{
    int identity;
    Family family;
    Yield yield;
    InkColor color;
};
constexpr std::array Cartridges{
    Cartridge{48, Family::Black, Yield::Standard, CGUIInkTank::InkBlack},
    Cartridge{49, Family::Black, Yield::Low, CGUIInkTank::InkBlack},
    Cartridge{50, Family::Black, Yield::High, CGUIInkTank::InkBlack},
    Cartridge{63, Family::Black, Yield::Generic, CGUIInkTank::InkBlackGeneric},
    Cartridge{80, Family::Color, Yield::Standard, CGUIInkTank::InkTriColor},
    Cartridge{81, Family::Color, Yield::Low, CGUIInkTank::InkTriColor},
    Cartridge{82, Family::Color, Yield::High, CGUIInkTank::InkTriColor},
    Cartridge{95, Family::Color, Yield::Generic, CGUIInkTank::InkTriColorGeneric},
    Cartridge{112, Family::Photo, Yield::Standard, CGUIInkTank::InkPhoto},
    Cartridge{113, Family::Photo, Yield::Low, CGUIInkTank::InkPhoto},
    Cartridge{114, Family::Photo, Yield::High, CGUIInkTank::InkPhoto},
    Cartridge{127, Family::Photo, Yield::Generic, CGUIInkTank::InkPhotoGeneric},
    Cartridge{128, Family::AltColor, Yield::Standard, CGUIInkTank::InkAltTriColor},
    Cartridge{129, Family::AltColor, Yield::Low, CGUIInkTank::InkAltTriColor},
    Cartridge{130, Family::AltColor, Yield::High, CGUIInkTank::InkAltTriColor},
    Cartridge{143, Family::AltColor, Yield::Generic, CGUIInkTank::InkAltTriColorGeneric},
};
static_assert(std::ranges::is_sorted(Cartridges, {}, &Cartridge::identity));

const Cartridge* FindCartridge(int identity)
{
    const auto found = std::ranges::lower_bound(Cartridges, identity, {}, &Cartridge::identity);
    return found != Cartridges.end() && found->identity == identity ? &*found : nullptr;
}

bool IsOf(int identity, Family family)
{
    const Cartridge* const cartridge = FindCartridge(identity);
    return cartridge && cartridge->family == family;
}

bool IsOf(int identity, Yield yield)
{
    const Cartridge* const cartridge = FindCartridge(identity);
    return cartridge && cartridge->yield == yield;
}

/// The inks of a tank, whatever the cartridge's yield and status.
enum class Inks
{
    Black,
    First,
    Second,
    Third,
    Colors,
    PhotoColors,
    None,
};

/// What a kind of ink turns into when the cartridge's status is flagged, and where its level stands in the report.
struct Kind
{
    InkColor color;
    InkColor flagged;
    Inks inks;
};
constexpr std::array Kinds{
    Kind{CGUIInkTank::InkBlack, CGUIInkTank::InkBlackStatus, Inks::Black},
    Kind{CGUIInkTank::InkColor1, CGUIInkTank::InkMissing, Inks::First},
    Kind{CGUIInkTank::InkColor2, CGUIInkTank::InkMissing, Inks::Second},
    Kind{CGUIInkTank::InkColor3, CGUIInkTank::InkMissing, Inks::Third},
    Kind{CGUIInkTank::InkTriColor, CGUIInkTank::InkTriColorStatus, Inks::Colors},
    Kind{CGUIInkTank::InkPhoto, CGUIInkTank::InkPhotoStatus, Inks::PhotoColors},
    Kind{CGUIInkTank::InkMissing, CGUIInkTank::InkMissing, Inks::None},
    Kind{CGUIInkTank::InkInvalid, CGUIInkTank::InkMissing, Inks::None},
    Kind{CGUIInkTank::InkAltTriColor, CGUIInkTank::InkTriColorStatus, Inks::Colors},
    Kind{CGUIInkTank::InkBlackGeneric, CGUIInkTank::InkBlackStatus, Inks::Black},
    Kind{CGUIInkTank::InkTriColorGeneric, CGUIInkTank::InkTriColorStatus, Inks::Colors},
    Kind{CGUIInkTank::InkPhotoGeneric, CGUIInkTank::InkPhotoStatus, Inks::PhotoColors},
    Kind{CGUIInkTank::InkAltTriColorGeneric, CGUIInkTank::InkTriColorStatus, Inks::Colors},
    Kind{CGUIInkTank::InkTriColorStatus, CGUIInkTank::InkMissing, Inks::Colors},
    Kind{CGUIInkTank::InkPhotoStatus, CGUIInkTank::InkMissing, Inks::PhotoColors},
    Kind{CGUIInkTank::InkBlackStatus, CGUIInkTank::InkMissing, Inks::Black},
};
static_assert(tvk::IsIndexedByColor(Kinds));

bool IsFlagged(int status)
{
    return status == 2 || status == 4 || status == 5;
}

/// The level of a cartridge of three inks: the lowest, and unknown as soon as one of them is.
int LowestLevel(int first, int second, int third)
{
    const auto [lowest, highest] = std::minmax({first, second, third});
    return lowest >= 0 && highest <= 100 ? lowest : UnknownLevel;
}

/// What is shown before the printer has reported: no cartridges, no levels.
constexpr INKINFO NoReport()
{
    INKINFO ink{};
    for (int* const level : {&ink.InkPercent1, &ink.InkPercent2, &ink.InkPercent3, &ink.InkPercent4, &ink.InkPercent5,
                             &ink.InkPercent6, &ink.InkPercent7})
        *level = UnknownLevel;
    return ink;
}
constexpr INKINFO EmptyReport = NoReport();

/// Starts the ordering program. Where it lies may not be known: the arguments must not stand in its place.
bool Start(const CString& program, const CString& arguments)
{
    return !program.IsEmpty() && tvk::StartDetached(program + arguments);
}
} // namespace

CGUIInkDisplay::CGUIInkDisplay() : m_apTanks{}, m_pInkInfo(nullptr), m_nMode(0), m_hModule(nullptr), m_strDIMSKey("PSW")
{
}

CGUIInkDisplay::~CGUIInkDisplay() = default;

void CGUIInkDisplay::SetInkInfo(INKINFO* ink, void*)
{
    m_pInkInfo = ink;
}

const INKINFO& CGUIInkDisplay::Report() const
{
    return m_pInkInfo ? *m_pInkInfo : EmptyReport;
}

int CGUIInkDisplay::GetCartID(CartIDType type, CartPosition position)
{
    static constexpr int INKINFO::*const fields[2][2] = {
        {&INKINFO::iPhysCartID1, &INKINFO::iPhysCartID2},
        {&INKINFO::iLogCartID1, &INKINFO::iLogCartID2},
    };
    if ((type != Physical && type != Logical) || (position != First && position != Second))
        return 0;
    return Report().*fields[type][position];
}

int CGUIInkDisplay::IsItBlack(CartIDType type, CartPosition position)
{
    return IsOf(GetCartID(type, position), Family::Black);
}

int CGUIInkDisplay::IsItCMY(CartIDType type, CartPosition position)
{
    const int identity = GetCartID(type, position);
    return IsOf(identity, Family::Color) || IsOf(identity, Family::AltColor);
}

int CGUIInkDisplay::IsItALTCMY(CartIDType type, CartPosition position)
{
    return IsOf(GetCartID(type, position), Family::AltColor);
}

int CGUIInkDisplay::IsItKCM(CartIDType type, CartPosition position)
{
    return IsOf(GetCartID(type, position), Family::Photo);
}

int CGUIInkDisplay::IsItHighYield(CartIDType type, CartPosition position)
{
    return IsOf(GetCartID(type, position), Yield::High);
}

int CGUIInkDisplay::IsItLowYield(CartIDType type, CartPosition position)
{
    return IsOf(GetCartID(type, position), Yield::Low);
}

int CGUIInkDisplay::IsItGeneric(CartIDType type, CartPosition position)
{
    return IsOf(GetCartID(type, position), Yield::Generic);
}

int CGUIInkDisplay::IsItMissing(CartIDType type, CartPosition position)
{
    return GetCartID(type, position) == MissingCartridge;
}

int CGUIInkDisplay::IsItInvalid(CartIDType type, CartPosition position)
{
    return GetCartID(type, position) == InvalidCartridge;
}

int CGUIInkDisplay::IsItValid(CartIDType type, CartPosition position)
{
    return FindCartridge(GetCartID(type, position)) != nullptr;
}

int CGUIInkDisplay::IsItWrongPosition(CartIDType type, CartPosition position)
{
    CartPosition colorPosition = First;
    switch (NumberSetting("IDO_PRINTHEADFORMAT"))
    {
    case 1:
        break;
    case 2:
        colorPosition = Second;
        break;
    default:
        m_Spy.OutputData("IsItWrongPosition() default = never error");
        return 0;
    }
    return position == colorPosition ? IsItKCM(type, position) : IsItCMY(type, position);
}

int CGUIInkDisplay::AreAnyMissing(CartIDType type)
{
    return IsItMissing(type, First) || IsItMissing(type, Second);
}

int CGUIInkDisplay::AreAnyKCM(CartIDType type)
{
    return IsItKCM(type, First) || IsItKCM(type, Second);
}

int CGUIInkDisplay::AreTheySwapped(CartIDType type)
{
    return IsItWrongPosition(type, First) && IsItWrongPosition(type, Second);
}

CGUIInkTank::InkColor CGUIInkDisplay::WhatIsIt(int identity)
{
    if (identity == MissingCartridge)
        return CGUIInkTank::InkMissing;
    const Cartridge* const cartridge = FindCartridge(identity);
    return cartridge ? cartridge->color : CGUIInkTank::InkInvalid;
}

CGUIInkTank::InkColor CGUIInkDisplay::WhatIsIt(CartIDType type, CartPosition position)
{
    return WhatIsIt(GetCartID(type, position));
}

CGUIInkTank::InkColor CGUIInkDisplay::CheckCartridgeID(int identity, int status)
{
    InkColor color = WhatIsIt(identity);
    if (color == CGUIInkTank::InkInvalid) // to the user it is not there
        color = CGUIInkTank::InkMissing;
    if (NumberSetting("IDO_SUPPORT_SMARTMESSAGING") == 1 && IsFlagged(status))
        color = Kinds[static_cast<size_t>(color)].flagged;
    return color;
}

void CGUIInkDisplay::InitializeInkTanks(CGUIInkTank* tank0, CGUIInkTank* tank1, CGUIInkTank* tank2, CGUIInkTank* tank3,
                                        CGUIInkTank::BmpType type, int mode, HINSTANCE module)
{
    CGUIInkTank* const tanks[] = {tank0, tank1, tank2, tank3};
    std::ranges::copy(tanks, m_apTanks);
    m_nMode = mode;
    m_hModule = module;
    for (CGUIInkTank* const tank : m_apTanks)
    {
        if (tank)
            tank->m_nBmpType = type;
    }
    DetermineCGUIInkDisplay();
}

void CGUIInkDisplay::DetermineCGUIInkDisplay()
{
    const INKINFO& ink = Report();
    if (m_nMode == 1)
    {
        InitTank(1, CheckCartridgeID(ink.iLogCartID1, ink.iCart1Authenticity));
    }
    else if (m_nMode == 2)
    {
        // The tanks stand as the cartridges do in the printer: in every format but 2 the second one is on the left.
        const bool inOrder = NumberSetting("IDO_PRINTHEADFORMAT") == 2;
        const InkColor first = CheckCartridgeID(ink.iLogCartID1, ink.iCart1Authenticity);
        const InkColor second = CheckCartridgeID(ink.iLogCartID2, ink.iCart2Authenticity);
        InitTank(0, inOrder ? first : second);
        InitTank(1, inOrder ? second : first);
    }
    else
    {
        InitTank(0, CGUIInkTank::InkBlack);
        InitTank(1, CGUIInkTank::InkColor1);
        InitTank(2, CGUIInkTank::InkColor2);
        InitTank(3, CGUIInkTank::InkColor3);
    }
}

void CGUIInkDisplay::InitTank(int tank, CGUIInkTank::InkColor color)
{
    UpdateInkTank(color, tank, LevelOf(color));
}

int CGUIInkDisplay::LevelOf(CGUIInkTank::InkColor color)
{
    const INKINFO& ink = Report();
    switch (Kinds[static_cast<size_t>(color)].inks)
    {
    case Inks::Black:
        return ink.InkPercent1;
    case Inks::First:
        return ink.InkPercent2;
    case Inks::Second:
        return ink.InkPercent3;
    case Inks::Third:
        return ink.InkPercent4;
    case Inks::PhotoColors:
        // A photo cartridge in the black one's place has levels of its own.
        if (IsItKCM(Logical, Second))
            return LowestLevel(ink.InkPercent5, ink.InkPercent6, ink.InkPercent7);
        [[fallthrough]];
    case Inks::Colors:
        return LowestLevel(ink.InkPercent2, ink.InkPercent3, ink.InkPercent4);
    case Inks::None:
        break;
    }
    return UnknownLevel;
}

void CGUIInkDisplay::UpdateInkTank(CGUIInkTank::InkColor color, int tank, int percent)
{
    const auto index = static_cast<size_t>(tank);
    if (index >= std::size(m_apTanks) || !m_apTanks[index])
        return;
    m_apTanks[index]->SetColor(color);
    m_apTanks[index]->SetInkPercent(percent, m_hModule);
}

void CGUIInkDisplay::DrawTanks(CDC* pDC)
{
    for (CGUIInkTank* const tank : m_apTanks)
    {
        if (tank)
            tank->DrawOn(pDC);
    }
}

CString CGUIInkDisplay::SuppliesKey()
{
    return tvk::SuppliesKeyPath([this](const char* key) { return NumberSetting(key); },
                                [this](const char* key) { return TextSetting(key); });
}

DWORD CGUIInkDisplay::ReadDIMSValue(HKEY root, const CString& key)
{
    DWORD value = 1; // an unreadable flag is a set one
    tvk::Succeeds(
        [&]
        {
            if (m_Registry.Open(root, key, 0, KEY_ALL_ACCESS))
                tvk::ReadNumber(m_Registry, TextSetting("IDO_KEY_NAME_MORVAY_DIMS_SETTING"), value);
        });
    m_Registry.Close();
    return value;
}

void CGUIInkDisplay::WriteDIMSValue(HKEY root, const CString& key, unsigned long value)
{
    tvk::Succeeds( // otherwise the flag stays as it is
        [&]
        {
            unsigned long disposition = 0;
            m_Registry.Create(disposition, root, key, REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS, nullptr);
            m_Registry.Write(TextSetting("IDO_KEY_NAME_MORVAY_DIMS_SETTING"),
                             reinterpret_cast<const unsigned char*>(&value), sizeof value, REG_DWORD);
        });
    m_Registry.Close();
}

int CGUIInkDisplay::GetDIMSValue()
{
    const DWORD value = ReadDIMSValue(HKEY_LOCAL_MACHINE, SuppliesKey());
    m_Spy.OutputData("CGUIInkDisplay::GetDIMSValue (dwRegVal) ...Called in BEW");
    m_Spy.OutputData(value);
    return value != 0;
}

int CGUIInkDisplay::GetDIMSValue(CString printerName)
{
    m_Registry.SetFriendlyName(printerName);
    return ReadDIMSValue(nullptr, m_strDIMSKey) != 0;
}

void CGUIInkDisplay::SetDIMSValue(unsigned long value)
{
    WriteDIMSValue(HKEY_LOCAL_MACHINE, SuppliesKey(), value);
    m_Spy.OutputData("CGUIInkDisplay::SetDIMSValue() ...In Install GUI");
    m_Spy.OutputData("dwRegVal ==");
    m_Spy.OutputData(value);
}

void CGUIInkDisplay::SetDIMSValue(CString printerName, unsigned long value)
{
    m_Registry.SetFriendlyName(printerName);
    m_Spy.OutputData("CGUIInkDisplay::SetDIMSValue()");
    m_Spy.OutputData("dwRegVal ==");
    m_Spy.OutputData(value);
    WriteDIMSValue(nullptr, m_strDIMSKey, value);
}

CString CGUIInkDisplay::OrderingProgram()
{
    CString file = "\\" + TextSetting("IDO_RZB_EXECUTABLENAME_PATH");
    file += TextSetting("IDO_PSWX_NT");
    return tvk::BelowSystemDirectory(file, 256);
}

void CGUIInkDisplay::LaunchInkOrderApp()
{
    const CString program = OrderingProgram();
    if (!Start(program, " " + TextSetting("IDO_ORDERSUPPLIES_EXECUTABLENAME_ARGUMENTS")))
    {
        m_Spy.OutputData("CreateProcess() Return Code");
        m_Spy.OutputData(0);
    }
}

void CGUIInkDisplay::LaunchReorderInkApp()
{
    const CString program = OrderingProgram();
    CString arguments;
    if (NumberSetting("IDO_ONECLICK_INK_ORDER") == 1)
    {
        arguments = " /F=\"" + TextSetting("IDO_PRINTER_MODEL") + "\" /T=";
        arguments += NumberSetting("IDO_MORVAY_GUI_OPTION") == 1 ? "700" : "203";
        arguments += " /L=a";
    }
    else
    {
        arguments = " " + TextSetting("IDO_DESKTOPICON_EXECUTABLENAME_ARGUMENTS");
    }
    Start(program, arguments);
}

void CGUIInkDisplay::LaunchReorderInkAppSilentMode()
{
    const CString program = OrderingProgram();
    Start(program, " /M=" + TextSetting("IDO_PRINTER_MODEL") + " /T=701 /L=a");
}

unsigned long CGUIInkDisplay::NumberSetting(const char* key)
{
    unsigned long value = 0;
    return m_Product.GetSetting(key, value);
}

CString CGUIInkDisplay::TextSetting(const char* key)
{
    return m_Product.GetSetting(key, m_strSetting);
}
