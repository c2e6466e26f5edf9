#include "cli/reading/Offices.h"

#include "cli/reading/Failure.h"
#include "embedded/data/engine/Service.h"
#include "embedded/data/host/EmbeddedHost.h"
#include "embedded/data/office/ProjectCatalogue.h"
#include "embedded/data/project/ProjectDatabase.h"
#include "platform/Console.h"

namespace cli {

CString OfficeNamed(const CString& text)
{
    const CString fault = embedded::Service::NameFault(text);
    if (!fault.isEmpty()) throw UsageError(fault);
    return text;
}

namespace {

void TellUnlessReached(embedded::ProjectOffice& office)
{
    if (!office.IsReached() || office.IsBehind()) platform::WriteErr(office.InWords() + u'\n');
}

} // namespace

void TellIfWithoutOffice(embedded::EmbeddedHost& host)
{
    if (embedded::ProjectOffice* const office = host.Office()) TellUnlessReached(*office);
}

void TellIfWithoutOffice(const QString& nativeProject)
{
    const embedded::ProjectFolder folder(nativeProject);
    folder.RequireProject();
    const auto settings = embedded::ProjectDatabase(folder.ProjectFile()).ReadSettings();
    if (settings.office.isEmpty()) return;
    embedded::ProjectCatalogue catalogue(folder, settings);
    catalogue.BringUpToDate();
    TellUnlessReached(*catalogue.Office());
}

} // namespace cli
