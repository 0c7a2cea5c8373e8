// Run-time class information, and exceptions that are caught by type in another module than the one that threw.
#include "Extension.h"
#include <gtest/gtest.h>

namespace
{
class CMade : public CObject
{
    DECLARE_DYNCREATE(CMade)
};
IMPLEMENT_DYNCREATE(CMade, CObject)

struct Row
{
    Thrown what;
    const char* caught;
    const char* message;
};

// The first of the handlers that fits, the way hosts write them.
CString CaughtAs(Thrown what, CString& message)
{
    char text[100] = "";
    CString name;
    try
    {
        ThrowFromExtension(what);
    }
    catch (CTestException* exception)
    {
        EXPECT_EQ(exception->m_number, 7);
        name = "CTestException";
        exception->Delete();
    }
    catch (CFileException* exception)
    {
        EXPECT_EQ(exception->m_cause, CFileException::diskFull);
        EXPECT_EQ(exception->m_lOsError, ERROR_DISK_FULL);
        exception->GetErrorMessage(text, sizeof text);
        name = "CFileException";
        exception->Delete();
    }
    catch (CException* exception)
    {
        name = exception->GetRuntimeClass()->m_lpszClassName;
        exception->GetErrorMessage(text, sizeof text);
        exception->Delete();
    }
    message = text;
    return name;
}
} // namespace

TEST(Exceptions, AreCaughtByTypeInAnotherModule)
{
    const Row rows[] = {
        {Thrown::Own, "CTestException", ""},
        {Thrown::File, "CFileException", "Disk full while accessing full.txt."},
        {Thrown::Memory, "CMemoryException", "Out of memory."},
        {Thrown::NotSupported, "CNotSupportedException", "An attempt was made to perform an unsupported operation."}};
    for (int round = 0; round < 2; ++round) // the memory exception is one object, used again
    {
        for (const Row& row : rows)
        {
            CString message;
            EXPECT_EQ(CaughtAs(row.what, message), row.caught);
            EXPECT_EQ(message, row.message);
        }
    }
    EXPECT_EQ(CTestException::Living(), 0);
}

TEST(Exceptions, MessageIsCutToTheBuffer)
{
    CFileException exception(CFileException::fileNotFound, -1, "a.txt");
    char text[8];
    EXPECT_TRUE(exception.GetErrorMessage(text, sizeof text));
    EXPECT_STREQ(text, "a.txt w");
    EXPECT_FALSE(CTestException(0).GetErrorMessage(text, sizeof text));
    EXPECT_STREQ(text, "");
}

TEST(Objects, KnowTheirClass)
{
    const CTestException exception(1);
    EXPECT_TRUE(exception.IsKindOf(RUNTIME_CLASS(CTestException)));
    EXPECT_TRUE(exception.IsKindOf(RUNTIME_CLASS(CException)));
    EXPECT_TRUE(exception.IsKindOf(RUNTIME_CLASS(CObject)));
    EXPECT_FALSE(exception.IsKindOf(RUNTIME_CLASS(CFileException)));
    EXPECT_STREQ(exception.GetRuntimeClass()->m_lpszClassName, "CTestException");
    EXPECT_EQ(RUNTIME_CLASS(CTestException)->CreateObject(), nullptr);

    CObject* made = RUNTIME_CLASS(CMade)->CreateObject();
    EXPECT_NE(DYNAMIC_DOWNCAST(CMade, made), nullptr);
    EXPECT_EQ(DYNAMIC_DOWNCAST(CException, made), nullptr);
    delete made;
}
