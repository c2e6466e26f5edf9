#include "embedded/data/project/ProjectChoice.h"

#include "embedded/data/catalogue/CatalogueDatabase.h"
#include "embedded/data/catalogue/LibraryDatabase.h"
#include "embedded/data/catalogue/ShippedLibraries.h"
#include "embedded/data/engine/DataFile.h"

namespace embedded {

using namespace Qt::StringLiterals;

ProjectChoice ShippedChoice()
{
    return {AllShippedLibraries(), DataFile::Shipped(u"specialties"_s).Column(u"name"_s)};
}

ProjectChoice ReadChoice(Database& catalogue)
{
    ProjectChoice choice{ReadLibraries(catalogue), {}};
    for (const Specialty& specialty : ReadCatalogue(catalogue).specialties)
        choice.specs.append(specialty.name);
    return choice;
}

} // namespace embedded
