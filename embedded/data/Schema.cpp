#include "embedded/data/Schema.h"

namespace embedded {

using namespace Qt::StringLiterals;

void EnsureSchema(Database& database, int version, const std::function<void()>& create,
                  const std::function<void()>& upgrade)
{
    if (database.SchemaVersion() < version) {
        Transaction transaction(database);
        // Another program may have been faster while this one waited for the lock.
        const int found = database.SchemaVersion();
        const bool isNew = found == 0 && database.IsEmpty();
        if (isNew || (found > 0 && found < version)) {
            isNew ? create() : upgrade();
            database.SetSchemaVersion(version);
            transaction.Commit();
        }
    }
    RequireSchema(database, version);
}

void RequireSchema(Database& database, int version)
{
    const int found = database.SchemaVersion();
    if (found > version) {
        database.Fail(
            u"数据库由更新版本的程序建立（结构版本 %1，本程序只识别到 %2）"_s.arg(found).arg(version));
    }
    if (found != version) database.Fail(u"不是本程序的数据库"_s);
}

} // namespace embedded
