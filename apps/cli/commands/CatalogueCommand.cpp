#include "cli/commands/CatalogueCommand.h"

#include "cli/printing/JsonWriter.h"
#include "cli/printing/Output.h"
#include "cli/printing/TextTable.h"
#include "cli/reading/CategoryLists.h"
#include "cli/reading/Session.h"

using namespace Qt::StringLiterals;

namespace cli {

namespace {

template <typename Entry>
void BeginEntry(JsonWriter& json, const Entry& entry)
{
    json.BeginObject();
    json.Key(u"id").Number(entry.id);
    json.Key(u"name").Text(entry.name);
}

void WriteSmall(JsonWriter& json, const SmallCategory& small)
{
    BeginEntry(json, small);
    json.Key(u"attType").Number(small.attType);
    json.Key(u"attributes").BeginArray();
    for (const Attribute& attribute : small.attributes) {
        json.BeginObject();
        json.Key(u"name").Text(attribute.name);
        json.Key(u"code").Text(attribute.code);
        json.EndObject();
    }
    json.EndArray().EndObject();
}

void WriteSpecialty(JsonWriter& json, const Specialty& specialty)
{
    BeginEntry(json, specialty);
    json.Key(u"bigCategories").BeginArray();
    for (const BigCategory& big : specialty.big) {
        BeginEntry(json, big);
        json.Key(u"smallCategories").BeginArray();
        for (const SmallCategory& small : big.small)
            WriteSmall(json, small);
        json.EndArray().EndObject();
    }
    json.EndArray().EndObject();
}

CString ToJson(const CArray<Specialty>& specialties)
{
    JsonWriter json(JsonWriter::Style::Indented);
    json.BeginObject().Key(u"specialties").BeginArray();
    for (const Specialty& specialty : specialties)
        WriteSpecialty(json, specialty);
    json.EndArray().EndObject();
    return json.Result();
}

CStringArray SmallRow(const SmallCategory& small)
{
    CStringArray names;
    for (const Attribute& attribute : small.attributes)
        names += attribute.name;
    return {CString::number(small.id), small.name, CString::number(small.attType), names.join(u"、"_s)};
}

CString ToTable(const CArray<Specialty>& specialties)
{
    CString text;
    for (const Specialty& specialty : specialties) {
        text += u"%1 %2\n"_s.arg(specialty.id).arg(specialty.name);
        for (const BigCategory& big : specialty.big) {
            text += u"  %1 %2\n"_s.arg(big.id).arg(big.name);
            TextTable table;
            table.AddRow({u"id"_s, u"小类"_s, u"AttType"_s, u"属性"_s});
            for (const SmallCategory& small : big.small)
                table.AddRow(SmallRow(small));
            text += table.ToText(4);
        }
        text += u'\n';
    }
    return text;
}

} // namespace

CommandInfo CatalogueCommand::Describe()
{
    CommandInfo info;
    info.name = u"catalog"_s;
    info.syntax = u"[--spec NAME] [--json]"_s;
    info.summary = u"列出专业、类别和属性"_s;
    info.description = u"按程序的顺序列出各专业的大类、小类和属性，以及它们的 id 和 AttType\n"
                       "（0：清单定额表没有“带管道配件”一列）。"_s;
    info.options = {{u"spec"_s, u"NAME"_s, u"只列这个专业"_s, {}},
                    {u"json"_s, {}, u"以 JSON 输出，写法见手册 docs/json.md"_s, {}}};
    return info;
}

CatalogueCommand::CatalogueCommand() : Command(Describe()) {}

void CatalogueCommand::Run(const Arguments& arguments) const
{
    const Session session(arguments);
    const CArray<Specialty> specialties =
        arguments.Has(u"spec"_s) ? CArray<Specialty>{ReadSpecialty(session.Spec())} : ReadCatalogue();
    WriteText(arguments.Has(u"json"_s) ? ToJson(specialties) : ToTable(specialties));
}

} // namespace cli
