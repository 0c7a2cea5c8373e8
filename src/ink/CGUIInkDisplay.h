// What the printer's cartridge report means, and the tanks that show it.
#pragma once

#include "diag/CSpy.h"
#include "diag/StatusStructures.h"
#include "ink/CGUIInkTank.h"
#include "settings/TvkProduct.h"
#include "system/CRegistry.h"

/// Interprets an INKINFO report: what kind of cartridge is where, which tank shows which cartridge and how full it is.
/// Also keeps the printer's "DIMS" flag and starts the program that orders supplies.
///
/// A host calls SetInkInfo() with a report that outlives the calls below (it is read, never changed), and
/// InitializeInkTanks() with the tank controls of its window; again whenever the report changes.
///
/// **Cartridge identities** come in families of four: standard, low yield, high yield, generic.
///
///     black                48   49   50   63
///     colour               80   81   82   95
///     photo               112  113  114  127
///     alternative colour  128  129  130  143
///
/// 16 is an invalid cartridge and 32 a missing one. Every member that takes a CartIDType and a CartPosition reads the
/// identity that these select; without a report, or with any other value of either, no cartridge is selected: GetCartID
/// answers 0 and every question about it is answered with 0 (no).
///
/// Nothing here fails loudly: unknown identities are classified as invalid, registry failures read as the default.
class AFX_EXT_CLASS CGUIInkDisplay
{
public:
    /// Which identity of a cartridge is meant.
    enum CartIDType : int
    {
        Physical = 0, ///< what the cartridge is
        Logical = 1,  ///< what the printer treats it as
    };

    /// Which cartridge is meant.
    enum CartPosition : int
    {
        First = 0,
        Second = 1,
    };

    /// No report, no tanks.
    CGUIInkDisplay();
    CGUIInkDisplay(const CGUIInkDisplay&) = delete;
    CGUIInkDisplay& operator=(const CGUIInkDisplay&) = delete;
    virtual ~CGUIInkDisplay();

    /// Names the report that everything is read from; null for none. It must live as long as it is in use. `reserved`
    /// is not used: pass null.
    void SetInkInfo(INKINFO* ink, void* reserved);

    /// The identity selected; 0 when none is.
    int GetCartID(CartIDType type, CartPosition position);

    /// 1 when the identity selected is of the kind asked for, else 0.
    int IsItBlack(CartIDType type, CartPosition position);
    int IsItCMY(CartIDType type, CartPosition position);    ///< colour or alternative colour
    int IsItALTCMY(CartIDType type, CartPosition position); ///< alternative colour alone
    int IsItKCM(CartIDType type, CartPosition position);    ///< photo
    int IsItHighYield(CartIDType type, CartPosition position);
    int IsItLowYield(CartIDType type, CartPosition position);
    int IsItGeneric(CartIDType type, CartPosition position);
    int IsItMissing(CartIDType type, CartPosition position);
    int IsItInvalid(CartIDType type, CartPosition position); ///< the identity 16, not merely an unknown one
    /// 1 for a cartridge of one of the families: neither missing nor invalid nor unknown.
    int IsItValid(CartIDType type, CartPosition position);
    /// 1 when a colour (or alternative colour) cartridge sits where the photo cartridge belongs, or a photo cartridge
    /// where the colour one belongs. Which belongs where is the print heads' format, the setting
    /// "IDO_PRINTHEADFORMAT": 1 has the colour cartridge first and the photo cartridge second, in the black one's
    /// place; 2 has them the other way round. With any other format (one cartridge, or four tanks) no place is wrong.
    /// Black cartridges and those of no family are never in the wrong place.
    int IsItWrongPosition(CartIDType type, CartPosition position);

    /// 1 when at least one cartridge is missing.
    int AreAnyMissing(CartIDType type);
    /// 1 when at least one is a photo cartridge.
    int AreAnyKCM(CartIDType type);
    /// 1 when both are in the wrong position: each sits in the other's place.
    int AreTheySwapped(CartIDType type);

    /// The kind of ink that an identity stands for; CGUIInkTank::InkInvalid for an unknown one. The status of a
    /// cartridge is not looked at.
    CGUIInkTank::InkColor WhatIsIt(int identity);
    CGUIInkTank::InkColor WhatIsIt(CartIDType type, CartPosition position);

