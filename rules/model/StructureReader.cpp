#include "rules/model/StructureReader.h"

#include "platform/Numbers.h"
#include "tree/XmlVisitor.h"

#include <algorithm>
#include <initializer_list>
#include <set>
#include <utility>

using namespace Qt::StringLiterals;

namespace rules {

namespace {

using Kind = StructureNote::Kind;

const CString NameKey = u"name"_s;

/// Walks the file from the root down to the quota items and keeps what does not belong there.
class Walker
{
public:
    void Root(const IXMLDOMNode& node)
    {
        EachCategory(node, FileLevel::Root, {}, [&](const IXMLDOMNode& child) {
            EachCategory(child, FileLevel::Specialty, u"LMember"_s, [&](const IXMLDOMNode& big) {
                EachCategory(big, FileLevel::BigCategory, u"SMember"_s,
                             [&](const IXMLDOMNode& small) { SmallCategory(small); });
            });
        });
    }

    FileStructure Take() { return std::move(m_notes); }

private:
    void Note(Kind kind, FileLevel level, const CString& element, bool isRead = false)
    {
        m_notes.push_back({kind, level, m_category, element, m_position, m_ruleId, isRead});
    }

    /// The named children, which readers look up by their attribute, whatever the tag.
    template <typename Below>
    void EachCategory(const IXMLDOMNode& parent, FileLevel level, const CString& tag, Below below)
    {
        std::set<CString> seen;
        const CString above = m_category;
        for (IXMLDOMNode child = parent.FirstChild(); child; child = child.NextSibling()) {
            const IXMLDOMElement element = child.ToElement();
            if (element.IsNull()) continue;
            const CString name = XmlVisitor::getNodeAttribute(element, NameKey);
            if (name.isEmpty()) {
                Note(Kind::Unnamed, level, child.Name());
                continue;
            }
            if (!seen.insert(name).second) {
                Note(Kind::Repeated, level, name);
                continue;
            }
            if (!tag.isEmpty() && child.Name() != tag) Note(Kind::UnknownName, level, child.Name(), true);
            m_category = above.isEmpty() ? name : above + u'\\' + name;
            below(child);
            m_category = above;
        }
    }

    /// The first child element of each of these names is a container; anything else is not read.
    template <typename Below>
    void EachContainer(const IXMLDOMNode& parent, FileLevel level, std::initializer_list<QStringView> names,
                       Below below)
    {
        unsigned seen = 0;
        for (IXMLDOMNode child = parent.FirstChild(); child; child = child.NextSibling()) {
            if (child.Kind() != xml::NodeKind::Element) continue;
            const CString name = child.Name();
            const auto* const place = std::find(names.begin(), names.end(), name);
            if (place == names.end()) {
                Note(Kind::UnknownName, level, name);
                continue;
            }
            const unsigned bit = 1U << static_cast<unsigned>(place - names.begin());
            if ((seen & bit) != 0)
                Note(Kind::Repeated, level, name);
            else
                below(child, static_cast<std::size_t>(place - names.begin()));
            seen |= bit;
        }
    }

    /// Every child of a list is an entry, whatever its name and kind.
    template <typename Below>
    void EachEntry(const IXMLDOMNode& list, FileLevel level, std::initializer_list<QStringView> names,
                   Below below)
    {
        for (IXMLDOMNode child = list.FirstChild(); child; child = child.NextSibling()) {
            const bool isElement = child.Kind() == xml::NodeKind::Element;
            const CString name = isElement ? child.Name() : CString();
            below(child);
            if (!isElement)
                Note(Kind::NoElement, level, {}, true);
            else if (std::find(names.begin(), names.end(), name) == names.end())
                Note(Kind::UnknownName, level, name, true);
        }
    }

    void SmallCategory(const IXMLDOMNode& small)
    {
        bool hasDefault = false;
        EachContainer(
            small, FileLevel::SmallCategory, {u"Config"}, [&](const IXMLDOMNode& list, std::size_t) {
                EachEntry(list, FileLevel::RuleList, {u"Config", u"config"}, [&](const IXMLDOMNode& rule) {
                    ++m_position;
                    const IXMLDOMElement element = rule.ToElement();
                    m_ruleId = platform::_wtoi(XmlVisitor::getNodeAttribute(element, u"id"_s));
                    if (platform::_wtoi(XmlVisitor::getNodeAttribute(element, u"bDefault"_s)) != 0)
                        hasDefault = true;
                    Rule(rule);
                });
            });
        m_position = 0;
        m_ruleId = 0;
        if (!hasDefault) Note(Kind::NoDefault, FileLevel::RuleList, {});
    }

    void Rule(const IXMLDOMNode& rule)
    {
        constexpr std::size_t Conditions = 0;
        constexpr std::size_t Bills = 1;
        EachContainer(rule, FileLevel::Rule, {u"Condition", u"Qd", u"De"},
                      [&](const IXMLDOMNode& list, std::size_t which) {
                          if (which == Conditions)
                              EachEntry(list, FileLevel::ConditionList, {u"condition"},
                                        [](const IXMLDOMNode&) {});
                          else if (which == Bills)
                              EachEntry(list, FileLevel::BillList, {u"qd"},
                                        [&](const IXMLDOMNode& bill) { Bill(bill); });
                          else
                              Quotas(list);
                      });
    }

    void Bill(const IXMLDOMNode& bill)
    {
        EachContainer(bill, FileLevel::Bill, {u"De"},
                      [&](const IXMLDOMNode& list, std::size_t) { Quotas(list); });
    }

    void Quotas(const IXMLDOMNode& list)
    {
        EachEntry(list, FileLevel::QuotaList, {u"De"}, [](const IXMLDOMNode&) {});
    }

    FileStructure m_notes;
    CString m_category;
    int m_position = 0;
    int m_ruleId = 0;
};

} // namespace

FileStructure ReadStructure(const IXMLDOMNode& root)
{
    Walker walker;
    walker.Root(root);
    return walker.Take();
}

} // namespace rules
