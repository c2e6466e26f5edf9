#include "embedded/TestProject.h"

#include "embedded/NewProject.h"
#include "embedded/data/engine/Database.h"

namespace test {

using namespace Qt::StringLiterals;

CString TestProject::Name()
{
    return u"示例 工程 一"_s;
}

CString TestProject::Below(const CString& file)
{
    return Name() + u'\\' + file;
}

void TestProject::Create(const embedded::ProjectOptions& options) const
{
    embedded::CreateProject(Folder(), options);
}

void TestProject::Put(const embedded::ProjectOptions& options) const
{
    PutNewProject(Folder(), options);
}

void TestProject::Sql(const CString& databaseFile, const CString& statement) const
{
    embedded::Database database(Path(databaseFile));
    database.Execute(statement);
}

} // namespace test
