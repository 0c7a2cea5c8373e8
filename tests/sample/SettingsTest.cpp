// The sample product's settings, read as programs read them, before anything is installed.
#include "KnownKeys.h"
#include "settings/TvkProduct.h"

#include <gmock/gmock.h>

#include <cstring>
#include <string>

namespace
{
/// A resource of the product's settings library; the whole of its bytes.
std::string Resource(const std::string& key)
{
    const HMODULE library = LoadLibraryA(PRODUCT_PREFIX "jswr.dll");
    const HRSRC found = FindResourceA(library, key.c_str(), MAKEINTRESOURCEA(10));
    std::string bytes;
    if (found)
        bytes.assign(static_cast<const char*>(LockResource(LoadResource(library, found))),
                     SizeofResource(library, found));
    FreeLibrary(library);
    return bytes;
}

std::string Text(TvkProduct&& product, const char* key)
{
    CString value;
    return std::string(product.GetSetting(key, value));
}

unsigned long Number(const char* key)
{
    unsigned long value = 99;
    return TvkProduct().GetSetting(key, value);
}
} // namespace

TEST(SampleSettings, AnswerEveryKnownKeyWithItsKind)
{
    for (const KnownKey& known : KnownKeys)
    {
        SCOPED_TRACE(known.name);
        const std::string bytes = Resource(known.name);
        if (known.rewritten)
        {
            EXPECT_EQ(bytes, "") << "never looked up";
            if (!known.number)
            {
                EXPECT_NE(Text(TvkProduct(), known.name), "ERROR");
            }
        }
        else if (known.number)
        {
            unsigned long number = 0;
            ASSERT_EQ(bytes.size(), sizeof number);
            std::memcpy(&number, bytes.data(), sizeof number);
            EXPECT_EQ(Number(known.name), number);
        }
        else
        {
            ASSERT_EQ(bytes.size(), std::strlen(bytes.c_str()) + 1);
            EXPECT_EQ(Text(TvkProduct(), known.name), bytes.c_str());
        }
    }
}

TEST(SampleSettings, RewrittenKeysReadWhatStandsInForThem)
{
    EXPECT_EQ(Number("IDO_DEBUGMSG"), 0u) << "the driver is a release";
    EXPECT_EQ(Text(TvkProduct(), "IDO_RZB_EXECUTABLENAME_PATH"), "spool\\drivers\\x64\\3\\");
    EXPECT_EQ(Text(TvkProduct(), "IDO_RZB_TECHNICALCONTACT_HELPFILE"), PRODUCT_PREFIX "cont.chm");
}

TEST(SampleSettings, NameFilesThatAreThere)
{
    EXPECT_EQ(Text(TvkProduct(), "IDO_UTIL_DLL"), PRODUCT_PREFIX "util.dll");
    for (const char* key : {"IDO_UTIL_DLL", "IDO_UTIL_RESDLL", "IDO_JSW_RESDLL"})
        EXPECT_NE(GetFileAttributesA(Text(TvkProduct(), key).c_str()), INVALID_FILE_ATTRIBUTES) << key;
    EXPECT_EQ(TvkProduct().IsDriverLanguageRTL(), 0);
}

TEST(SampleSettings, TheStoreEditionFallsBackToTheSeries)
{
    const auto edition = [](const char* key) { return Text(TvkProduct(PRODUCT_PREFIX "mrvy.dll"), key); };
    EXPECT_EQ(edition("IDO_MODEL"), "Inkline 46");
    EXPECT_EQ(edition("IDO_SUPPLIES_SUBURL"), "supplies");
    EXPECT_EQ(edition("IDO_NO_SUCH_KEY"), "ERROR");
    EXPECT_EQ(Text(TvkProduct(), "IDO_MODEL"), "Larkmoor 400 Series");
}
