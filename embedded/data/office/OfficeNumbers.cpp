#include "embedded/data/office/OfficeNumbers.h"

#include "embedded/data/engine/Error.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QUuid>

#include <utility>

namespace embedded {

using namespace Qt::StringLiterals;

namespace {

QJsonObject ToJson(const SQdInfo& item)
{
    return {{u"number"_s, item.strNumber},      {u"name"_s, item.strName},
            {u"unit"_s, item.strUnit},          {u"unit_code"_s, item.nUnitCode},
            {u"with_annex"_s, item.nWithAnnex}, {u"cal_rule"_s, item.strCalRule}};
}

CString ToText(const QJsonDocument& document)
{
    return CString::fromUtf8(document.toJson(QJsonDocument::Compact));
}

/// The text of a JSON array of items.
CString ItemsText(const CArray<SQdInfo>& items)
{
    QJsonArray array;
    for (const SQdInfo& item : items)
        array.append(ToJson(item));
    return ToText(QJsonDocument(array));
}

SQdInfo ItemOf(const QSqlQuery& row)
{
    SQdInfo item;
    item.strNumber = row.value(0).toString();
    item.strName =
        row.value(1).toString() +
        (row.value(7).toBool() ? u"（工程“%1”正在编号）"_s : u"（工程“%1”）"_s).arg(row.value(6).toString());
    item.strUnit = row.value(2).toString();
    item.nUnitCode = row.value(3).toInt();
    item.nWithAnnex = row.value(4).toInt();
    item.strCalRule = row.value(5).toString();
    return item;
}

} // namespace

OfficeNumbers::OfficeNumbers(ProjectOffice& office, CurrentConfiguration configuration)
    : m_office(office), m_configuration(std::move(configuration)),
      m_claimer(QUuid::createUuid().toString(QUuid::WithoutBraces))
{
}

OfficeNumbers::~OfficeNumbers()
{
    Release();
}

CString OfficeNumbers::Shared()
{
    const CString name = m_configuration.Name();
    return m_office.Memory().Base(name).number > 0 ? name : CString();
}

void OfficeNumbers::Ask(const std::function<void(Database& office)>& action)
{
    try {
        if (m_office.Reached() == nullptr) return;
        try {
            action(m_office.Reached()->Connection());
        } catch (const UnreachableError& error) {
            m_office.Lose(error);
            if (m_office.Reach()) action(m_office.Reached()->Connection());
        }
    } catch (const UnreachableError& error) {
        m_office.Lose(error);
    } catch (const Error&) {
        // No right to it, or an office that has no such register: there is nothing to go by then.
    }
}

CArray<SQdInfo> OfficeNumbers::Find(const CString& library, const CString& base)
{
    CArray<SQdInfo> items;
    Ask([&](Database& office) {
        const CString configuration = Shared();
        if (configuration.isEmpty()) return;
        items.clear();
        office.ForEach(u"SELECT number, name, unit, unit_code, with_annex, cal_rule, project, "
                       "claimed_until IS NOT NULL FROM numbers WHERE configuration = ? AND library = ? AND "
                       "starts_with(number, ?) AND (claimed_until IS NULL OR "
                       "claimed_until > clock_timestamp() AND claimer <> ?) ORDER BY number COLLATE \"C\""_s,
                       {configuration, library, base, m_claimer}, [&](const QSqlQuery& row) {
                           if (row.value(0).toString() != base) items.append(ItemOf(row));
                       });
    });
    return items;
}

bool OfficeNumbers::Claim(const CString& library, const CArray<SQdInfo>& items)
{
    bool isClaimed = true;
    Ask([&](Database& office) {
        const CString configuration = Shared();
        if (configuration.isEmpty()) return;
        isClaimed = office
                        .Single(u"SELECT claim_numbers(?, ?, ?, ?, ?::jsonb)"_s,
                                {configuration, library, m_office.ProjectName(), m_claimer, ItemsText(items)})
                        .toBool();
        m_hasClaims = true;
    });
    return isClaimed;
}

void OfficeNumbers::Keep(const CString& library, const SQdInfo& item)
{
    Ask([&](Database& office) {
        const CString configuration = Shared();
        if (configuration.isEmpty()) return;
        office.Single(u"SELECT keep_number(?, ?, ?, ?, ?, ?::jsonb)"_s,
                      {configuration, library, m_office.ProjectName(), m_office.ProjectId(), m_claimer,
                       ToText(QJsonDocument(ToJson(item)))});
        m_hasClaims = false;
    });
}

void OfficeNumbers::Release()
{
    if (!std::exchange(m_hasClaims, false)) return;
    Ask([&](Database& office) { office.Single(u"SELECT release_claims(?)"_s, {m_claimer}); });
}

} // namespace embedded
