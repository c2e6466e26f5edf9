#include "office/OfficeSetting.h"
#include "support/server/PostgresServer.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using test::Configuration;
using test::OfficeProject;
using test::PipeElement;
using test::PipeFile;

namespace {

/// A project that publishes rules of one item each.
class OwnNumbers : public testing::Test
{
protected:
    /// A rule with an item of that number and library; the library may be empty.
    static QByteArray Rule(int id, const QByteArray& number, const QByteArray& library)
    {
        return PipeElement(id, "材料" + QByteArray::number(id))
            .replace("strQdId=\"031001001\"", "strQdId=\"" + number + "\" strQdCode=\"" + library + '"');
    }
    /// What the last version has told the office of its numbers.
    CString Told()
    {
        return m_wang.Host()
            .Office()
            ->Reached()
            ->Connection()
            .Single(u"SELECT string_agg(each ->> 'library' || ' ' || (each ->> 'number'), ', ' ORDER BY "
                    u"(each ->> 'library') COLLATE \"C\") "
                    "FROM versions, jsonb_array_elements(numbers) AS each WHERE configuration = ?"_s,
                    {Configuration})
            .toString();
    }

    test::OfficeSetting m_setting;
    OfficeProject m_wang{m_setting, u"王工程"_s, u"wang"_s};
};

} // namespace

TEST_F(OwnNumbers, AreThoseThatNoLibraryOfTheCatalogueHasWhetherItIsInUseOrNot)
{
    m_wang.Write(PipeFile(Rule(2, "031001001", "GB50856-2013") + Rule(3, "030108001", "GB50500-2008") +
                          Rule(4, "030108001", "gb50500-2008") + Rule(5, "031001001", {}) +
                          Rule(6, "030108001001", "GB50500-2008") + Rule(7, "031001001001", {}) +
                          Rule(8, "1", "FREMD-1")));
    ASSERT_TRUE(m_wang.Publish().IsDone());
    EXPECT_EQ(Told(), u"FREMD-1 1, GB50500-2008 030108001001, GB50856-2013 031001001001"_s);
}

// What is found out by looking is no reason not to look.
TEST_F(OwnNumbers, ProjectThatCannotBeWrittenIsListedAllTheSame)
{
    m_wang.Write(PipeFile(Rule(2, "031001001", {})));
    ASSERT_TRUE(m_wang.Publish().IsDone());
    m_wang.Host().Office()->Memory().RememberBase(Configuration, embedded::VersionMark());
    embedded::Database other(m_wang.Host().AppFolder() + u"\\office.db"_s);
    const embedded::Transaction transaction(other);
    EXPECT_EQ(m_wang.Entry().state, shared::OfficeState::Same);
}
