#include "store/RuleFileHead.h"

#include "host/NvKtDataMng.h"
#include "xml/Dom.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace store {

/// The year call fills the area and the local call the year, in both modes: readers of the format know it so.
std::vector<std::pair<CString, CString>> HeadAttributes()
{
    const NvKtDataMng::CAtt att;
    const bool billMode = att.GetQdDeMode() == SQdDeInfo::BillMode;
    return {{u"CalMode"_s, billMode ? u"清单版"_s : u"定额版"_s},
            {u"BillName"_s, att.GetQdFileName()},
            {u"BillGuid"_s, att.GetQdCode()},
            {u"BillCorpCode"_s, att.GetQdLocal()},
            {u"QuotaName"_s, billMode ? att.GetQdDeFileName() : att.GetDeFileName()},
            {u"QuotaGuid"_s, billMode ? att.GetQdDeCode() : att.GetDeCode()},
            {u"QuotaArea"_s, billMode ? att.GetQdDeYear() : att.GetDeYear()},
            {u"QuotaYear"_s, billMode ? att.GetQdDeLocal() : att.GetDeLocal()}};
}

bool HoldsHead(const WrappedFile& file)
{
    const xml::Document document = xml::Document::Create();
    if (!document.LoadBytes(file.content)) return false;
    const xml::Element root = document.FirstChild().ToElement();
    const auto attributes = HeadAttributes();
    return std::all_of(attributes.begin(), attributes.end(), [&root](const auto& attribute) {
        CString value;
        return root.GetAttribute(attribute.first, value) && value == attribute.second;
    });
}

} // namespace store
