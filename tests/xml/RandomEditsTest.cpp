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
    Twins()
    {
        m_plain.document.AppendChild(Parsed(Source).FirstChild());
        for (const Tree& tree : {m_loaded, m_plain})
            tree.attic.AppendChild(tree.attic.CreateElement(u"attic"_s));
    }

    void EditBoth(unsigned seed)
    {
        Edit(m_loaded, seed);
        Edit(m_plain, seed);
    }
    CString Loaded() const { return test::CanonicalXml(m_loaded.document.ToBytes()); }
    CString Plain() const { return test::CanonicalXml(m_plain.document.ToBytes()); }

private:
    struct Tree
    {
        xml::Document document;
        xml::Document attic = xml::Document::Create(); ///< where nodes are put aside and fetched from
    };
    /// The elements from the document element down to one, each a child of the one before.
    using Way = std::vector<xml::Node>;

    /// A way to any element. What stands beside it is not looked into, and may not have been parsed yet.
    static Way AnyWay(const xml::Node& top, std::mt19937& random)
    {
        Way way{top};
        while (random() % 4 != 0) {
            std::vector<xml::Node> children;
            for (xml::Node child = way.back().FirstChild(); child; child = child.NextSibling())
                children.push_back(child);
            if (children.empty()) break;
            way.push_back(children[random() % children.size()]);
        }
        return way;
    }

    static bool Contains(const Way& way, const xml::Node& node)
    {
        return std::find(way.begin(), way.end(), node) != way.end();
    }

    static void Edit(const Tree& tree, unsigned seed)
    {
        std::mt19937 random(seed);
        const xml::Node root = tree.document.FirstChild();
        const xml::Node attic = tree.attic.FirstChild();
        const Way one = AnyWay(root, random);
        const Way other = AnyWay(root, random);
        const bool isRoot = one.size() == 1;
        switch (random() % 6) {
        case 0:
            one.back().ToElement().SetAttribute(u"x"_s, CString::number(random() % 100));
            break;
        case 1:
            one.back()
                .AppendChild(tree.document.CreateElement(u"e"_s))
                .AppendChild(tree.document.CreateElement(u"f"_s));
            break;
        case 2:
            if (!isRoot) one[one.size() - 2].RemoveChild(one.back());
            break;
        case 3:
            if (!Contains(other, one.back())) other.back().AppendChild(one.back());
            break;
        case 4:
            if (!isRoot) attic.AppendChild(one.back());
            break;
        default:
            if (const xml::Node kept = attic.FirstChild()) one.back().AppendChild(kept);
            break;
        }
    }

    Tree m_loaded{Parsed(Source)};
    Tree m_plain{xml::Document::Create()};
};

} // namespace

TEST(RandomEdits, NoneIsOverlookedByASaveThatCopiesWhatIsUntouched)
{
    for (unsigned run = 0; run < 1000; ++run) {
        Twins twins;
        for (unsigned edit = 0; edit < 7; ++edit)
            twins.EditBoth(run * 100 + edit);
        ASSERT_EQ(twins.Loaded(), twins.Plain()) << "run " << run;
    }
}
