#include "xml/RootAttribute.h"

#include "platform/Encoding.h"
#include "support/FaultyFileSystem.h"
#include "support/StrictXml.h"
#include "support/TempFolder.h"
#include "xml/Error.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

class RootAttribute : public testing::Test
{
protected:
    bool Set(const QByteArray& before, const CString& value)
    {
        m_files.Heal();
        m_path = m_folder.WriteFile(u"a.xml"_s, before);
        m_before = m_files.WritePoints();
        return xml::SetRootAttribute(m_path, u"Version"_s, value, &m_reason);
    }
    QByteArray After() const { return m_folder.ReadFile(u"a.xml"_s); }
    bool Written() const { return m_files.WritePoints() != m_before; }

    test::TempFolder m_folder;
    test::FaultyFileSystem m_files;
    CString m_path;
    CString m_reason;
    int m_before = 0;
};

} // namespace

TEST_F(RootAttribute, ReplacesTheValueAndNothingElse)
{
    EXPECT_TRUE(Set("<?xml version='1.0'?>\r\n<!--c--><r  a = 'x' Version='1' b=\"y\"  >\r\n <s/></r>\r\n",
                    u"2.0"_s));
    EXPECT_EQ(After(),
              "<?xml version='1.0'?>\r\n<!--c--><r  a = 'x' Version=\"2.0\" b=\"y\"  >\r\n <s/></r>\r\n");
}

TEST_F(RootAttribute, AddsItBehindTheOthers)
{
    EXPECT_TRUE(Set("<r a='1' ><s/></r>", u"2"_s));
    EXPECT_EQ(After(), "<r a='1' Version=\"2\" ><s/></r>");
    EXPECT_TRUE(Set("<r/>", u"2"_s));
    EXPECT_EQ(After(), "<r Version=\"2\"/>");
    EXPECT_TRUE(Set("<r></r>", u"2"_s));
    EXPECT_EQ(After(), "<r Version=\"2\"></r>");
}

TEST_F(RootAttribute, DoesNotWriteWhatStandsThere)
{
    EXPECT_TRUE(Set("<r Version='2&#46;0'/>", u"2.0"_s));
    EXPECT_FALSE(Written());
    EXPECT_TRUE(Set("<r Version='2.0'/>", u"2.1"_s));
    EXPECT_TRUE(Written());
}

TEST_F(RootAttribute, EscapesTheValue)
{
    EXPECT_TRUE(Set("<r/>", u"<\"&>"_s));
    EXPECT_TRUE(test::IsStrictXml(After()));
    EXPECT_EQ(After(), "<r Version=\"&lt;&quot;&amp;&gt;\"/>");
}

TEST_F(RootAttribute, FindsARootBehindALongPrologue)
{
    const QByteArray prologue = "<!--" + QByteArray(100000, 'x') + "-->";
    EXPECT_TRUE(Set(prologue + "<r Version='1'/>", u"2"_s));
    EXPECT_EQ(After(), prologue + "<r Version=\"2\"/>");
}

TEST_F(RootAttribute, KeepsOtherEncodings)
{
    const CString text = u"<?xml version='1.0' encoding='GBK'?><清单 Version='1'>定额</清单>"_s;
    EXPECT_TRUE(Set(platform::Encode(text, platform::Encoding::Gb18030).value(), u"2"_s));
    EXPECT_EQ(
        After(),
        platform::Encode(CString(text).replace(u"'1'>"_s, u"\"2\">"_s), platform::Encoding::Gb18030).value());
}

TEST_F(RootAttribute, RefusesWhatItCannotDoAndLeavesTheFile)
{
    EXPECT_FALSE(Set("no xml", u"2"_s));
    EXPECT_EQ(After(), "no xml");
    EXPECT_FALSE(m_reason.isEmpty());
    EXPECT_FALSE(Set("<r/>", CString(QChar(1))));
    EXPECT_EQ(After(), "<r/>");
    EXPECT_FALSE(xml::SetRootAttribute(m_folder.Path(u"missing.xml"_s), u"Version"_s, u"2"_s));
    EXPECT_FALSE(m_folder.Exists(u"missing.xml"_s));
}

TEST_F(RootAttribute, ReportsARefusedWriteByFalse)
{
    m_path = m_folder.WriteFile(u"a.xml"_s, "<r/>");
    m_files.Inject(test::Fault::RefuseOpen);
    EXPECT_FALSE(xml::SetRootAttribute(m_path, u"Version"_s, u"2"_s, &m_reason));
    EXPECT_FALSE(m_reason.isEmpty());
    EXPECT_EQ(After(), "<r/>");
}

TEST_F(RootAttribute, OfBytesIsSetAsInAFile)
{
    const QByteArray before = "<?xml version='1.0'?>\r\n<r a='1'><s/></r>\r\n";
    const QByteArray after = xml::WithRootAttribute(before, u"Version"_s, u"<2>"_s);
    ASSERT_TRUE(Set(before, u"<2>"_s));
    EXPECT_EQ(after, After());
    EXPECT_EQ(xml::WithRootAttribute(after, u"Version"_s, u"<2>"_s), after);
    EXPECT_THROW(xml::WithRootAttribute("no xml", u"Version"_s, u"2"_s), xml::Error);
    EXPECT_THROW(xml::WithRootAttribute(before, u"1 2"_s, u"2"_s), xml::Error);
    EXPECT_THROW(xml::WithRootAttribute(before, u"Version"_s, CString(QChar(1))), xml::Error);
}
