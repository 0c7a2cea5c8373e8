// Run-time class information, and exceptions that are caught by type in another module than the one that threw.
#include "Extension.h"
#include <gtest/gtest.h>
#include <string>

namespace
{
class CMade : public CObject
{
    DECLARE_DYNCREATE(CMade)
};
IMPLEMENT_DYNCREATE(CMade, CObject)

/// The exception that is caught as this type, with its class and its message.
template <class Type>
std::string CaughtAs(Thrown what)
{
    try
    {
        ThrowFromExtension(what);
        return "nothing";
    }
    catch (Type* exception)
    {
        char text[100] = "";
        exception->GetErrorMessage(text, sizeof text);
        const std::string caught = std::string(exception->GetRuntimeClass()->m_lpszClassName) + ": " + text;
        exception->Delete();
        return caught;
    }
}
} // namespace

TEST(Exceptions, AreCaughtByTypeInAnotherModule)
{
    for (int round = 0; round < 2; ++round) // the memory exception is one object, used again
    {
        EXPECT_EQ(CaughtAs<CTestException>(Thrown::Own), "CTestException: ");
        EXPECT_EQ(CaughtAs<CFileException>(Thrown::File), "CFileException: Disk full while accessing full.txt.");
        EXPECT_EQ(CaughtAs<CException>(Thrown::Memory), "CMemoryException: Out of memory.");
        EXPECT_EQ(CaughtAs<CException>(Thrown::NotSupported),
                  "CNotSupportedException: An attempt was made to perform an unsupported operation.");
    }
    EXPECT_EQ(CTestException::Living(), 0);
}

TEST(Exceptions, MessageIsCutToTheBuffer)
{
    CFileException exception(CFileException::fileNotFound, -1, "a.txt");
    char text[8];
    EXPECT_TRUE(exception.GetErrorMessage(text, sizeof text));
    EXPECT_STREQ(text, "a.txt w");
    EXPECT_FALSE(CTestException().GetErrorMessage(text, sizeof text));
    EXPECT_STREQ(text, "");
}

TEST(Objects, KnowTheirClass)
{
    const CTestException exception;
    EXPECT_TRUE(exception.IsKindOf(RUNTIME_CLASS(CTestException)));
    EXPECT_TRUE(exception.IsKindOf(RUNTIME_CLASS(CException)));
    EXPECT_TRUE(exception.IsKindOf(RUNTIME_CLASS(CObject)));
    EXPECT_FALSE(exception.IsKindOf(RUNTIME_CLASS(CFileException)));
    EXPECT_EQ(RUNTIME_CLASS(CTestException)->CreateObject(), nullptr);

    CObject* made = RUNTIME_CLASS(CMade)->CreateObject();
    EXPECT_NE(DYNAMIC_DOWNCAST(CMade, made), nullptr);
    EXPECT_EQ(DYNAMIC_DOWNCAST(CException, made), nullptr);
    delete made;
}
