// The driver's language, as the product's resource library names it.
#pragma once

#include <afx.h>

namespace tvk
{
inline constexpr UINT DriverLanguageString = 8003; ///< string resource: the language's English name
inline constexpr char Hebrew[] = "hebrew";
inline constexpr char Arabic[] = "arabic";

/// The name in the string table of `module` (null: the host program); empty when there is none.
CString DriverLanguageName(HINSTANCE module);
} // namespace tvk
