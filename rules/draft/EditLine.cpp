#include "rules/draft/EditLine.h"

#include <QtCore/QCryptographicHash>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <array>

using namespace Qt::StringLiterals;

namespace rules {

namespace {

/// Of the JSON. Goes up when it changes: a journal of another version is not read.
constexpr int Format = 1;

const std::array<RecordField<Condition>, 7> ConditionFields{{
    {u"attribute"_s, &Condition::attribute},
    {u"equalOperator"_s, &Condition::equalOperator},
    {u"value"_s, &Condition::value},
    {u"lowerOperator"_s, &Condition::lowerOperator},
    {u"lowerBound"_s, &Condition::lowerBound},
    {u"upperOperator"_s, &Condition::upperOperator},
    {u"upperBound"_s, &Condition::upperBound},
}};

QByteArray SumOf(const QByteArray& json)
{
    return QCryptographicHash::hash(json, QCryptographicHash::Sha1).toHex();
}

// Writing. Texts that are empty are left out.

template <typename Record, std::size_t N>
void PutTexts(QJsonObject& object, const Record& record, const std::array<RecordField<Record>, N>& fields)
{
    for (const auto& [name, field] : fields)
        if (!(record.*field).isEmpty()) object.insert(name, record.*field);
}

QJsonObject ObjectOf(const Condition& condition);
QJsonObject ObjectOf(const QuotaItem& quota);
QJsonObject ObjectOf(const BillItem& bill);
QJsonObject ObjectOf(const Rule& rule);
QJsonObject ObjectOf(const Splice& splice);

template <typename Part>
QJsonArray ArrayOf(const std::vector<Part>& parts)
{
    QJsonArray array;
    for (const Part& part : parts)
        array.append(ObjectOf(part));
    return array;
}

QJsonObject ObjectOf(const Condition& condition)
{
    QJsonObject object{{u"id"_s, condition.id}, {u"isValueForm"_s, condition.isValueForm}};
    PutTexts(object, condition, ConditionFields);
    return object;
}

QJsonObject ObjectOf(const QuotaItem& quota)
{
    QJsonObject object{{u"id"_s, quota.id}};
    PutTexts(object, quota.record, DeFields);
    return object;
}

QJsonObject ObjectOf(const BillItem& bill)
{
    QJsonObject object{{u"id"_s, bill.id}, {u"quotas"_s, ArrayOf(bill.quotas)}};
    PutTexts(object, bill.record, QdFields);
    return object;
}

QJsonObject ObjectOf(const Rule& rule)
{
    return {{u"id"_s, rule.id},
            {u"isDefault"_s, rule.isDefault},
            {u"lastCondition"_s, rule.counters.condition},
            {u"lastBill"_s, rule.counters.bill},
            {u"lastQuota"_s, rule.counters.quota},
            {u"conditions"_s, ArrayOf(rule.conditions)},
            {u"bills"_s, ArrayOf(rule.bills)},
            {u"quotas"_s, ArrayOf(rule.quotas)}};
}

QJsonObject ObjectOf(const Splice& splice)
{
    return {{u"category"_s, splice.category},
            {u"position"_s, static_cast<qint64>(splice.position)},
            {u"removed"_s, ArrayOf(splice.removed)},
            {u"inserted"_s, ArrayOf(splice.inserted)}};
}

// Reading what was written.

template <typename Record, std::size_t N>
void TakeTexts(const QJsonObject& object, Record& record, const std::array<RecordField<Record>, N>& fields)
{
    for (const auto& [name, field] : fields)
        record.*field = object.value(name).toString();
}

void Take(const QJsonObject& object, Condition& condition);
void Take(const QJsonObject& object, QuotaItem& quota);
void Take(const QJsonObject& object, BillItem& bill);
void Take(const QJsonObject& object, Rule& rule);
void Take(const QJsonObject& object, Splice& splice);

template <typename Part>
void TakeAll(const QJsonValue& array, std::vector<Part>& parts)
{
    const QJsonArray values = array.toArray();
    parts.reserve(static_cast<std::size_t>(values.size()));
    for (const auto& value : values)
        Take(value.toObject(), parts.emplace_back());
}

void Take(const QJsonObject& object, Condition& condition)
{
    condition.id = object.value(u"id"_s).toInt();
    condition.isValueForm = object.value(u"isValueForm"_s).toBool();
    TakeTexts(object, condition, ConditionFields);
}

void Take(const QJsonObject& object, QuotaItem& quota)
{
    quota.id = object.value(u"id"_s).toInt();
    TakeTexts(object, quota.record, DeFields);
}

void Take(const QJsonObject& object, BillItem& bill)
{
    bill.id = object.value(u"id"_s).toInt();
    TakeTexts(object, bill.record, QdFields);
    TakeAll(object.value(u"quotas"_s), bill.quotas);
}

void Take(const QJsonObject& object, Rule& rule)
{
    rule.id = object.value(u"id"_s).toInt();
    rule.isDefault = object.value(u"isDefault"_s).toBool();
    rule.counters = {object.value(u"lastCondition"_s).toInt(), object.value(u"lastBill"_s).toInt(),
                     object.value(u"lastQuota"_s).toInt()};
    TakeAll(object.value(u"conditions"_s), rule.conditions);
    TakeAll(object.value(u"bills"_s), rule.bills);
    TakeAll(object.value(u"quotas"_s), rule.quotas);
}

void Take(const QJsonObject& object, Splice& splice)
{
    splice.category = object.value(u"category"_s).toString();
    splice.position = static_cast<std::size_t>(object.value(u"position"_s).toInteger());
    TakeAll(object.value(u"removed"_s), splice.removed);
    TakeAll(object.value(u"inserted"_s), splice.inserted);
}

} // namespace

QByteArray LineOf(const Edit& edit)
{
    const QJsonObject object{
        {u"format"_s, Format}, {u"text"_s, edit.text}, {u"splices"_s, ArrayOf(edit.splices)}};
    QByteArray json = QJsonDocument(object).toJson(QJsonDocument::Compact);
    // At the start of a text the reader would take this character for a mark and drop it.
    json.replace("\xEF\xBB\xBF", "\\ufeff");
    return SumOf(json) + ' ' + json;
}

std::optional<Edit> EditOf(const QByteArray& line)
{
    const qsizetype blank = line.indexOf(' ');
    if (blank < 0) return std::nullopt;
    const QByteArray json = line.sliced(blank + 1);
    if (line.first(blank) != SumOf(json)) return std::nullopt;
    const QJsonObject object = QJsonDocument::fromJson(json).object();
    if (object.value(u"format"_s).toInt() != Format) return std::nullopt;
    Edit edit;
    edit.text = object.value(u"text"_s).toString();
    TakeAll(object.value(u"splices"_s), edit.splices);
    return edit;
}

} // namespace rules
