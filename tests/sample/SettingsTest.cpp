// The sample product's settings, read as programs read them, before anything is installed.
#include "KnownKeys.h"
#include "SampleProduct.h"

#include <gtest/gtest.h>

namespace
{
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
            EXPECT_TRUE(known.number || Text(known.name) != "ERROR");
        }
        else if (known.number)
        {
            EXPECT_EQ(bytes.size(), sizeof(unsigned long));
            EXPECT_EQ(Number(known.name), NumberOf(bytes));
        }
        else
        {
            EXPECT_EQ(Text(known.name) + '\0', bytes);
        }
    }
    // What stands in for the rewritten ones; the driver is a release.
    EXPECT_EQ(Number("IDO_DEBUGMSG"), 0u);
    EXPECT_EQ(Text("IDO_RZB_EXECUTABLENAME_PATH"), "spool\\drivers\\x64\\3\\");
    EXPECT_EQ(Text("IDO_RZB_TECHNICALCONTACT_HELPFILE"), PRODUCT_PREFIX "cont.chm");
    EXPECT_EQ(TvkProduct().IsDriverLanguageRTL(), 0);
}

TEST(SampleSettings, TheStoreEditionFallsBackToTheSeries)
{
    const auto edition = [](const char* key) { return Text(key, TvkProduct(PRODUCT_PREFIX "mrvy.dll")); };
    EXPECT_EQ(edition("IDO_MODEL"), "Inkline 46");
    EXPECT_EQ(edition("IDO_SUPPLIES_SUBURL"), "supplies");
    EXPECT_EQ(edition("IDO_NO_SUCH_KEY"), "ERROR");
    EXPECT_EQ(Text("IDO_MODEL"), "Larkmoor 400 Series");
}
