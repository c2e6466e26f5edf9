#include "cli/batch/BatchRequest.h"

#include "cli/reading/CategoryLists.h"
#include "cli/reading/Failure.h"
#include "cli/reading/RuleFiles.h"
#include "platform/Encoding.h"
#include "xml/Dom.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace cli {

namespace {

struct PathField
{
    QStringView name;
    int CPath::*field;
};

constexpr std::array<PathField, 8> PathFields{{
    {u"specId", &CPath::specId},
    {u"lMemberId", &CPath::lMemberId},
    {u"sMemberId", &CPath::sMemberId},
    {u"configId", &CPath::configId},
    {u"conditionId", &CPath::conditionId},
    {u"qdId", &CPath::qdId},
    {u"spareId", &CPath::spareId},
    {u"deId", &CPath::deId},
}};

/// The fields in whose place a category text stands.
constexpr std::size_t CategoryFields = 3;

int ToInteger(const QJsonValue& value, const CString& name)
{
    const double number = value.toDouble(std::numeric_limits<double>::quiet_NaN());
    if (!value.isDouble() || std::floor(number) != number) throw BadLine(u"“%1”应是整数"_s.arg(name));
    if (number < std::numeric_limits<int>::min() || number > std::numeric_limits<int>::max())
        throw BadLine(u"“%1”超出 32 位整数的范围"_s.arg(name));
    return static_cast<int>(number);
}

CString ToText(const QJsonValue& value, const CString& name)
{
    if (!value.isString()) throw BadLine(u"“%1”应是文本"_s.arg(name));
    CString text = value.toString();
    if (!xml::IsText(text)) throw BadLine(u"“%1”含有 XML 文件不能保存的字符"_s.arg(name));
    return text;
}

QJsonObject ToObject(const QJsonValue& value, const CString& name)
{
    if (!value.isObject()) throw BadLine(u"“%1”应是对象"_s.arg(name));
    return value.toObject();
}

QJsonArray ToArray(const QJsonValue& value, const CString& name)
{
    if (!value.isArray()) throw BadLine(u"“%1”应是列表"_s.arg(name));
    return value.toArray();
}

std::set<int> ToIds(const QJsonValue& value, const CString& name)
{
    std::set<int> ids;
    for (const auto& id : ToArray(value, name))
        ids.insert(ToInteger(id, name));
    return ids;
}

void ReadPath(const QJsonValue& value, BatchRequest& request)
{
    const QJsonObject path = ToObject(value, u"path"_s);
    for (auto entry = path.begin(); entry != path.end(); ++entry) {
        if (entry.key() == u"category") continue;
        const auto field = std::find_if(PathFields.begin(), PathFields.end(),
                                        [&](const PathField& known) { return known.name == entry.key(); });
        if (field == PathFields.end()) throw BadLine(u"“path”中不认识的键“%1”"_s.arg(entry.key()));
        if (path.contains(u"category") &&
            field - PathFields.begin() < static_cast<std::ptrdiff_t>(CategoryFields))
            throw BadLine(u"“category”和“%1”不能同时给出"_s.arg(entry.key()));
        request.path.*field->field = ToInteger(entry.value(), entry.key());
    }
    if (!path.contains(u"category")) return;
    const CString category = ToText(path.value(u"category"), u"category"_s);
    if (!FindCategory(category, request.path)) throw BadLine(u"没有类别“%1”"_s.arg(category));
}

void ReadArray(const QJsonValue& value, BatchRequest& request)
{
    for (const auto& text : ToArray(value, u"array"_s))
        request.array += ToText(text, u"array"_s);
}

void ReadConditions(const QJsonValue& value, BatchRequest& request)
{
    for (const auto& condition : ToArray(value, u"conditions"_s)) {
        CStringArray& texts = request.conditions.emplace_back();
        for (const auto& text : ToArray(condition, u"conditions"_s))
            texts += ToText(text, u"conditions"_s);
    }
}

template <typename Record, typename Fields>
void ReadRecord(const QJsonValue& value, const CString& name, const Fields& fields, Record& record,
                std::set<CString>& named)
{
    const QJsonObject object = ToObject(value, name);
    for (auto entry = object.begin(); entry != object.end(); ++entry) {
        const auto field = std::find_if(fields.begin(), fields.end(),
                                        [&](const auto& known) { return known.name == entry.key(); });
        if (field == fields.end()) throw BadLine(u"“%1”中不认识的键“%2”"_s.arg(name, entry.key()));
        record.*field->field = ToText(entry.value(), entry.key());
        named.insert(entry.key());
    }
}

void ReadQd(const QJsonValue& value, BatchRequest& request)
{
    ReadRecord(value, u"qd"_s, QdFields, request.qd, request.named);
}
void ReadDe(const QJsonValue& value, BatchRequest& request)
{
    ReadRecord(value, u"de"_s, DeFields, request.de, request.named);
}
void ReadIds(const QJsonValue& value, BatchRequest& request)
{
    request.ids = ToIds(value, u"ids"_s);
}

void ReadDeIdsByQd(const QJsonValue& value, BatchRequest& request)
{
    const QJsonObject object = ToObject(value, u"deIdsByQd"_s);
    for (auto entry = object.begin(); entry != object.end(); ++entry) {
        bool isNumber = false;
        const int qdId = entry.key().toInt(&isNumber);
        if (!isNumber || CString::number(qdId) != entry.key())
            throw BadLine(u"“deIdsByQd”的键“%1”应是 32 位整数"_s.arg(entry.key()));
        request.deIdsByQd[qdId] = ToIds(entry.value(), u"deIdsByQd"_s);
    }
}

void ReadFile(const QJsonValue& value, BatchRequest& request)
{
    try {
        request.file = ResolveRuleFile(ToText(value, u"file"_s));
    } catch (const Refusal& refusal) {
        throw BadLine(CString::fromUtf8(refusal.what()));
    }
}

struct KeyReader
{
    QStringView name;
    BatchKey key;
    void (*read)(const QJsonValue&, BatchRequest&);
};

constexpr std::array<KeyReader, 8> KeyReaders{{
    {u"path", BatchKey::Path, ReadPath},
    {u"array", BatchKey::Array, ReadArray},
    {u"conditions", BatchKey::Conditions, ReadConditions},
    {u"qd", BatchKey::Qd, ReadQd},
    {u"de", BatchKey::De, ReadDe},
    {u"ids", BatchKey::Ids, ReadIds},
    {u"deIdsByQd", BatchKey::DeIdsByQd, ReadDeIdsByQd},
    {u"file", BatchKey::File, ReadFile},
}};

void RefuseUnknownKeys(const QJsonObject& line)
{
    for (const CString& name : line.keys()) {
        const bool known =
            name == u"op" || std::any_of(KeyReaders.begin(), KeyReaders.end(),
                                         [&](const KeyReader& reader) { return reader.name == name; });
        if (!known) throw BadLine(u"不认识的键“%1”"_s.arg(name));
    }
}

} // namespace

