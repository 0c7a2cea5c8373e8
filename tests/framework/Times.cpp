// Points in time.
#include <afx.h>
#include <gtest/gtest.h>
#include <array>

TEST(Time, ComesApartAsItWasPutTogether)
{
    const CTime time(2024, 2, 29, 13, 5, 9);
    EXPECT_EQ((std::array{time.GetYear(), time.GetMonth(), time.GetDay(), time.GetHour(), time.GetMinute(),
                          time.GetSecond()}),
              (std::array{2024, 2, 29, 13, 5, 9}));
    EXPECT_EQ(time.GetDayOfWeek(), 5); // a Thursday
    SYSTEMTIME system;
    ASSERT_TRUE(time.GetAsSystemTime(system));
    EXPECT_EQ(CTime(system), time);
    EXPECT_EQ(CTime(MAKEWORD(0x5D, 0x58), MAKEWORD(0xA4, 0x68)), CTime(2024, 2, 29, 13, 5, 8)) << "two-second steps";
    const FILETIME file = {0xD53E8000, 0x019DB1DE}; // the first second of 1970
    EXPECT_EQ(CTime(file).GetTime(), 0);
}

TEST(Time, Formats)
{
    const CTime time(86400 + 3661);
    EXPECT_EQ(time.FormatGmt("%Y-%m-%d %H:%M:%S"), "1970-01-02 01:01:01");
    EXPECT_EQ(time.FormatGmt("") + time.FormatGmt("%%"), "%");
    const CString filler('x', 1000); // longer than the buffer it begins with
    EXPECT_EQ(time.FormatGmt(filler + "%H"), filler + "01");
    EXPECT_EQ(CTime(2024, 1, 2, 3, 4, 5).Format("%d.%m.%y"), "02.01.24");
}

TEST(Time, Compares)
{
    const CTime noon(2023, 6, 1, 12, 0, 0), later(2023, 6, 1, 12, 0, 1);
    EXPECT_TRUE(noon < later && later > noon && noon <= noon && noon >= noon && noon != later);
    const time_t before = time(nullptr);
    const CTime now = CTime::GetCurrentTime();
    EXPECT_TRUE(CTime(before) <= now && now <= CTime(time(nullptr)));
}
