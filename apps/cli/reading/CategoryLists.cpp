#include "cli/reading/CategoryLists.h"

#include "cli/reading/Failure.h"
#include "host/AttributeGroups.h"
#include "host/NvKtDataMng.h"
#include "platform/Numbers.h"

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace cli {

namespace {

using NvKtDataMng::CAtt;
using platform::_wtoi;

CPath PathOf(const SNvKtSmallCategoryId& id)
{
    CPath path{};
    path.specId = _wtoi(id.strSpecId);
    path.lMemberId = _wtoi(id.strBigCategoryId);
    path.sMemberId = _wtoi(id.strSmallCategoryId);
    return path;
}

CArray<Attribute> ReadAttributes(const NvKtDataMng::CSysSmallCategoryMng& category)
{
    CStringArray list;
    category.GetAttributeList(list);
    if (list.size() % host::AttributeGroupSize != 0)
        throw std::invalid_argument("the host's attribute list ends inside a group");
    CArray<Attribute> attributes;
    for (qsizetype i = 0; i < list.size(); i += host::AttributeGroupSize)
        attributes.append({list[i + host::AttributeNamePlace], list[i + host::AttributeCodePlace]});
    return attributes;
}

SmallCategory ReadSmall(const SNvKtSmallCategoryId& id, const CString& parentText)
{
    SmallCategory small;
    const NvKtDataMng::CSysSmallCategoryMng manager(id);
    CAtt().GetSmallCategoryName(id, small.name);
    small.path = PathOf(id);
    small.id = small.path.sMemberId;
    small.text = parentText + u'\\' + small.name;
    small.attType = manager.GetAttType();
    small.attributes = ReadAttributes(manager);
    return small;
}

BigCategory ReadBig(const SNvKtBigCategoryId& id, const CString& specName)
{
    BigCategory big;
    big.id = _wtoi(id.strBigCategoryId);
    CAtt().GetBigCategoryName(id, big.name);
    CArray<SNvKtSmallCategoryId> ids;
    if (!CAtt().GetAllSmallCategoryIdsByBigCategory(id, ids))
        throw Refusal(u"列不出“%1”的小类"_s.arg(big.name));
    for (const SNvKtSmallCategoryId& small : ids)
        big.small.append(ReadSmall(small, specName + u'\\' + big.name));
    return big;
}

} // namespace

Specialty ReadSpecialty(const CString& name)
{
    Specialty specialty;
    specialty.name = name;
    SNvKtSpecId id;
    CArray<SNvKtBigCategoryId> ids;
    if (!NvKtDataMng::SpecNameToId(name, id)) throw Refusal(u"没有专业“%1”"_s.arg(name));
    if (!CAtt().GetAllBigCategoryIdsBySpec(id, ids)) throw Refusal(u"列不出“%1”的大类"_s.arg(name));
    specialty.id = _wtoi(id.strSpecId);
    for (const SNvKtBigCategoryId& big : ids)
        specialty.big.append(ReadBig(big, name));
    return specialty;
}

CArray<Specialty> ReadCatalogue()
{
    CStringArray names;
    if (!CAtt().GetAllSpecNames(names)) throw Refusal(u"列不出专业"_s);
    CArray<Specialty> specialties;
    for (const CString& name : names)
        specialties.append(ReadSpecialty(name));
    return specialties;
}

CString CategoryText(const CPath& path)
{
    const Specialty specialty = ReadSpecialty(NvKtDataMng::CProj().GetCurrentSpec());
    for (const BigCategory& big : specialty.big) {
        for (const SmallCategory& small : big.small) {
            if (small.path.specId == path.specId && small.path.lMemberId == path.lMemberId &&
                small.path.sMemberId == path.sMemberId)
                return small.text;
        }
    }
    return {};
}

bool FindCategory(const CString& text, CPath& path)
{
    SNvKtSmallCategoryId id;
    if (!NvKtDataMng::SmallCategoryNameToId(text, id)) return false;
    const CPath found = PathOf(id);
    path.specId = found.specId;
    path.lMemberId = found.lMemberId;
    path.sMemberId = found.sMemberId;
    return true;
}

} // namespace cli
