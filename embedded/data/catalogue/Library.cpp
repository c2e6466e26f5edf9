#include "embedded/data/catalogue/Library.h"

#include "embedded/data/engine/Error.h"

#include <algorithm>
#include <iterator>

namespace embedded {

using namespace Qt::StringLiterals;

namespace {

struct Role
{
    LibraryRole role;
    QStringView word;
    QStringView label;
};

constexpr Role Roles[] = {{LibraryRole::Bill, u"qd", u"清单库"},
                          {LibraryRole::QuotaOfBills, u"qd_de", u"清单模式的定额库"},
                          {LibraryRole::Quota, u"de", u"定额模式的定额库"}};

const Role& EntryOf(LibraryRole role)
{
    return *std::find_if(std::begin(Roles), std::end(Roles),
                         [&](const Role& candidate) { return candidate.role == role; });
}

} // namespace

CString RoleWord(LibraryRole role)
{
    return EntryOf(role).word.toString();
}

std::optional<LibraryRole> RoleOfWord(const CString& word)
{
    const auto found = std::find_if(std::begin(Roles), std::end(Roles),
                                    [&](const Role& candidate) { return candidate.word == word; });
    if (found == std::end(Roles)) return std::nullopt;
    return found->role;
}

LibraryRole QuotaRole(SQdDeInfo::EQdDeMode mode)
{
    return mode == SQdDeInfo::BillMode ? LibraryRole::QuotaOfBills : LibraryRole::Quota;
}

CString RoleLabel(LibraryRole role)
{
    return EntryOf(role).label.toString();
}

const Library* FindLibrary(const CArray<Library>& libraries, LibraryRole role, const CString& code)
{
    const auto found = std::find_if(libraries.begin(), libraries.end(), [&](const Library& library) {
        return library.role == role && (code.isEmpty() || library.name.code == code);
    });
    return found == libraries.end() ? nullptr : &*found;
}

const Library& RequireLibrary(const CArray<Library>& libraries, LibraryRole role, const CString& code)
{
    if (const Library* const library = FindLibrary(libraries, role, code)) return *library;
    RefuseLibrary(code, RoleLabel(role), NamesOf(libraries, role));
}

void RefuseLibrary(const CString& code, const CString& label, const CArray<LibraryName>& known)
{
    CStringArray codes;
    for (const LibraryName& name : known)
        codes.append(name.code);
    throw Error(u"没有代码为“%1”的%2，可用的有：%3"_s.arg(code, label, codes.join(u"、"_s)));
}

const Library& RequireStoredLibrary(const CArray<Library>& libraries, LibraryRole role, const CString& code)
{
    if (const Library* const library = FindLibrary(libraries, role, code)) return *library;
    throw Error(u"工程的数据中没有它使用的%1“%2”。用 ktqdde library use 改用另一个库，"
                "或用 ktqdde import libraries 把它加回来（它的项目要另外导入）"_s.arg(RoleLabel(role), code));
}

CArray<LibraryName> NamesOf(const CArray<Library>& libraries, LibraryRole role)
{
    CArray<LibraryName> names;
    for (const Library& library : libraries) {
        if (library.role == role) names.append(library.name);
    }
    return names;
}

CString QuotaLibraryBeside(const CArray<LibraryName>& quotaLibraries, const CString& billLibrary)
{
    for (const LibraryName& library : quotaLibraries) {
        if (library.billLibrary == billLibrary) return library.code;
    }
    return quotaLibraries.value(0).code;
}

CString ItemsOfGuide(const CArray<Library>& libraries, const Library& quotaLibrary)
{
    const CString& code = quotaLibrary.name.billLibrary;
    if (code.isEmpty()) return {};
    const Library* const bill = FindLibrary(libraries, LibraryRole::Bill, code);
    return bill == nullptr ? CString() : bill->items;
}

} // namespace embedded
