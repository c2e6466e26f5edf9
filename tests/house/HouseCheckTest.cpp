#include "house/HouseCheck.h"
#include "support/PrintText.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using house::ReadSource;
using house::Source;

// What the check finds, on trees made up for it.

namespace {

const QString GoodTable = u"limit 2\n"
                          "room src/base :\n"
                          "room src/top : src/base\n"
                          "library QtSql/ : src/base\n"_s;

QStringList Faults(const QList<Source>& sources, const QString& table = GoodTable)
{
    return house::FaultsOf(sources, house::Doors(table));
}

} // namespace

TEST(ReadSource, FindsIncludesAsTheyAreWritten)
{
    const Source source = ReadSource(u"src/a.cpp"_s, u"#include \"base/A.h\"\n"
                                                     "  #  include <QtCore/QString>\n"
                                                     "// #include \"base/Never.h\"\n"
                                                     "#ifdef X\n#include <windows.h>\n#endif\n"_s);
    EXPECT_EQ(source.quoted, QStringList(u"base/A.h"_s));
    EXPECT_EQ(source.bracketed, QStringList({u"QtCore/QString"_s, u"windows.h"_s}));
}

TEST(HouseCheck, HasNothingAgainstIncludesThroughDoors)
{
    EXPECT_EQ(Faults({ReadSource(u"src/base/A.h"_s, u"#include <QtSql/QSqlQuery>"_s),
                      ReadSource(u"src/base/A.cpp"_s, u"#include \"base/A.h\""_s),
                      ReadSource(u"src/top/B.cpp"_s, u"#include \"B.h\"\n#include \"base/A.h\""_s),
                      ReadSource(u"src/top/B.h"_s, {})}),
              QStringList());
}

TEST(HouseCheck, FindsAnIncludeAgainstTheDoors)
{
    EXPECT_EQ(Faults({ReadSource(u"src/base/A.cpp"_s, u"#include \"top/B.h\""_s),
                      ReadSource(u"src/top/B.h"_s, {})}),
              QStringList(u"src/base/A.cpp includes src/top/B.h, but src/base has no door to src/top"_s));
}

TEST(HouseCheck, FindsAnIncludeAgainstTheDoorsThatIsWrittenWithPoints)
{
    EXPECT_EQ(Faults({ReadSource(u"src/base/A.cpp"_s, u"#include \"../top/B.h\""_s),
                      ReadSource(u"src/top/B.h"_s, {})}),
              QStringList(u"src/base/A.cpp includes src/top/B.h, but src/base has no door to src/top"_s));
}

TEST(HouseCheck, FindsALibraryWhereItMayNotBeSeen)
{
    EXPECT_EQ(Faults({ReadSource(u"src/top/B.h"_s, u"#include <QtSql/QSqlQuery>"_s)}),
              QStringList(u"src/top/B.h includes <QtSql/QSqlQuery>, which src/top may not see"_s));
}

TEST(HouseCheck, FindsHeadersThatIncludeEachOther)
{
    EXPECT_EQ(Faults({ReadSource(u"src/base/A.h"_s, u"#include \"base/B.h\""_s),
                      ReadSource(u"src/base/B.h"_s, u"#include \"base/C.h\""_s),
                      ReadSource(u"src/base/C.h"_s, u"#include \"base/A.h\""_s)}),
              QStringList(u"include each other: src/base/A src/base/B src/base/C"_s));
}

TEST(HouseCheck, FindsUnitsThatNeedEachOtherThroughTheirSources)
{
    const QList<Source> sources{
        ReadSource(u"src/base/A.h"_s, {}),
        ReadSource(u"src/base/A.cpp"_s, u"#include \"base/A.h\"\n#include \"base/B.h\""_s),
        ReadSource(u"src/base/B.h"_s, {}),
        ReadSource(u"src/base/B.cpp"_s, u"#include \"base/B.h\"\n#include \"base/A.h\""_s)};
    EXPECT_EQ(Faults(sources), QStringList(u"include each other: src/base/A src/base/B"_s));
    EXPECT_EQ(Faults(sources, GoodTable + u"for now ring src/base/A src/base/B\n"_s), QStringList());
}

TEST(HouseCheck, FindsASourceWithoutARoom)
{
    EXPECT_EQ(Faults({ReadSource(u"src/attic/A.h"_s, {})}),
              QStringList(u"src/attic/A.h stands in no room"_s));
}

TEST(HouseCheck, FindsAnIncludeThatLeadsNowhere)
{
    EXPECT_EQ(Faults({ReadSource(u"src/base/A.cpp"_s, u"#include \"base/Gone.h\""_s)}),
              QStringList(u"src/base/A.cpp includes \"base/Gone.h\", which is nowhere"_s));
}

TEST(HouseCheck, PassesOnWhatIsWrongWithTheTable)
{
    EXPECT_EQ(Faults({}, u"room a : b\nroom b : a\n"_s),
              QStringList(u"rooms with doors to each other: a b"_s));
}

TEST(HouseCheck, FindsAFolderWithTooManyFiles)
{
    const QList<Source> sources{ReadSource(u"src/base/A.h"_s, {}), ReadSource(u"src/base/A.cpp"_s, {}),
                                ReadSource(u"src/base/in/B.h"_s, {})};
    EXPECT_EQ(house::CrowdedFolders(sources, house::Doors(GoodTable)), QStringList());
    const QList<Source> more = sources + QList<Source>{ReadSource(u"src/base/B.h"_s, {})};
    EXPECT_EQ(house::CrowdedFolders(more, house::Doors(GoodTable)),
              QStringList(u"src/base holds 3 files, more than 2"_s));
    EXPECT_EQ(house::CrowdedFolders(more, house::Doors(GoodTable + u"for now crowded src/base\n"_s)),
              QStringList());
}

TEST(SourcesIn, ReadsHeadersAndSourcesOfFoldersThatAreThere)
{
    const test::TempFolder tree;
    tree.MakeFolder(u"src"_s);
    tree.MakeFolder(u"src\\base"_s);
    tree.WriteFile(u"src\\base\\A.h"_s, "#include <QtCore/QString>\n");
    tree.WriteFile(u"src\\A.cpp"_s, "#include \"base/A.h\"\n");
    tree.WriteFile(u"src\\CMakeLists.txt"_s, "#include \"no/Source.h\"\n");
    const QList<Source> sources = house::SourcesIn(tree.Native({}), {u"src"_s, u"rules"_s});
    ASSERT_EQ(sources.size(), 2);
    EXPECT_EQ(sources[0].path, u"src/A.cpp"_s);
    EXPECT_EQ(sources[0].quoted, QStringList(u"base/A.h"_s));
    EXPECT_EQ(sources[1].path, u"src/base/A.h"_s);
}
