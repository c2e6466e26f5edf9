#include "cli/commands/office/CloudListing.h"

#include "cli/printing/JsonWriter.h"
#include "cli/printing/TextTable.h"
#include "platform/TimeText.h"
#include "shared/OfficeText.h"

using namespace Qt::StringLiterals;

namespace cli {

namespace {

using embedded::PublishedVersion;
using shared::OfficeEntry;
using shared::OfficeState;

CString StateKey(OfficeState state)
{
    switch (state) {
    case OfficeState::Missing:
        return u"missing"_s;
    case OfficeState::Unpublished:
        return u"unpublished"_s;
    case OfficeState::Apart:
        return u"apart"_s;
    case OfficeState::Same:
        return u"same"_s;
    case OfficeState::Older:
        return u"older"_s;
    case OfficeState::Edited:
        return u"edited"_s;
    case OfficeState::OlderEdited:
        return u"older-edited"_s;
    case OfficeState::Removed:
        return u"removed"_s;
    case OfficeState::Unknown:
        return u"unknown"_s;
    }
    return {};
}

CString NumberText(int version)
{
    return version > 0 ? CString::number(version) : CString();
}

void PutVersion(JsonWriter& json, const PublishedVersion& version)
{
    json.Key(u"version").Number(version.number);
    json.Key(u"from").Number(version.base);
    json.Key(u"at").Text(version.at.toUTC().toString(Qt::ISODate));
    json.Key(u"author").Text(version.author);
    json.Key(u"project").Text(version.project);
    json.Key(u"note").Text(version.note);
    json.Key(u"size").Number(version.size);
    json.Key(u"removed").Bool(version.isRemoved);
}

} // namespace

CString EntryTable(const CArray<OfficeEntry>& entries)
{
    TextTable table;
    table.AddRow({u"配置"_s, u"最新版"_s, u"本地"_s, u"状态"_s, u"发布人"_s, u"发布时间"_s, u"说明"_s});
    for (const OfficeEntry& entry : entries) {
        const PublishedVersion last = entry.last.value_or(PublishedVersion());
        table.AddRow({entry.configuration, NumberText(last.number), NumberText(entry.base),
                      shared::StateText(entry), last.author,
                      entry.last ? platform::TimeText(last.at) : CString(), last.note});
    }
    return table.ToText(0);
}

CString EntryJson(const CArray<OfficeEntry>& entries, embedded::ProjectOffice& office)
{
    JsonWriter json(JsonWriter::Style::Indented);
    json.BeginObject();
    json.Key(u"office").Text(office.Name());
    json.Key(u"reached").Bool(office.Reached() != nullptr);
    json.Key(u"configurations").BeginArray();
    for (const OfficeEntry& entry : entries) {
        json.BeginObject();
        json.Key(u"configuration").Text(entry.configuration);
        json.Key(u"state").Text(StateKey(entry.state));
        json.Key(u"base").Number(entry.base);
        json.Key(u"waiting").Bool(entry.isWaiting);
        if (entry.last) {
            json.Key(u"last").BeginObject();
            PutVersion(json, *entry.last);
            json.EndObject();
        }
        json.EndObject();
    }
    json.EndArray().EndObject();
    return json.Result();
}

CString LogTable(const CArray<PublishedVersion>& versions)
{
    TextTable table;
    table.AddRow({u"版本"_s, u"改自"_s, u"发布时间"_s, u"发布人"_s, u"工程"_s, u"说明"_s});
    for (const PublishedVersion& version : versions)
        table.AddRow({NumberText(version.number), NumberText(version.base), platform::TimeText(version.at),
                      version.author, version.project, version.note});
    return table.ToText(0);
}

CString LogJson(const CArray<PublishedVersion>& versions, const CString& configuration)
{
    JsonWriter json(JsonWriter::Style::Indented);
    json.BeginObject();
    json.Key(u"configuration").Text(configuration);
    json.Key(u"versions").BeginArray();
    for (const PublishedVersion& version : versions) {
        json.BeginObject();
        PutVersion(json, version);
        json.EndObject();
    }
    json.EndArray().EndObject();
    return json.Result();
}

} // namespace cli
