#include "shared/TimeText.h"

#include "support/PrintText.h"

#include <QtCore/QDateTime>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(TimeText, TellsLocalTimeToTheSecondWhateverZoneItIsTold)
{
    const QDateTime local(QDate(2024, 3, 5), QTime(6, 7, 8, 999));
    EXPECT_EQ(shared::TimeText(local), u"2024-03-05 06:07:08"_s);
    EXPECT_EQ(shared::TimeText(local.toUTC()), u"2024-03-05 06:07:08"_s);
}
