#include "ExampleHost.h"

#include "ExamplePicker.h"
#include "ExampleXml.h"

#include <platform/Files.h>
#include <xml/RootAttribute.h>

#include <algorithm>
#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

const CString Spec = u"给排水"_s;
const SNvKtSpecId SpecId{u"1"_s};
const CString Pipes = u"管道"_s;
const SNvKtBigCategoryId PipesId{u"1"_s, u"11"_s};

/// The small categories: id and name.
const std::array<std::pair<CString, CString>, 2> SmallCategories{
    {{u"111"_s, u"给水管"_s}, {u"112"_s, u"排水管"_s}}};

/// An attribute. The code becomes the tag of an XML element.
struct Attribute
{
    CString code;
    CString name;
    int type; ///< how it is compared: 1 as a text, 3 as a number as well
    CStringArray values;
};

const std::array<Attribute, 2> Attributes{
    {{u"Material"_s, u"材质"_s, 1, {u"镀锌钢管"_s, u"塑料管"_s}},
     {u"Diameter"_s, u"公称直径"_s, 3, {u"15"_s, u"20"_s, u"25"_s, u"32"_s, u"40"_s, u"50"_s}}}};

/// The one calculation item: what a quantity is computed from.
const CString Length = u"长度"_s;

const CArray<ExampleItem> Bills{{u"031001001"_s, u"镀锌钢管"_s, u"m"_s},
                                {u"031001006"_s, u"塑料管"_s, u"m"_s}};
const CArray<ExampleItem> Quotas{{u"示10-1-1"_s, u"镀锌钢管安装"_s, u"10m"_s},
                                 {u"示10-1-2"_s, u"塑料管安装"_s, u"10m"_s}};

class Values : public host::CellData
{
public:
    explicit Values(CStringArray values) : m_values(std::move(values)) {}
    CStringArray GetValues() const override { return m_values; }
    int GetType() const override { return 1; }

private:
    CStringArray m_values;
};

} // namespace

ExampleHost::ExampleHost(const CString& folder) : m_folder(folder)
{
    CString text = u"<属性参数信息>"_s;
    for (const Attribute& attribute : Attributes)
        text += u"<%1 type=\"%2\"/>"_s.arg(attribute.code).arg(attribute.type);
    text += u"</属性参数信息>"_s;
    platform::Files().WriteInPlace(m_folder + u"\\AttributeInformation.xml"_s, text.toUtf8());
}

host::Roles ExampleHost::Roles()
{
    return {this, this, this, this, this, this, this, this};
}

bool ExampleHost::SpecNameToId(const CString& name, SNvKtSpecId& id)
{
    if (name != Spec) return false;
    id = SpecId;
    return true;
}

bool ExampleHost::BigCategoryNameToId(const CString& fullName, SNvKtBigCategoryId& id)
{
    if (fullName != Spec + u'\\' + Pipes) return false;
    id = PipesId;
    return true;
}

bool ExampleHost::SmallCategoryNameToId(const CString& fullName, SNvKtSmallCategoryId& id)
{
    for (const auto& [smallId, name] : SmallCategories) {
        if (fullName != Spec + u'\\' + Pipes + u'\\' + name) continue;
        id = {SpecId.strSpecId, PipesId.strBigCategoryId, smallId};
        return true;
    }
    return false;
}

bool ExampleHost::GetAllSpecNames(CStringArray& names)
{
    names = {Spec};
    return true;
}

bool ExampleHost::GetAllBigCategoryIdsBySpec(const SNvKtSpecId&, CArray<SNvKtBigCategoryId>& ids)
{
    ids = {PipesId};
    return true;
}

bool ExampleHost::GetAllSmallCategoryIdsByBigCategory(const SNvKtBigCategoryId&,
                                                      CArray<SNvKtSmallCategoryId>& ids)
{
    ids.clear();
    for (const auto& category : SmallCategories)
        ids.append({SpecId.strSpecId, PipesId.strBigCategoryId, category.first});
    return true;
}

bool ExampleHost::GetBigCategoryName(const SNvKtBigCategoryId&, CString& name)
{
    name = Pipes;
    return true;
}

bool ExampleHost::GetSmallCategoryName(const SNvKtSmallCategoryId& id, CString& name)
{
    for (const auto& [smallId, smallName] : SmallCategories) {
        if (smallId != id.strSmallCategoryId) continue;
        name = smallName;
        return true;
    }
    return false;
}

bool ExampleHost::GetAttributeList(const SNvKtSmallCategoryId&, CStringArray& list)
{
    list.clear();
    for (const Attribute& attribute : Attributes)
        list += {u"基本"_s, attribute.name, CString(), attribute.code};
    return true;
}

std::unique_ptr<host::CellData> ExampleHost::CreateCellData(const CString& code)
{
    for (const Attribute& attribute : Attributes)
        if (attribute.code == code) return std::make_unique<Values>(attribute.values);
    return nullptr;
}

CString ExampleHost::GetQdCode()
{
    return u"示例清单"_s;
}

CString ExampleHost::GetQdDeCode()
{
    return u"示例定额"_s;
}

CString ExampleHost::GetQdFileName()
{
    return u"示例清单库"_s;
}

CString ExampleHost::GetQdDeFileName()
{
    return u"示例定额库"_s;
}

bool ExampleHost::GetQdInfo(const CString& number, SQdInfo& info)
{
    const auto bill = std::find_if(Bills.begin(), Bills.end(), [&](const ExampleItem& candidate) {
        return number.startsWith(candidate.number);
    });
    if (bill == Bills.end()) return false;
    info.strNumber = number;
    info.strName = bill->name;
    info.strUnit = bill->unit;
    return true;
}

bool ExampleHost::IsInQdk(const CString& number)
{
    SQdInfo info;
    return GetQdInfo(number, info);
}

void ExampleHost::GetEnCodeRule(int& length, int& suffixLength)
{
    length = 9;
    suffixLength = 3;
}

CString ExampleHost::GetPrjPath()
{
    return m_folder + u"\\示例.prj"_s;
}

CString ExampleHost::GetCurrentSpec()
{
    return Spec;
}

SNvKtSpecId ExampleHost::GetCurrentSpecId()
{
    return SpecId;
}

CNvKtVersion ExampleHost::GetVersion()
{
    return CNvKtVersion(u"1.0.0"_s);
}

bool ExampleHost::GetCalItems(const CString&, CStringArray& items, CStringArray& other)
{
    items = {Length};
    other.clear();
    return true;
}

bool ExampleHost::GetCalItemInfo(const CString& item, RuleCodeStruct& info)
{
    if (item != Length) return false;
    info.strName = Length;
    info.strRule = Length;
    return true;
}

std::unique_ptr<host::IXmlTool> ExampleHost::CreateXmlTool()
{
    return std::make_unique<ExampleXml>();
}

bool ExampleHost::SetXmlVersion(const CString& version, const CString& file)
{
    return xml::SetRootAttribute(file, u"Version"_s, version);
}

std::unique_ptr<host::IBillPicker> ExampleHost::MakeBillPicker()
{
    return std::make_unique<ExamplePicker>(Bills, Quotas);
}

std::unique_ptr<host::IPickerWindow> ExampleHost::MakeQuotaPicker()
{
    return std::make_unique<ExamplePicker>(CArray<ExampleItem>(), Quotas);
}
