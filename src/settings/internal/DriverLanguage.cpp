#include "settings/internal/DriverLanguage.h"

namespace tvk
{
CString DriverLanguageName(HINSTANCE module)
{
    char name[256] = "";
    const int length = LoadStringA(module, DriverLanguageString, name, sizeof name);
    return CString(name, length);
}
} // namespace tvk
