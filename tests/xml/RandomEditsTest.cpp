#include "xml/Dom.h"

#include "support/StrictXml.h"
#include "xml/XmlTesting.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

using namespace Qt::StringLiterals;

using test::Parsed;

namespace {

const QByteArray Source = "<r>\n"
                          "\t<a><b><c x='1'/><c/></b><b/></a>\n"
                          "\t<a x='1'><b><c/></b></a>\n"
                          "\t<a/>\n"
                          "\t<a><b/><b><c><d/></c></b></a>\n"
                          "</r>\n";

/// The same tree twice: one as it was loaded, which copies what it takes for untouched when it is saved, and
/// one that came from another document and is written node by node.
class Twins
{
public:
    Twins() { m_plain.AppendChild(Parsed(Source).FirstChild()); }

    void EditBoth(unsigned seed)
    {
        Edit(m_loaded, seed);
        Edit(m_plain, seed);
    }
    CString Loaded() const { return test::CanonicalXml(m_loaded.ToBytes()); }
    CString Plain() const { return test::CanonicalXml(m_plain.ToBytes()); }

private:
    /// All elements below and with `node`, in document order.
    static void Collect(const xml::Node& node, std::vector<xml::Node>& nodes)
    {
        nodes.push_back(node);
        for (xml::Node child = node.FirstChild(); child; child = child.NextSibling())
            Collect(child, nodes);
    }

    static bool StandsBelow(const xml::Node& top, const xml::Node& node)
    {
        std::vector<xml::Node> nodes;
        Collect(top, nodes);
        return std::find(nodes.begin(), nodes.end(), node) != nodes.end();
    }

    static xml::Node ParentOf(const std::vector<xml::Node>& nodes, const xml::Node& node)
    {
        for (const xml::Node& candidate : nodes)
            for (xml::Node child = candidate.FirstChild(); child; child = child.NextSibling())
                if (child == node) return candidate;
        return {};
    }

    static void Edit(const xml::Document& document, unsigned seed)
    {
        std::mt19937 random(seed);
        std::vector<xml::Node> nodes;
        Collect(document.FirstChild(), nodes);
        const xml::Node one = nodes[random() % nodes.size()];
        const xml::Node other = nodes[random() % nodes.size()];
        switch (random() % 4) {
        case 0:
            one.ToElement().SetAttribute(u"x"_s, CString::number(random() % 100));
            break;
        case 1:
            one.AppendChild(document.CreateElement(u"e"_s)).AppendChild(document.CreateElement(u"f"_s));
            break;
        case 2:
            if (const xml::Node parent = ParentOf(nodes, one)) parent.RemoveChild(one);
            break;
        default:
            if (!StandsBelow(one, other)) other.AppendChild(one);
            break;
        }
    }

    xml::Document m_loaded = Parsed(Source);
    xml::Document m_plain = xml::Document::Create();
};

} // namespace

TEST(RandomEdits, NoneIsOverlookedByASaveThatCopiesWhatIsUntouched)
{
    for (unsigned run = 0; run < 400; ++run) {
        Twins twins;
        for (unsigned edit = 0; edit < 6; ++edit)
            twins.EditBoth(run * 100 + edit);
        ASSERT_EQ(twins.Loaded(), twins.Plain()) << "run " << run;
    }
}
