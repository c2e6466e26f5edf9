#include "embedded/ShippedTable.h"
#include "support/SourceTree.h"
#include "support/StrictXml.h"
#include "xml/Dom.h"

#include <QtCore/QFile>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using test::ShippedTable;
using test::TableRow;

namespace {

CString Value(const xml::Node& node, const CString& name)
{
    CString value;
    EXPECT_TRUE(node.ToElement().GetAttribute(name, value))
        << node.Name().toStdString() << " lacks " << name.toStdString();
    return value;
}

std::vector<xml::Node> Children(const xml::Node& node)
{
    std::vector<xml::Node> children;
    for (xml::Node child = node.FirstChild(); child; child = child.NextSibling())
        children.push_back(child);
    return children;
}

/// The first row for every value of a column: the first libraries and what they hold stand first.
QHash<CString, TableRow> ByColumn(const CString& table, const CString& column)
{
    QHash<CString, TableRow> rows;
    for (const TableRow& row : ShippedTable(table)) {
        if (!rows.contains(row[column])) rows.insert(row[column], row);
    }
    return rows;
}

/// The template, and what its rules may refer to.
class Template : public ::testing::Test
{
protected:
    void SetUp() override
    {
        QFile file(test::InSourceTree(u"data/QdDeConfig.def"_s));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        m_bytes = file.readAll();
        ASSERT_TRUE(m_document.LoadBytes(m_bytes)) << m_document.Reason().ToString().toStdString();
        m_root = m_document.SelectSingleNode(u"自动套清单定额配置信息"_s);
        ASSERT_FALSE(m_root.IsNull());
    }

    /// Calls `rule` with the full name of the small category and each of its rules.
    template <typename Visit>
    void ForEachRule(const Visit& rule) const
    {
        for (const xml::Node& spec : Children(m_root)) {
            for (const xml::Node& big : Children(spec)) {
                for (const xml::Node& small : Children(big)) {
                    const CString category = Value(spec, u"name"_s) + u'\\' + Value(big, u"name"_s) + u'\\' +
                                             Value(small, u"name"_s);
                    for (const xml::Node& node : Children(small.SelectSingleNode(u"Config"_s)))
                        rule(category, node);
                }
            }
        }
    }

    QByteArray m_bytes;
    xml::Document m_document = xml::Document::Create();
    xml::Node m_root;
};

void ExpectQuotas(const xml::Node& container, const CString& library)
{
    static const QHash<CString, TableRow> quotas = ByColumn(u"quota_items"_s, u"number"_s);
    for (const xml::Node& quota : Children(container)) {
        EXPECT_EQ(quota.Name(), u"De"_s);
        const CString number = Value(quota, u"strDeId"_s);
        ASSERT_TRUE(quotas.contains(number)) << number.toStdString();
        EXPECT_EQ(Value(quota, u"strDeCode"_s), library);
        EXPECT_EQ(Value(quota, u"strName"_s), quotas[number][u"name"_s]);
        EXPECT_EQ(Value(quota, u"strUnit"_s), quotas[number][u"unit"_s]);
        EXPECT_EQ(Value(quota, u"strUnitCode"_s), quotas[number][u"unit_code"_s]);
        EXPECT_EQ(Value(quota, u"strFormula"_s), quotas[number][u"cal_rule"_s]);
        EXPECT_EQ(Value(quota, u"strAnnex"_s) == u"是"_s, quotas[number][u"with_annex"_s] == u"1"_s);
    }
}

} // namespace

TEST_F(Template, IsStrictXmlWithAVersion)
{
    EXPECT_TRUE(test::IsStrictXml(m_bytes));
    EXPECT_FALSE(Value(m_root, u"Version"_s).isEmpty());
}

TEST_F(Template, CategoriesAreThoseOfTheCatalogue)
{
    const auto specialties = ByColumn(u"specialties"_s, u"name"_s);
    const auto bigs = ByColumn(u"big_categories"_s, u"id"_s);
    const auto smalls = ByColumn(u"small_categories"_s, u"id"_s);
    for (const xml::Node& spec : Children(m_root)) {
        EXPECT_EQ(spec.Name(), Value(spec, u"name"_s));
        EXPECT_EQ(specialties[spec.Name()][u"id"_s], Value(spec, u"id"_s));
        for (const xml::Node& big : Children(spec)) {
            EXPECT_EQ(big.Name(), u"LMember"_s);
            EXPECT_EQ(bigs[Value(big, u"id"_s)][u"name"_s], Value(big, u"name"_s));
            for (const xml::Node& small : Children(big)) {
                EXPECT_EQ(small.Name(), u"SMember"_s);
                EXPECT_EQ(smalls[Value(small, u"id"_s)][u"name"_s], Value(small, u"name"_s));
            }
        }
    }
}

