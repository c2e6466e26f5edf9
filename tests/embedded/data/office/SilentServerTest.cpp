#include "embedded/OfficeFixture.h"
#include "embedded/data/office/ProjectOffice.h"

using namespace Qt::StringLiterals;
using embedded::EmbeddedHost;
using test::On;

namespace {

/// The server of the program stands still while one lives.
class ServerStill
{
public:
    ServerStill() { test::SharedServer().StandStill(); }
    ~ServerStill() { test::SharedServer().GoOn(); }
    ServerStill(const ServerStill&) = delete;
    ServerStill& operator=(const ServerStill&) = delete;
};

using SilentServer = test::OfficeFixture;

} // namespace

// These come to an end at all: the client library waits for an answer as long as the connection is up.
TEST_F(SilentServer, StatementIsGivenUp)
{
    embedded::Office office(Administrator());
    const embedded::Transaction transaction(office.Connection());
    {
        const ServerStill still;
        EXPECT_THROW(office.CatalogueRevision(), embedded::UnreachableError);
        EXPECT_THROW(office.CatalogueRevision(), embedded::UnreachableError);
    }
    EXPECT_THROW(office.CatalogueRevision(), embedded::UnreachableError) << "the connection stays broken";
    EXPECT_NO_THROW(embedded::Office{Administrator()});
}

TEST_F(SilentServer, StatementWithValuesIsGivenUp)
{
    embedded::Office office(Administrator());
    const ServerStill still;
    EXPECT_THROW(office.Connection().Single(u"SELECT ?::int"_s, {1}), embedded::UnreachableError);
}

TEST_F(SilentServer, StatementThatMerelyTakesLongGoesOn)
{
    embedded::Office office(Administrator());
    // Longer than the server is let be without being asked.
    EXPECT_EQ(office.Connection().Single(u"SELECT 7 FROM pg_sleep(7)"_s).toInt(), 7);
}

TEST_F(SilentServer, ProjectIsOpenedWithItsCopyAndOneThatIsOpenGoesOn)
{
    EmbeddedHost early(m_project.Folder());
    EXPECT_NE(early.Office()->Reached(), nullptr);
    {
        const ServerStill still;
        EmbeddedHost host(m_project.Folder());
        EXPECT_FALSE(host.Office()->IsReached());
        EXPECT_TRUE(host.Office()->InWords().contains(u"连不上"_s)) << host.Office()->InWords().toStdString();
        EXPECT_FALSE(early.Office()->Reach());
    }
    EXPECT_TRUE(early.Office()->Reach());
}
