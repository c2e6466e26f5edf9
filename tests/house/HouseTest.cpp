#include "house/HouseCheck.h"
#include "support/PrintText.h"
#include "support/SourceTree.h"

#include <QtCore/QFile>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

// The project's own tree against its own table, doors.txt.

namespace {

house::Doors OwnDoors()
{
    QFile table(test::InSourceTree(u"tests/house/doors.txt"_s));
    if (!table.open(QIODevice::ReadOnly)) throw std::runtime_error("the table of doors is not there");
    return house::Doors(QString::fromUtf8(table.readAll()));
}

std::string Lines(const QStringList& faults)
{
    return faults.join(u'\n').toStdString();
}

} // namespace

TEST(House, EveryIncludeGoesThroughADoor)
{
    const QList<house::Source> sources =
        house::SourcesIn(test::InSourceTree({}), {u"src"_s, u"embedded"_s, u"apps"_s, u"rules"_s});
    ASSERT_GT(sources.size(), 300);
    EXPECT_EQ(Lines(house::FaultsOf(sources, OwnDoors())), "");
}

TEST(House, NoFolderIsCrowded)
{
    const QList<house::Source> sources =
        house::SourcesIn(test::InSourceTree({}),
                         {u"src"_s, u"embedded"_s, u"apps"_s, u"rules"_s, u"tests"_s, u"bench"_s, u"fuzz"_s});
    EXPECT_EQ(Lines(house::CrowdedFolders(sources, OwnDoors())), "");
}
