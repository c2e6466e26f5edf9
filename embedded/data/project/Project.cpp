#include "embedded/data/project/Project.h"

#include "embedded/data/engine/Error.h"
#include "platform/Paths.h"

#include <utility>

namespace embedded {

using namespace Qt::StringLiterals;

Project::Project(CString path, const ProjectDatabase::Settings& settings, host::ICategories& categories)
    : m_path(std::move(path)), m_categories(categories), m_mode(settings.mode)
{
    UseSpec(settings.spec);
}

CString Project::GetPrjPath()
{
    return m_path;
}

CString Project::GetCurrentSpec()
{
    return m_spec;
}

SNvKtSpecId Project::GetCurrentSpecId()
{
    return m_specId;
}

SQdDeInfo::EQdDeMode Project::GetQdDeMode()
{
    return m_mode;
}

void Project::UseSpec(const CString& name)
{
    SNvKtSpecId id;
    if (!m_categories.SpecNameToId(name, id))
        throw Error(u"%1：没有名为“%2”的专业"_s.arg(platform::ToNative(m_path), name));
    m_spec = name;
    m_specId = id;
}

void Project::UseMode(SQdDeInfo::EQdDeMode mode)
{
    m_mode = mode;
}

} // namespace embedded
