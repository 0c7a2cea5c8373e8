// The current resource handle and the chain of extension modules.
#include "ids.h"
#include <afxdllx.h>
#include <afxwin.h>
#include <gtest/gtest.h>

namespace
{
// Two resource-only libraries, the first one set as the current handle or linked into the chain by the tests.
class Resources : public testing::Test
{
protected:
    void SetUp() override
    {
        m_first = LoadLibraryA("framework_first.dll");
        m_second = LoadLibraryA("framework_second.dll");
        ASSERT_TRUE(m_first && m_second);
    }
    void TearDown() override
    {
        AfxSetResourceHandle(m_saved);
        FreeLibrary(m_first);
        FreeLibrary(m_second);
        EXPECT_FALSE(Text(IDS_SHARED)) << "the chain still leads to a library that is gone";
    }
    // The string's text, null when there is none.
    static const char* Text(UINT id)
    {
        static CString text;
        return text.LoadString(id) ? static_cast<LPCSTR>(text) : nullptr;
    }

    const HINSTANCE m_saved = AfxGetResourceHandle();
    HMODULE m_first = nullptr;
    HMODULE m_second = nullptr;
};
} // namespace

TEST_F(Resources, AProgramWithoutApplicationObjectStartsWithItsOwnModule)
{
    EXPECT_EQ(m_saved, GetModuleHandleA(nullptr));
    EXPECT_EQ(AfxGetInstanceHandle(), GetModuleHandleA(nullptr));
    EXPECT_EQ(AfxFindResourceHandle(MAKEINTRESOURCEA(12345), RT_DIALOG), m_saved) << "found nowhere";
}

TEST_F(Resources, CurrentHandleThenChainFromTheNewestOn)
{
    EXPECT_EQ(Text(IDS_SHARED), nullptr);
    AFX_EXTENSION_MODULE first = {};
    AFX_EXTENSION_MODULE second = {};
    ASSERT_TRUE(AfxInitExtensionModule(first, m_first));
    ASSERT_TRUE(AfxInitExtensionModule(second, m_second));
    new CDynLinkLibrary(first);
    EXPECT_STREQ(Text(IDS_SHARED), "from the first");
    new CDynLinkLibrary(second);
    EXPECT_STREQ(Text(IDS_SHARED), "from the second");
    EXPECT_STREQ(Text(IDS_ONLY_SECOND), "only in the second");
    AfxSetResourceHandle(m_first);
    EXPECT_STREQ(Text(IDS_SHARED), "from the first");
    EXPECT_STREQ(Text(IDS_ONLY_SECOND), "only in the second");
    EXPECT_EQ(AfxFindResourceHandle(MAKEINTRESOURCEA(IDD_MODAL), RT_DIALOG), m_first);
    AfxSetResourceHandle(m_saved);
    AfxTermExtensionModule(second);
    EXPECT_STREQ(Text(IDS_SHARED), "from the first");
    AfxTermExtensionModule(first);
    EXPECT_EQ(Text(IDS_SHARED), nullptr);
}

TEST_F(Resources, StringsOfAnyLength)
{
    AfxSetResourceHandle(m_first);
    CString text("before");
    ASSERT_TRUE(text.LoadString(IDS_LONG));
    EXPECT_EQ(text.GetLength(), 600);
    EXPECT_EQ(text.Right(10), "0123456789");
    ASSERT_TRUE(text.LoadString(IDS_ACCENTED));
    EXPECT_EQ(text, "Gr\xf6\xdf"
                    "e");
    EXPECT_FALSE(text.LoadString(IDS_SHARED + 15)) << "a gap in an existing block";
    EXPECT_TRUE(text.IsEmpty());
    text.Format(IDS_FORMAT, "Cyan", 40);
    EXPECT_EQ(text, "Cyan has 40%");
}
