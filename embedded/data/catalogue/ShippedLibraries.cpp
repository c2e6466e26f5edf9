#include "embedded/data/catalogue/ShippedLibraries.h"

#include "embedded/data/engine/DataFile.h"

namespace embedded {

using namespace Qt::StringLiterals;

CArray<Library> AllShippedLibraries()
{
    const DataFile file = DataFile::Shipped(u"libraries"_s);
    const CStringArray roles = file.Column(u"role"_s);
    const CStringArray codes = file.Column(u"code"_s);
    const CStringArray names = file.Column(u"file_name"_s);
    const CStringArray locals = file.Column(u"local"_s);
    const CStringArray years = file.Column(u"year"_s);
    const CStringArray bills = file.Column(u"bill_library"_s);
    CArray<Library> libraries;
    for (qsizetype row = 0; row < codes.size(); ++row) {
        Library library;
        library.role = RoleOfWord(roles[row]).value();
        library.name = {codes[row], names[row], locals[row], years[row], bills[row]};
        libraries.append(library);
    }
    return libraries;
}

CArray<LibraryName> ShippedLibraries(LibraryRole role)
{
    return NamesOf(AllShippedLibraries(), role);
}

} // namespace embedded
