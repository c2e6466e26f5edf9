#include "embedded/data/engine/Schema.h"

#include "embedded/data/engine/Error.h"

namespace embedded {

using namespace Qt::StringLiterals;

namespace {

/// Another program may have been faster while this one waited for the lock.
void BringTo(Database& database, int version, const std::function<void()>& create,
             const std::function<void()>& upgrade)
{
    Transaction transaction(database);
    const int found = database.SchemaVersion();
    const bool isNew = found == 0 && database.IsEmpty();
    if (!isNew && (found == 0 || found >= version)) return;
    isNew ? create() : upgrade();
    database.SetSchemaVersion(version);
    transaction.Commit();
}

} // namespace

void EnsureSchema(Database& database, int version, const std::function<void()>& create,
                  const std::function<void()>& upgrade)
{
    const int found = database.SchemaVersion();
    if (found < version) {
        try {
            BringTo(database, version, create, upgrade);
        } catch (const ReadOnlyError&) {
            if (found == 0) throw;
            throw ReadOnlyError(database.Name() +
                                u"：由旧版程序建立，第一次打开时要改写，但文件或文件夹只读"_s);
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
