#include "embedded/data/project/LibrariesInUse.h"

#include "embedded/data/catalogue/LibraryDatabase.h"
#include "embedded/data/engine/Error.h"

#include <QtCore/QSet>

#include <algorithm>
#include <iterator>
#include <utility>

namespace embedded {

namespace {

/// Adds the items whose numbers are not there yet, and brings all into the order of their numbers.
void Merge(CArray<SQdInfo>& items, const CArray<SQdInfo>& others)
{
    QSet<CString> known;
    for (const SQdInfo& item : std::as_const(items))
        known.insert(item.strNumber);
    std::copy_if(others.begin(), others.end(), std::back_inserter(items),
                 [&](const SQdInfo& item) { return !known.contains(item.strNumber); });
    std::sort(items.begin(), items.end(),
              [](const SQdInfo& left, const SQdInfo& right) { return left.strNumber < right.strNumber; });
}

} // namespace

LibrariesInUse::LibrariesInUse(Database& catalogue, ProjectDatabase& project,
                               const ProjectDatabase::Settings& settings, const CString& ruleFolder,
                               NumberRegister* numbers)
    : m_catalogue(catalogue), m_project(project), m_numbers(numbers), m_ruleNumbers(ruleFolder)
{
    Use(Read(settings), settings.mode);
}

LibrariesInUse::Shelf LibrariesInUse::Read(const ProjectDatabase::Settings& settings)
{
    Shelf shelf;
    shelf.libraries = ReadLibraries(m_catalogue);
    for (const LibraryRole role : AllLibraryRoles)
        shelf.inUse.emplace(role, RequireStoredLibrary(shelf.libraries, role, settings.Library(role)));
    shelf.contents = ReadContents(m_catalogue, shelf.libraries, shelf.inUse.at(LibraryRole::Bill),
                                  shelf.inUse.at(QuotaRole(settings.mode)));
    return shelf;
}

void LibrariesInUse::Use(Shelf shelf, SQdDeInfo::EQdDeMode mode)
{
    m_shelf = std::move(shelf);
    m_mode = mode;
    m_bills.clear();
    for (const BillSection& section : m_shelf.contents.bills) {
        for (const SQdInfo& item : section.items)
            m_bills.insert(item.strNumber, &item);
    }
}

ProjectDatabase::Settings LibrariesInUse::Current() const
{
    ProjectDatabase::Settings settings{m_mode, {}};
    for (const auto& [role, library] : m_shelf.inUse)
        settings.libraries.emplace(role, library.name.code);
    return settings;
}

void LibrariesInUse::SetLibrary(LibraryRole role, const CString& code)
{
    const Transaction catalogueStays(m_catalogue);
    RequireLibrary(ReadLibraries(m_catalogue), role, code);
    ProjectDatabase::Settings settings = Current();
    settings.libraries[role] = code;
    Shelf shelf = Read(settings);
    m_project.WriteLibrary(role, code);
    Use(std::move(shelf), m_mode);
}

void LibrariesInUse::SetMode(SQdDeInfo::EQdDeMode mode)
{
    ProjectDatabase::Settings settings = Current();
    settings.mode = mode;
    Shelf shelf = Read(settings);
    m_project.WriteMode(mode);
    Use(std::move(shelf), mode);
}

bool LibrariesInUse::GetQdInfo(const CString& number, SQdInfo& info)
{
    const SQdInfo* const item = m_bills.value(number);
    if (item == nullptr) return false;
    info = *item;
    if (const auto numbering = Numbering()) {
        const auto taken = m_proposed.LookUp(GetQdCode(), *numbering, info,
                                             [this](const CString& text) { return IsInQdk(text); });
        if (taken && m_numbers != nullptr) m_numbers->Keep(GetQdCode(), *taken);
    }
    return true;
}

std::optional<host::BillNumbering> LibrariesInUse::Numbering() const
{
    const Library& library = InUse(LibraryRole::Bill);
    return host::BillNumbering::Of(library.codeLength, library.suffixLength);
}

/// Each refusal means that somebody else has got on, so it does not go on for ever.
void LibrariesInUse::Claim(const CString& base, CArray<SQdInfo>& told)
{
    constexpr int mostAttempts = 100;
    const auto numbering = Numbering();
    if (!numbering || base.isEmpty()) return;
    CArray<SQdInfo> ofLibrary;
    for (const BillSection& section : m_shelf.contents.bills) {
        for (const SQdInfo& item : section.items)
            if (numbering->BaseOf(item.strNumber) == base) ofLibrary.append(item);
    }
    for (int attempt = 0; attempt < mostAttempts; ++attempt) {
        Merge(told, m_numbers->Find(GetQdCode(), base));
        const CArray<SQdInfo> possible = ProposedNumbers::Possible(*numbering, base, told, ofLibrary);
        if (m_numbers->Claim(GetQdCode(), possible)) return;
    }
}

void LibrariesInUse::ForgetProposedNumbers()
{
    m_proposed.Forget();
    if (m_numbers != nullptr) m_numbers->Release();
}

bool LibrariesInUse::IsInQdk(const CString& number)
{
    return m_bills.contains(number);
}

QSet<CString> LibrariesInUse::BillNumbersOf(const CString& library) const
{
    if (library.compare(InUse(LibraryRole::Bill).name.code, Qt::CaseInsensitive) == 0)
        return {m_bills.keyBegin(), m_bills.keyEnd()};
    QSet<CString> numbers;
    for (const Library& other : m_shelf.libraries) {
        if (other.role != LibraryRole::Bill || other.name.code.compare(library, Qt::CaseInsensitive) != 0)
            continue;
        for (const CString& number : ReadBillNumbers(m_catalogue, other))
            numbers.insert(number);
    }
    return numbers;
}

void LibrariesInUse::GetEnCodeRule(int& length, int& suffixLength)
{
    length = InUse(LibraryRole::Bill).codeLength;
    suffixLength = InUse(LibraryRole::Bill).suffixLength;
}

bool LibrariesInUse::GetQdInfoByQdNum(const CString& number, CArray<SQdInfo>& items)
{
    try {
        CArray<SQdInfo> found = m_project.History(number, GetQdCode());
        Merge(found, m_ruleNumbers.Find(number, GetQdCode()));
        Merge(found, m_proposed.Find(GetQdCode(), number));
        if (m_numbers != nullptr) Claim(number, found);
        m_proposed.Ask(GetQdCode(), number, found);
        items = std::move(found);
        return true;
    } catch (const Error&) {
        return false;
    }
}

} // namespace embedded
