#include "embedded/windows/LibraryLists.h"

#include <QtCore/QSet>

namespace embedded {

namespace {

PickerItem ToItem(const SQdInfo& bill, int chapter)
{
    return {bill.strNumber, bill.strName,    bill.strUnit, bill.strCalRule,
            bill.nUnitCode, bill.nWithAnnex, chapter};
}

PickerItem ToItem(const SPickedDe& quota, int chapter)
{
    return {quota.strNumber, quota.strName,    quota.strUnit, quota.strCalRule,
            quota.nUnitCode, quota.nWithAnnex, chapter};
}

} // namespace

std::vector<Chapter> BillChapters(const LibraryContents& contents)
{
    std::vector<Chapter> chapters;
    for (const BillSection& section : contents.bills) {
        CString key = section.indexPath;
        key.replace(u'\\', u'.');
        const CString parent = key.left(qMax<qsizetype>(key.lastIndexOf(u'.'), 0));
        chapters.push_back({key, parent, key.section(u'.', -1), section.title});
    }
    return chapters;
}

std::vector<PickerItem> BillItems(const LibraryContents& contents)
{
    std::vector<PickerItem> items;
    for (std::size_t chapter = 0; chapter < contents.bills.size(); ++chapter) {
        for (const SQdInfo& bill : contents.bills[chapter].items)
            items.push_back(ToItem(bill, static_cast<int>(chapter)));
    }
    return items;
}

std::vector<Chapter> QuotaChapters(const LibraryContents& contents)
{
    QSet<CString> codes;
    for (const QuotaSection& section : contents.quotas)
        codes.insert(section.code);
    std::vector<Chapter> chapters;
    for (const QuotaSection& section : contents.quotas) {
        CString parent = section.code;
        do {
            parent = parent.left(qMax<qsizetype>(parent.lastIndexOf(u'-'), 0));
        } while (!parent.isEmpty() && !codes.contains(parent));
        chapters.push_back({section.code, parent, section.code, section.title});
    }
    return chapters;
}

std::vector<PickerItem> QuotaItems(const LibraryContents& contents)
{
    std::vector<PickerItem> items;
    for (std::size_t chapter = 0; chapter < contents.quotas.size(); ++chapter) {
        for (const QuotaItem& quota : contents.quotas[chapter].items)
            items.push_back(ToItem(quota.record, static_cast<int>(chapter)));
    }
    return items;
}

QHash<CString, std::vector<int>> QuotasOfBills(const LibraryContents& contents)
{
    QHash<CString, std::vector<int>> quotas;
    int position = 0;
    for (const QuotaSection& section : contents.quotas) {
        for (const QuotaItem& quota : section.items) {
            for (const CString& bill : quota.bills)
                quotas[bill].push_back(position);
            ++position;
        }
    }
    return quotas;
}

} // namespace embedded
