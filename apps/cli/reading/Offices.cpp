#include "cli/reading/Offices.h"

#include "cli/reading/Failure.h"
#include "embedded/data/engine/Service.h"
#include "embedded/data/host/EmbeddedHost.h"
#include "embedded/data/office/ProjectOffice.h"
#include "platform/Console.h"

namespace cli {

CString OfficeNamed(const CString& text)
{
    const CString fault = embedded::Service::NameFault(text);
    if (!fault.isEmpty()) throw UsageError(fault);
    return text;
}

void TellIfWithoutOffice(embedded::EmbeddedHost& host)
{
    embedded::ProjectOffice* const office = host.Office();
    if (office != nullptr && office->Reached() == nullptr) platform::WriteErr(office->InWords() + u'\n');
}

} // namespace cli