QJsonObject ParseBatchLine(const QByteArray& line)
{
    if (!platform::Decode(line, platform::Encoding::Utf8)) throw BadLine(u"不是 UTF-8 文本"_s);
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(line, &error);
    if (error.error != QJsonParseError::NoError)
        throw BadLine(u"不是 JSON：第 %1 字节：%2"_s.arg(error.offset + 1).arg(error.errorString()));
    if (!document.isObject()) throw BadLine(u"不是 JSON 对象"_s);
    return document.object();
}

CString BatchOperationName(const QJsonObject& line)
{
    if (!line.contains(u"op")) throw BadLine(u"缺少“op”"_s);
    return ToText(line.value(u"op"), u"op"_s);
}

BatchRequest ReadBatchRequest(const QJsonObject& line, const std::set<BatchKey>& keys)
{
    RefuseUnknownKeys(line);
    BatchRequest request;
    request.keys = keys;
    for (const KeyReader& reader : KeyReaders) {
        const bool wanted = keys.contains(reader.key);
        if (line.contains(reader.name)) {
            if (!wanted && reader.key != BatchKey::Path)
                throw BadLine(u"这个操作不用“%1”"_s.arg(reader.name));
            reader.read(line.value(reader.name), request);
        } else if (wanted && reader.key != BatchKey::Conditions) {
            throw BadLine(u"缺少“%1”"_s.arg(reader.name));
        }
    }
    return request;
}

} // namespace cli
