#include "editor/session/FileRules.h"

#include "editor/session/SessionFixture.h"
#include "xml/Dom.h"

#include <stdexcept>

namespace {

class FileRules : public test::SessionTest
{
};

} // namespace

TEST_F(FileRules, WhoWaitsForTheOthersIsCalledAlsoWhenTheyCannotBeRead)
{
    auto document = xml::Document::Create();
    document.LoadBytes(Bytes());
    const QByteArray unreadable(1 << 20, ' '); // so many that they are read on a thread
    editor::FileRules rules(unreadable, document, Pipes);
    ASSERT_FALSE(rules.AreWhole());
    bool isCalled = false;
    rules.ReadOthers([&] { isCalled = true; });
    EXPECT_THROW(static_cast<void>(rules.Rules()), std::runtime_error); // the thread has ended then
    EXPECT_TRUE(isCalled);
    EXPECT_EQ(rules.SoFar()->Find(Pipes)->text, Pipes);
}

TEST_F(FileRules, OthersThatCouldNotBeReadAreReadAnewWhenTheyAreAskedForAgain)
{
    auto document = xml::Document::Create();
    document.LoadBytes(Bytes());
    const QByteArray unreadable(1 << 20, ' ');
    editor::FileRules rules(unreadable, document, Pipes);
    int readings = 0;
    for (int time = 1; time <= 2; ++time) {
        rules.ReadOthers([&] { ++readings; });
        EXPECT_THROW(static_cast<void>(rules.Rules()), std::runtime_error);
        EXPECT_EQ(readings, time);
    }
}
