// A link to an address, for hosts without product settings.
#pragma once

#include "links/CLink.h"

/// A link to an address that the host gives. The shell opens it; where the shell refuses, the program registered for
/// ".htm" files is started with it. Nothing is looked up in product settings, traced or recorded: that is CGUIUrlLink.
///
/// All of this happens with the host's own rights. The shell opens whatever the text names, programs too; the browser's
/// command line gets it as it is, without quotation marks: see docs/security.md for what a host must see to.
class AFX_EXT_CLASS CUrlLink : public CLink
{
    DECLARE_DYNAMIC(CUrlLink)

public:
    /// The text is blue, hovered or not, and underlined.
    CUrlLink();
    ~CUrlLink() override;

    /// Opens an address in a visible window. @return as of GotoURL()
    HINSTANCE FollowLink(CString address);

    /// Opens an address.
    /// @param show  SW_ constant for the browser's window
    /// @return more than 32 for a success, else the error of the shell, for ReportError()
    static HINSTANCE GotoURL(const char* address, int show);
    /// Reads the default value of a key.
    /// @param output  at least 260 bytes; untouched when the key cannot be opened, empty when it has no such text or
    ///                one of 260 characters and more
    /// @return the result of opening the key: 0 on success
    static long GetRegKey(HKEY root, const char* keyPath, char* output);
    /// Shows the user a message box that tells what an error of the shell (`ShellExecute`, 0 to 32) means.
    static void ReportError(int error);
};
