#include "embedded/ImportGround.h"
#include "embedded/OfficeDatabase.h"
#include "embedded/data/office/Office.h"

namespace test {

namespace {

/// The projects are those of an office, opened by a keeper.
class OfficeGround final : public ImportGround
{
public:
    OfficeGround() { embedded::Office::Create(OfficeDatabase::Administrator()); }
    embedded::ProjectOptions Options() const override
    {
        embedded::ProjectOptions options;
        options.office = OfficeDatabase::Administrator();
        return options;
    }
    void Sql(const TestProject& /*project*/, const CString& statement) const override
    {
        embedded::Office(OfficeDatabase::Administrator()).Connection().Execute(statement);
    }

private:
    OfficeDatabase m_database;
};

} // namespace

std::unique_ptr<ImportGround> MakeImportGround()
{
    return std::make_unique<OfficeGround>();
}

} // namespace test