    /// Takes the tanks of a window and shows the report in them.
    ///
    /// One tank (mode 1): the first cartridge in tank 1. Two tanks (mode 2): the cartridges in tank 0 and tank 1, in
    /// this order when the setting "IDO_PRINTHEADFORMAT" is 2, else exchanged. Any other mode: black and the three
    /// colours of the report in tanks 0 to 3.
    ///
    /// A cartridge of several inks shows the lowest of its levels, and no level as soon as one of them is unknown. A
    /// cartridge that is missing or not accepted has none. With the setting "IDO_SUPPORT_SMARTMESSAGING" at 1, a
    /// cartridge's status 2, 4 or 5 flags its tank (CGUIInkTank::InkBlackStatus and its like). Without a report all
    /// levels are unknown.
    /// @param tank0   the tank controls, windows already; null ones are skipped. They must outlive this object's use
    /// @param type    bitmap type of all four
    /// @param mode    how many tanks are shown
    /// @param module  module of the tanks' bitmaps; null searches the framework's resource modules
    void InitializeInkTanks(CGUIInkTank* tank0, CGUIInkTank* tank1, CGUIInkTank* tank2, CGUIInkTank* tank3,
                            CGUIInkTank::BmpType type, int mode, HINSTANCE module);

    /// Shows an ink and a level in one tank.
    /// @param tank     0 to 3; any other number, and a tank that was not given, is ignored
    /// @param percent  0 to 100, or anything else for an unknown level
    void UpdateInkTank(CGUIInkTank::InkColor color, int tank, int percent);

    /// Draws the tanks, as they are, onto a context of their parent window, each in its place: for hosts that compose
    /// their window in memory. The controls draw themselves without this.
    void DrawTanks(CDC* pDC);

    /// The product's DIMS flag: 1 or 0. It is the number in HKEY_LOCAL_MACHINE, in the model's supplies key, named by
    /// the setting "IDO_KEY_NAME_MORVAY_DIMS_SETTING", and 1 when that cannot be read.
    int GetDIMSValue();
    /// The DIMS flag of one installed printer (its friendly name), from the key "PSW" of its settings; 1 by default.
    int GetDIMSValue(CString printerName);
    /// Sets the product's flag, creating the key when it is missing. A failure is not reported: read the flag back.
    void SetDIMSValue(unsigned long value);
    /// Sets one printer's flag, likewise.
    void SetDIMSValue(CString printerName, unsigned long value);

    /// Starts the ordering program for its order page and does not wait for it. The program is "IDO_PSWX_NT" in the
    /// folder "IDO_RZB_EXECUTABLENAME_PATH" below the system directory, its command line not quoted; the arguments are
    /// "IDO_ORDERSUPPLIES_EXECUTABLENAME_ARGUMENTS". A failed start goes to the trace log.
    void LaunchInkOrderApp();
    /// The same for a reorder from the desktop. With "IDO_ONECLICK_INK_ORDER" at 1 the arguments name the model and the
    /// page, 700 with "IDO_MORVAY_GUI_OPTION" at 1, else 203; otherwise they are
    /// "IDO_DESKTOPICON_EXECUTABLENAME_ARGUMENTS". A failed start is not reported.
    void LaunchReorderInkApp();
    /// The same for a reorder without questions (page 701).
    void LaunchReorderInkAppSilentMode();

protected:
    /// A number and a text of the product's settings; every setting named above is asked through these.
    virtual unsigned long NumberSetting(const char* key);
    virtual CString TextSetting(const char* key);

private:
    CGUIInkTank* m_apTanks[4];
    INKINFO* m_pInkInfo;
    int m_nMode;
    HINSTANCE m_hModule;
    TvkProduct m_Product;
    CString m_strSetting; // second argument of GetSetting
    CRegistry m_Registry;
    CString m_strDIMSKey; // sub-key of a printer's settings
    CSpy m_Spy;

    CGUIInkTank::InkColor CheckCartridgeID(int identity, int status);
    void DetermineCGUIInkDisplay();
    void InitTank(int tank, CGUIInkTank::InkColor color);

    const INKINFO& Report() const;
    int LevelOf(CGUIInkTank::InkColor color);
    CString SuppliesKey();
    DWORD ReadDIMSValue(HKEY root, const CString& key);
    void WriteDIMSValue(HKEY root, const CString& key, unsigned long value);
    CString OrderingProgram();
};