TEST_F(Template, EveryRuleHasItsContainersAndTheDefaultRuleComesLast)
{
    QHash<CString, CStringArray> defaults;
    ForEachRule([&](const CString& category, const xml::Node& rule) {
        EXPECT_EQ(rule.Name(), u"Config"_s);
        CStringArray containers;
        for (const xml::Node& container : Children(rule))
            containers.append(container.Name());
        EXPECT_EQ(containers, (CStringArray{u"Condition"_s, u"Qd"_s, u"De"_s}));
        defaults[category].append(Value(rule, u"id"_s) + u':' + Value(rule, u"bDefault"_s));
    });
    EXPECT_FALSE(defaults.isEmpty());
    for (const CStringArray& rules : defaults) {
        EXPECT_GE(rules.size(), 2);
        EXPECT_EQ(rules.last(), u"1:1"_s);
        EXPECT_EQ(rules.filter(u":1"_s).size(), 1);
    }
}

TEST_F(Template, CountersAreTheNumbersOfChildren)
{
    ForEachRule([](const CString&, const xml::Node& rule) {
        const auto count = [&](const CString& container) {
            return CString::number(Children(rule.SelectSingleNode(container)).size());
        };
        EXPECT_EQ(Value(rule, u"LastConditionId"_s), count(u"Condition"_s));
        EXPECT_EQ(Value(rule, u"LastQdId"_s), count(u"Qd"_s));
        EXPECT_EQ(Value(rule, u"LastDeId"_s), count(u"De"_s));
    });
}

TEST_F(Template, ConditionsNameAttributesOfTheirCategoryAndOneOfTheirForms)
{
    QHash<CString, CStringArray> attributes;
    for (const TableRow& row : ShippedTable(u"attributes"_s))
        attributes[row[u"category"_s]].append(row[u"display_name"_s]);
    ForEachRule([&](const CString& category, const xml::Node& rule) {
        for (const xml::Node& condition : Children(rule.SelectSingleNode(u"Condition"_s))) {
            EXPECT_TRUE(attributes[category].contains(Value(condition, u"strCFType"_s)));
            const bool equal = Value(condition, u"bEqual"_s) == u"true"_s;
            EXPECT_EQ(Value(condition, u"strEqualoperator"_s), equal ? u"＝"_s : CString());
            EXPECT_EQ(Value(condition, u"strRangeoperator1"_s), equal ? CString() : u"＞"_s);
            EXPECT_EQ(Value(condition, u"strRangeoperator2"_s), equal ? CString() : u"≤"_s);
            EXPECT_EQ(Value(condition, u"strValue"_s).isEmpty(), !equal);
            EXPECT_EQ(Value(condition, u"strRange1"_s).isEmpty(), equal);
            EXPECT_EQ(Value(condition, u"strRange2"_s).isEmpty(), equal);
        }
    });
}

TEST_F(Template, BillAndQuotaItemsAreThoseOfTheLibraries)
{
    const auto bills = ByColumn(u"bill_items"_s, u"number"_s);
    const auto libraries = ByColumn(u"libraries"_s, u"role"_s);
    int items = 0;
    ForEachRule([&](const CString&, const xml::Node& rule) {
        for (const xml::Node& bill : Children(rule.SelectSingleNode(u"Qd"_s))) {
            ++items;
            const CString number = Value(bill, u"strQdId"_s);
            EXPECT_EQ(number.size(), 12);
            ASSERT_TRUE(bills.contains(number.left(9))) << number.toStdString();
            EXPECT_EQ(Value(bill, u"strUnit"_s), bills[number.left(9)][u"unit"_s]);
            EXPECT_EQ(Value(bill, u"strQdCode"_s), libraries[u"qd"_s][u"code"_s]);
            ExpectQuotas(bill.SelectSingleNode(u"De"_s), libraries[u"qd_de"_s][u"code"_s]);
        }
        ExpectQuotas(rule.SelectSingleNode(u"De"_s), libraries[u"de"_s][u"code"_s]);
    });
    EXPECT_GE(items, 2);
}
