// From the name of a link to the maker's page in the user's browser.
#pragma once

#include "diag/CSpy.h"
#include "diag/StatusStructures.h"
#include "ink/CGUIInkDisplay.h"
#include "links/CGUILink.h"
#include "settings/TvkProduct.h"
#include "system/CRegistry.h"

/// A link to a page of the maker's: composes the address that it stands for and opens it in the browser. It is a
/// control (see CGUILink); whoever only needs addresses uses it without a window.
///
/// A link is named by its sub-URL: the text of one of the fifteen settings `IDO_..._SUBURL`, which tell the kinds of
/// links apart. Each kind has a setting `IDO_..._URL_OVERRIDE`: "0" means that the address is composed, any other text
/// is the complete address. Composed addresses consist of the base address `IDO_TORVANEURL` and parameters. Every
/// separator stands in the settings `IDO_..._URLPARAM`; the class adds none of its own, and encodes nothing.
///
/// An address never fails to be composed: a missing setting contributes "ERROR", a registry value that cannot be read
/// the text of a missing one, and without an ink report the cartridges are left out. The link keeps its last address
/// until another one takes its place, also when a link name is unknown.
///
/// The browser is the program registered for ".htm" files. On the NT family it is started in the session of the user at
/// the console, with that user's token and environment, also when the host is a service; where that fails, as a process
/// of the host. The address is appended to the browser's command line as it is, without quotation marks: see
/// docs/security.md for what a host must see to.
///
/// Every step is traced. Make and use a link on the host's user-interface thread.
class AFX_EXT_CLASS CGUIUrlLink : public CGUILink
{
    DECLARE_DYNAMIC(CGUIUrlLink)

public:
    /// No address, no printer, no ink report; no partner parameter. The text is blue, hovered or not, and underlined.
    CGUIUrlLink();
    CGUIUrlLink(const CGUIUrlLink&) = delete;
    CGUIUrlLink& operator=(const CGUIUrlLink&) = delete;
    ~CGUIUrlLink() override;

    /// Makes the address of the link called `subUrl`. An unknown name leaves the address as it was.
    void GetURL(CString subUrl);
    /// Makes the address when the setting `subUrlKey` is `subUrl`, and returns 1; else returns 0.
    int CompareAndTranlateURL(CString subUrlKey, CString overrideKey, CString subUrl);
    /// Makes the address: the text of the setting `overrideKey`, or a composed one when that is "0".
    void TranslateURL(CString subUrl, CString overrideKey);
    /// Composes the address. With the setting `IDO_OEM_URL_OVERRIDE` at "0" it is the plain one of ConstructOEMURL; a
    /// product of the OEM store (links/StoreAddress.h) gets the order information file of its institution, when there
    /// is one, or ConstructAlternateURL's; every other product ConstructStandardURL's.
    void ConstructURL(CString subUrl);
    /// The plain address: the base address and the sub-URL.
    void ConstructOEMURL(CString subUrl);
    /// The maker's format: page, language, printer, country, Windows version, source; the retailer's partner code once
    /// a supplies or reseller link was followed; the cartridges for the supplies page of products with
    /// `IDO_CARTRIDGEINFO_WEBLINKURL` at 1.
    void ConstructStandardURL(CString subUrl);
    /// The OEM store's format: country, service tag, printer, and the cartridges for the supplies page. The sub-URL
    /// itself is not part of it.
    void ConstructAlternateURL(CString subUrl);
    /// Takes the order information file (or address) of the institution that owns the computer, when the registry says
    /// that supplies are not to be ordered in the store. Returns 1 when the address was replaced, else 0.
    int CheckInstitutionalSetting();
    /// Records the visit of the page called `subUrl` with the usage-data recorder, for the printer last followed with.
    void WebContactHistory(CString subUrl);

    /// Makes the address of the link called `subUrl` and opens it.
    /// @param useShell  not 0: GotoURL; 0: GotoURLManually
    void FollowLink(CString subUrl, int useShell);
    /// The same with the printer's ink report, which must live as long as the link uses it; null for none.
    void FollowLink(CString subUrl, INKINFO* ink, int useShell);
    /// The same for a printer, and the visit is recorded once the address was opened. A name of more than 259
    /// characters is cut.
    void FollowLink(CString subUrl, const char* printerName, int useShell);
    /// The same with the printer's ink report and its name.
    void FollowLink(CString subUrl, INKINFO* ink, const char* printerName, int useShell);

    /// Opens an address: by the shell on the 9x family, else, or when the shell refuses, by GotoURLManually.
    /// @param show  SW_ constant for the shell
    /// @return what the shell (more than 32) or GotoURLManually returned
    HINSTANCE GotoURL(const char* address, int show);
    /// Starts the browser with an address. `show` is traced only: the window is shown.
    /// @return not null when the browser was started; it is no module. Null when no browser is registered (its command
    ///         missing, empty or of 260 characters and more), when it could not be started, and also when it was
    ///         started with the calling thread's own token (nobody at the console) while the thread's last error was
    ///         0. So do not open the page another way on a null: it may be open already.
    HINSTANCE GotoURLManually(const char* address, int show);
    /// Traces what an error of the shell (`ShellExecute`, 0 to 32) means to the user, and shows it when the product's
    /// setting `IDO_DEBUGMSG` is 1.
    void ReportError(int error);
    /// Reads the default value of a key.
    /// @param output  at least 260 bytes; untouched when the key cannot be opened, empty when it has no such text or
    ///                one of 260 characters and more
    /// @return the result of opening the key: 0 on success
    long GetRegKey(HKEY root, const char* keyPath, char* output);

protected:
    char m_szPrinterName[260]; ///< as last given to FollowLink; the key of recorded visits
    int m_bReadIniURL;         ///< a supplies or reseller link was followed: from then on the partner is named
    CString m_strURL;          ///< the address
    TvkProduct m_Product;
    CString m_strSetting; ///< second argument of m_Product's look-ups
    CRegistry m_Registry;
    CSpy m_Spy;
    INKINFO* m_pInkInfo; ///< the host's ink report; may be null
    CGUIInkDisplay m_InkDisplay;

private:
    CString Setting(const char* key);
    void AppendSetting(const char* key);
    void AppendPartner();
    void AppendCartridge(const char* codeKey, const char* code, const char* levelKey, int level);
    int SecondLevel();
    CString ReadSuppliesValue(const CString& keyPath, const char* nameKey, const char* missing);
    CString GetServiceTag();

    void NoticeRetailerLink(const CString& subUrl);
    void StoreInkInfo(INKINFO* ink);
    void OpenLink(const CString& subUrl, int useShell);
};
