#include "platform/TimeText.h"

#include "support/PrintText.h"

#include <QtCore/QDateTime>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(TimeText, TellsLocalTimeToTheSecondWhateverZoneItIsTold)
{
    const QDateTime local(QDate(2024, 3, 5), QTime(6, 7, 8, 999));
    EXPECT_EQ(platform::TimeText(local), u"2024-03-05 06:07:08"_s);
    EXPECT_EQ(platform::TimeText(local.toUTC()), u"2024-03-05 06:07:08"_s);
}

TEST(TimeText, MinuteAndDayAreItsBeginning)
{
    const QDateTime local(QDate(2024, 3, 5), QTime(6, 7, 59));
    for (const QDateTime& time : {local, local.toUTC()}) {
        EXPECT_EQ(platform::MinuteText(time), u"2024-03-05 06:07"_s);
        EXPECT_EQ(platform::DayText(time), u"2024-03-05"_s);
    }
}

TEST(TimeText, TimeThatIsNoneHasNoText)
{
    EXPECT_EQ(platform::TimeText({}), CString());
    EXPECT_EQ(platform::MinuteText({}), CString());
    EXPECT_EQ(platform::DayText({}), CString());
}
