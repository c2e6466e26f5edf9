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
    const CStringArray key{u"project"_s, CString::number(options.mode), options.spec, options.billLibrary,
                           options.quotaLibrary};
    PutMadeOnce(nativeFolder, key.join(u'\n'), create);
}

} // namespace test
