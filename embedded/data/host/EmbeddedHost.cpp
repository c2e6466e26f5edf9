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
#include "embedded/data/project/LibrariesInUse.h"
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

/// What a project opens, and what does not stand on its catalogue.
struct EmbeddedHost::Ground
{
    explicit Ground(const ProjectFolder& place)
        : folder(place), database(ExistingProjectFile(place)), settings(database.ReadSettings()),
          catalogue(folder, settings), profile(folder.AppFolder()), history(folder)
    {
    }

    ProjectFolder folder;
    ProjectDatabase database;
    ProjectDatabase::Settings settings; ///< those of the moment of opening
    ProjectCatalogue catalogue;         ///< what is read
    Profile profile;
    XmlTools xml;
    embedded::History history;
};

/// What is read from the catalogue, and what stands on it.
struct EmbeddedHost::Holdings
{
    explicit Holdings(Ground& below)
        : data(ReadCatalogue(below.catalogue.Local())),
          numbers(NumbersOf(below.catalogue.Office(), below.folder)),
          libraries(below.catalogue.Local(), below.database, below.settings, below.folder.RuleFolder(),
                    numbers.get()),
          catalogue(data, libraries.Contents()), attributes(data, catalogue),
          project(below.folder.ProjectFile(), below.settings, catalogue), calculation(data, catalogue)
    {
    }

    CatalogueData data;
    std::unique_ptr<NumberRegister> numbers;
    LibrariesInUse libraries;
    Catalogue catalogue;
    Attributes attributes;
    Project project;
    CalculationRules calculation;
};

// The copy of an office's catalogue is read while the office is asked whether it is up to date, which it
// mostly is. One that is missing or damaged shows when it is read; the office may mend it.
EmbeddedHost::EmbeddedHost(const QString& nativeFolder)
    : m_ground(std::make_unique<Ground>(ProjectFolder(nativeFolder)))
{
    try {
        m_holdings = std::make_unique<Holdings>(*m_ground);
    } catch (const Error&) {
        if (!m_ground->catalogue.BringUpToDate()) throw;
        m_holdings = std::make_unique<Holdings>(*m_ground);
        return;
    }
    if (!m_ground->catalogue.BringUpToDate()) return;
    m_holdings.reset();
    m_holdings = std::make_unique<Holdings>(*m_ground);
}

EmbeddedHost::~EmbeddedHost() = default;

host::Roles EmbeddedHost::Roles()
{
    host::Roles roles;
    roles.categories = &m_holdings->catalogue;
    roles.attributes = &m_holdings->attributes;
    roles.libraries = &m_holdings->libraries;
    roles.project = &m_holdings->project;
    roles.profile = &m_ground->profile;
    roles.calculation = &m_holdings->calculation;
    roles.xml = &m_ground->xml;
    return roles;
}

CString EmbeddedHost::AppFolder() const
{
    return m_ground->profile.GetAppFolder();
}

CString EmbeddedHost::RuleFolder() const
{
    return m_ground->folder.RuleFolder();
}

CString EmbeddedHost::ProjectPath() const
{
    return m_holdings->project.GetPrjPath();
}

const LibraryContents& EmbeddedHost::Contents() const
{
    return m_holdings->libraries.Contents();
}

const CatalogueData& EmbeddedHost::CatalogueContents() const
{
    return m_holdings->data;
}

CArray<LibraryName> EmbeddedHost::LibrariesOf(LibraryRole role) const
{
    return m_holdings->libraries.Of(role);
}

QSet<CString> EmbeddedHost::BillNumbersOf(const CString& library) const
{
    return m_holdings->libraries.BillNumbersOf(library);
}

CString EmbeddedHost::LibraryInUse(LibraryRole role) const
{
    return m_holdings->libraries.InUse(role).name.code;
}

void EmbeddedHost::SetLibrary(LibraryRole role, const CString& code)
{
    m_holdings->libraries.SetLibrary(role, code);
    TellOffice();
}

void EmbeddedHost::ForgetProposedNumbers()
{
    m_holdings->libraries.ForgetProposedNumbers();
}

ProjectOffice* EmbeddedHost::Office()
{
    return m_ground->catalogue.Office();
}

History& EmbeddedHost::History()
{
    return m_ground->history;
}

void EmbeddedHost::UseSpec(const CString& name)
{
    m_holdings->project.UseSpec(name);
}

void EmbeddedHost::SetCurrentSpec(const CString& name)
{
    const CString former = m_holdings->project.GetCurrentSpec();
    m_holdings->project.UseSpec(name);
    try {
        m_ground->database.WriteSpec(name);
    } catch (const Error&) {
        m_holdings->project.UseSpec(former);
        throw;
    }
    TellOffice();
}

/// What of the catalogue nobody may take away from now on.
void EmbeddedHost::TellOffice()
{
    if (Office() == nullptr) return;
    std::map<LibraryRole, CString> libraries;
    for (const LibraryRole role : AllLibraryRoles)
        libraries.emplace(role, LibraryInUse(role));
    Office()->TellUse(m_holdings->project.GetCurrentSpec(), libraries);
}

void EmbeddedHost::SetMode(SQdDeInfo::EQdDeMode mode)
{
    m_holdings->libraries.SetMode(mode);
    m_holdings->project.UseMode(mode);
}

} // namespace embedded
