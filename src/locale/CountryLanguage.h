// The user's regional setting as one of the suite's user-interface languages. Plain functions with C linkage, so that
// hosts in any language can call them. Nothing is kept between calls: a changed regional setting counts at once.
#pragma once

/// Bytes that `Get32CountryLanguage` writes for the locale string, its NUL included.
#define COUNTRYLANGUAGE_LOCALE_SIZE 9
/// Most bytes that `Get32CountryLanguage` writes for the language name, its NUL included.
#define COUNTRYLANGUAGE_NAME_SIZE 17
/// Most bytes that `GetDecimalLangID` writes, its NUL included.
#define COUNTRYLANGUAGE_DECIMAL_SIZE 11

#ifdef __cplusplus
extern "C"
{
#endif

    /// Maps the current user's locale to the suite's language.
    /// @param localeOut receives the locale as eight upper-case hexadecimal digits ("00000409"); at least
    ///                  `COUNTRYLANGUAGE_LOCALE_SIZE` bytes
    /// @param nameOut   receives the suite's key of the language ("ENGLISH"); at least `COUNTRYLANGUAGE_NAME_SIZE`
    /// bytes
    /// @return the language code, 0 to 48. Never fails: a locale that is unknown or cannot be read is French of France
    ///         ("0000040C", "FRENCH", 1).
    unsigned int Get32CountryLanguage(char* localeOut, char* nameOut);

    /// @return 1 when the current user's language is written in a double-byte character set (Japanese, Simplified or
    ///         Traditional Chinese, Korean), else 0.
    int IsOSLanguageDBCS(void);

    /// Converts a hexadecimal language identifier ("0409", "00000409") to its decimal text ("1033"). Spanish in modern
    /// sorting (3082) is given as Spanish in traditional sorting (1034), the one that web addresses know.
    /// @param hexId      the identifier; text that is no hexadecimal number gives "0"
    /// @param decimalOut receives the text; at least `COUNTRYLANGUAGE_DECIMAL_SIZE` bytes, never exceeded
    void GetDecimalLangID(const char* hexId, char* decimalOut);

#ifdef __cplusplus
}
#endif
