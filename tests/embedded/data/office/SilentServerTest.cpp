#include "embedded/OfficeFixture.h"
#include "embedded/data/office/ProjectOffice.h"
#include "support/sockets/SlowLine.h"

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

class SilentServer : public test::OfficeFixture
{
protected:
    SilentServer() { m_database.Services().ForgetPatience(); }
};

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

#if !defined(_WIN32)
// The system takes the connection, and nobody says a word on it, as behind a port that leads nowhere.
TEST_F(SilentServer, AttemptToConnectIsGivenUp)
{
    const test::TcpPort port;
    const QString entry = u"[%1]\nhost=127.0.0.1\nport=%2\ndbname=buero\nuser=wang\nsslmode=%3\n"_s;
    for (const QString& mode : {u"disable"_s, u"require"_s}) {
        m_database.Services().AddText(entry.arg(mode, QString::number(port.Number()), mode));
        EXPECT_THROW(embedded::Office{mode}, embedded::UnreachableError) << mode.toStdString();
    }
    embedded::OfficeInquiry inquiry(u"require"_s);
    EXPECT_THROW(inquiry.Answer(), embedded::UnreachableError);
}

// What is sent fills the line, so that nobody else gets through to ask for the server.
TEST_F(SilentServer, StatementThatTakesLongOnASlowLineGoesOn)
{
    constexpr int Seconds = 14;
    constexpr int Size =
        Seconds * 1000 / static_cast<int>(test::SlowLine::Step.count()) * test::SlowLine::BytesEachStep;
    const QString text(Size, u'x');
    // A machine that has too much to do holds the line up for itself, which tells nothing; not every time.
    constexpr int Tries = 5;
    CString fault;
    for (int i = 0; i < Tries; ++i) {
        const test::SlowLine line(test::SharedServer().SocketFolder() + u"/.s.PGSQL."_s +
                                  test::SharedServer().Port());
        const CString name = u"line"_s + CString::number(line.Port());
        m_database.Services().AddText(u"[%1]\nhost=127.0.0.1\nport=%2\ndbname=%3\nuser=%4\n"_s.arg(
            name, QString::number(line.Port()), m_database.Name(), m_database.User(Administrator())));
        try {
            embedded::Office office(name);
            const QVariant length = office.Connection().Single(u"SELECT length(?::text)"_s, {text});
            EXPECT_EQ(length.toInt(), Size);
            return;
        } catch (const embedded::UnreachableError& error) {
            fault = error.Message();
        }
    }
    ADD_FAILURE() << fault.toStdString();
}

#endif

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
