// Load, edit, save, load again. The input is a program of edits (up to a zero byte) and a rule file.
#include "fuzz/FuzzSupport.h"

#include "store/CXmlQdDeConfig.h"

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace {

/// One edit; `argument` picks ids, so that some exist and some do not.
void Edit(IQdDeConfigData& store, unsigned char code, unsigned char argument)
{
    CPath path{};
    path.specId = 1;
    path.lMemberId = 11;
    path.sMemberId = 111;
    path.configId = argument % 5;
    path.conditionId = argument % 3;
    path.qdId = argument % 4;
    path.deId = argument % 4;
    std::vector<ConfigNode*> rules;
    const CString text = CString::number(argument) + u"甲<&\"\n"_s;
    const ConditionNode condition(text, argument % 2 == 0, u"＝"_s, u"＞"_s, u"≤"_s, text, u"1"_s, u"2"_s);
    QdStruct qd;
    qd.strQdId = text;
    DeStruct de;
    de.strName = text;
    int id = 0;
    switch (code % 16) {
    case 0:
        store.AddConfig(path, id);
        break;
    case 1:
        store.AddConfigByCopy(path, id);
        break;
    case 2:
        store.DelConfig(path);
        break;
    case 3:
        store.MoveUpConfig(path);
        break;
    case 4:
        store.MoveDownConfig(path);
        break;
    case 5:
        store.AddCondition(path, condition);
        break;
    case 6:
        store.ResetCondition(path, condition);
        break;
    case 7:
        store.DelCondition(path, rules);
        break;
    case 8:
        store.AddQd(qd, path, rules);
        break;
    case 9:
        store.AddDe2QdNode(de, path, rules);
        break;
    case 10:
        store.AddDe2ConfigNode(de, path, rules);
        break;
    case 11:
        store.DelQd(path, {argument % 4});
        break;
    case 12:
        store.DelDeInQdNode(path, {{argument % 4, {1, 2}}});
        break;
    case 13:
        store.DelDeInConfigNode(path, {argument % 4});
        break;
    case 14:
        store.ResetDeToQd(path, de);
        break;
    default:
        store.Save();
        break;
    }
}

/// The children of the document element that belong to others, as they stand in the file.
CStringArray Others(const xml::Document& document)
{
    CStringArray names;
    for (xml::Node node = document.FirstChild().FirstChild(); node; node = node.NextSibling()) {
        CString name;
        if (const xml::Element element = node.ToElement()) element.GetAttribute(u"name"_s, name);
        if (name != fuzz::World::Spec()) names.append(CString::number(static_cast<int>(node.Kind())) + name);
    }
    return names;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzz::World& world = fuzz::World::Fresh();
    const QByteArray bytes = fuzz::Bytes(data, size);
    const qsizetype end = bytes.indexOf('\0');
    const QByteArray edits = bytes.left(end < 0 ? 0 : end);
    const QByteArray file = bytes.mid(end + 1);
    const CString path = fuzz::World::RuleFile();
    world.Files().Put(path, file);

    const xml::Document before = xml::Document::Create();
    const bool loaded = before.LoadBytes(file);
    CXmlQdDeConfig store(path, fuzz::World::Spec());
    for (qsizetype i = 0; i + 1 < edits.size(); i += 2) {
        try {
            Edit(store, static_cast<unsigned char>(edits[i]), static_cast<unsigned char>(edits[i + 1]));
        } catch (const std::out_of_range&) {
            // the checked list index of a small category with too few rules
        }
    }
    if (!store.Save()) return 0;

    const QByteArray saved = world.Files().Get(path);
    fuzz::RequireStrictXml(saved, "a saved file is XML");
    const xml::Document after = xml::Document::Create();
    fuzz::Require(after.LoadBytes(saved), "a saved file loads");
    if (loaded && !Others(before).contains(u"2"_s + fuzz::World::Spec()))
        fuzz::Require(Others(after) == Others(before), "the neighbours survive");

    // The first reload may add a default rule, the second then counts the rules anew; from there on nothing
    // changes.
    const auto reload = [&] {
        CXmlQdDeConfig again(path, fuzz::World::Spec());
        fuzz::Require(again.Save(), "what was saved can be saved");
        return world.Files().Get(path);
    };
    reload();
    const QByteArray settled = reload();
    fuzz::Require(reload() == settled, "saving what was loaded changes nothing");
    return 0;
}
