#include "embedded/NewProject.h"

#include "support/MadeOnce.h"

using namespace Qt::StringLiterals;

namespace test {

void PutNewProject(const QString& nativeFolder, const embedded::ProjectOptions& options)
{
    const auto create = [&options](const QString& folder) { embedded::CreateProject(folder, options); };
    if (!options.office.isEmpty()) {
        create(nativeFolder);
        return;
    }
    // By names, so that a field which is added to the options has to be thought of here.
    const auto& [mode, spec, billLibrary, quotaLibrary, office] = options;
    const CStringArray key{u"project"_s, CString::number(mode), spec, billLibrary, quotaLibrary, office};
    PutMadeOnce(nativeFolder, key.join(u'\n'), create);
}

} // namespace test
