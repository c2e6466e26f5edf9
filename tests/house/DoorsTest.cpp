#include "house/Doors.h"
#include "support/PrintText.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

house::Doors Table(const QString& text)
{
    return house::Doors(text);
}

} // namespace

TEST(Doors, FileStandsInTheInnermostRoom)
{
    const auto doors = Table(u"room src/dialogs :\nroom src/dialogs/grid :\n"_s);
    EXPECT_EQ(doors.RoomOf(u"src/dialogs/grid/GridModel.h"_s), u"src/dialogs/grid"_s);
    EXPECT_EQ(doors.RoomOf(u"src/dialogs/MyGridCtrl.h"_s), u"src/dialogs"_s);
    EXPECT_EQ(doors.RoomOf(u"src/dialogsandmore/Other.h"_s), QString());
}

TEST(Doors, DoorLeadsOneWayAndEveryRoomReachesItself)
{
    const auto doors = Table(u"room a :\nroom b : a\n"_s);
    EXPECT_TRUE(doors.HasDoor(u"b"_s, u"a"_s));
    EXPECT_FALSE(doors.HasDoor(u"a"_s, u"b"_s));
    EXPECT_TRUE(doors.HasDoor(u"a"_s, u"a"_s));
}

TEST(Doors, LinesOfARoomAddUp)
{
    const auto doors = Table(u"room a :\nroom b :\nroom c : a\nroom c : b\n"_s);
    EXPECT_TRUE(doors.HasDoor(u"c"_s, u"a"_s));
    EXPECT_TRUE(doors.HasDoor(u"c"_s, u"b"_s));
}

TEST(Doors, StarMeansARoomWithAllInsideOfIt)
{
    const auto doors = Table(u"room a :\nroom a/x :\nroom a/x/y :\nroom ab :\nroom c : a/*\n"_s);
    for (const QString& room : {u"a"_s, u"a/x"_s, u"a/x/y"_s})
        EXPECT_TRUE(doors.HasDoor(u"c"_s, room));
    EXPECT_FALSE(doors.HasDoor(u"c"_s, u"ab"_s));
}

TEST(Doors, LibraryIsSeenInItsRoomsOnlyAndOthersEverywhere)
{
    const auto doors = Table(u"room a :\nroom b :\nlibrary QtSql/ : a\n"_s);
    EXPECT_TRUE(doors.MaySee(u"a"_s, u"QtSql/QSqlQuery"_s));
    EXPECT_FALSE(doors.MaySee(u"b"_s, u"QtSql/QSqlQuery"_s));
    EXPECT_TRUE(doors.MaySee(u"b"_s, u"QtCore/QString"_s));
}

TEST(Doors, RoomsThatReachEachOtherAreAFault)
{
    const auto doors = Table(u"room a : b\nroom b : c\nroom c : a\nroom d : a\n"_s);
    EXPECT_EQ(doors.Faults(), QStringList(u"rooms with doors to each other: a b c"_s));
}

TEST(Doors, RingForNowIsNoFault)
{
    EXPECT_EQ(Table(u"room a : b\nroom b : a\nfor now ring a b\n"_s).Faults(), QStringList());
    EXPECT_EQ(Table(u"room a : b\nroom b : a\nfor now ring a c\n"_s).Faults().size(), 1);
}

TEST(Doors, UnknownRoomIsAFault)
{
    EXPECT_EQ(Table(u"room a : nowhere\n"_s).Faults(), QStringList(u"the table names no room nowhere"_s));
    EXPECT_EQ(Table(u"room a :\nlibrary QtSql/ : b/*\n"_s).Faults(),
              QStringList(u"the table names no room b/*"_s));
}

TEST(Doors, LineThatNobodyUnderstandsIsAFault)
{
    for (const QString& line :
         {u"room a"_s, u"roam a : b"_s, u"limit many"_s, u"for now ring"_s, u"for now empty a"_s})
        EXPECT_EQ(Table(line).Faults().size(), 1) << line.toStdString();
}

TEST(Doors, CommentsAndEmptyLinesSayNothing)
{
    const auto doors = Table(u"# room a :\n\n   \nlimit 3\n"_s);
    EXPECT_EQ(doors.Faults(), QStringList());
    EXPECT_EQ(doors.RoomOf(u"a/b.h"_s), QString());
    EXPECT_EQ(doors.Limit(), 3);
}
