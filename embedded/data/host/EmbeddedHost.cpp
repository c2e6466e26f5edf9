#include "embedded/data/host/EmbeddedHost.h"

#include "embedded/data/catalogue/Attributes.h"
#include "embedded/data/catalogue/CalculationRules.h"
#include "embedded/data/catalogue/Catalogue.h"
#include "embedded/data/catalogue/CatalogueDatabase.h"
#include "embedded/data/engine/Error.h"
#include "embedded/data/host/Profile.h"
#include "embedded/data/host/XmlTools.h"
#include "embedded/data/office/OfficeNumbers.h"
#include "embedded/data/office/ProjectCatalogue.h"
#include "embedded/data/project/Libraries.h"
#include "embedded/data/project/Project.h"
#include "embedded/data/project/ProjectFolder.h"

namespace embedded {

namespace {

/// The project file of a folder. Opening a missing database would create it, so the file must be there.
CString ExistingProjectFile(const ProjectFolder& folder)
{
    folder.RequireProject();
    return folder.ProjectFile();
}

/// The bill numbers that a project shares with others of its office; null without an office.
std::unique_ptr<NumberRegister> NumbersOf(ProjectOffice* office, const ProjectFolder& folder)
{
    if (office == nullptr) return nullptr;
    return std::make_unique<OfficeNumbers>(*office, CurrentConfiguration(folder.ProjectFile()));
}

} // namespace

struct EmbeddedHost::Parts
{
    explicit Parts(const ProjectFolder& place)
        : folder(place), database(ExistingProjectFile(place)), settings(database.ReadSettings()),
          ground(folder, settings.office), data(ReadCatalogue(ground.Local())),
          numbers(NumbersOf(ground.Office(), folder)),
          libraries(ground.Local(), database, settings, folder.RuleFolder(), numbers.get()),
          catalogue(data, libraries.Contents()), attributes(data, catalogue),
          project(folder.ProjectFile(), settings, catalogue), profile(folder.AppFolder()),
          calculation(data, catalogue), history(folder)
    {
    }

    ProjectFolder folder;
    ProjectDatabase database;
    ProjectDatabase::Settings settings; ///< those of the moment of opening
    ProjectCatalogue ground;            ///< what the catalogue is read from
    CatalogueData data;
    std::unique_ptr<NumberRegister> numbers;
    Libraries libraries;
    Catalogue catalogue;
    Attributes attributes;
    Project project;
    Profile profile;
    CalculationRules calculation;
    XmlTools xml;
    embedded::History history;
};

EmbeddedHost::EmbeddedHost(const QString& nativeFolder)
    : m_parts(std::make_unique<Parts>(ProjectFolder(nativeFolder)))
{
}

EmbeddedHost::~EmbeddedHost() = default;

host::Roles EmbeddedHost::Roles()
{
    host::Roles roles;
    roles.categories = &m_parts->catalogue;
    roles.attributes = &m_parts->attributes;
    roles.libraries = &m_parts->libraries;
    roles.project = &m_parts->project;
    roles.profile = &m_parts->profile;
    roles.calculation = &m_parts->calculation;
    roles.xml = &m_parts->xml;
    return roles;
}

CString EmbeddedHost::AppFolder() const
{
    return m_parts->profile.GetAppFolder();
}

CString EmbeddedHost::RuleFolder() const
{
    return m_parts->folder.RuleFolder();
}

CString EmbeddedHost::ProjectPath() const
{
    return m_parts->project.GetPrjPath();
}

const LibraryContents& EmbeddedHost::Contents() const
{
    return m_parts->libraries.Contents();
}

const CatalogueData& EmbeddedHost::CatalogueContents() const
{
    return m_parts->data;
}

CArray<LibraryName> EmbeddedHost::LibrariesOf(LibraryRole role) const
{
    return m_parts->libraries.Of(role);
}

CString EmbeddedHost::LibraryInUse(LibraryRole role) const
{
    return m_parts->libraries.InUse(role).name.code;
}

void EmbeddedHost::SetLibrary(LibraryRole role, const CString& code)
{
    m_parts->libraries.SetLibrary(role, code);
}

void EmbeddedHost::ForgetProposedNumbers()
{
    m_parts->libraries.ForgetProposedNumbers();
}

ProjectOffice* EmbeddedHost::Office()
{
    return m_parts->ground.Office();
}

History& EmbeddedHost::History()
{
    return m_parts->history;
}

void EmbeddedHost::UseSpec(const CString& name)
{
    m_parts->project.UseSpec(name);
}

void EmbeddedHost::SetCurrentSpec(const CString& name)
{
    const CString former = m_parts->project.GetCurrentSpec();
    m_parts->project.UseSpec(name);
    try {
        m_parts->database.WriteSpec(name);
    } catch (const Error&) {
        m_parts->project.UseSpec(former);
        throw;
    }
}

void EmbeddedHost::SetMode(SQdDeInfo::EQdDeMode mode)
{
    m_parts->libraries.SetMode(mode);
    m_parts->project.UseMode(mode);
}

} // namespace embedded
