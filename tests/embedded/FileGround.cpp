#include "embedded/ImportGround.h"

namespace test {

namespace {

/// Each project has a catalogue of its own.
class FileGround final : public ImportGround
{
public:
    embedded::ProjectOptions Options() const override { return {}; }
    void Sql(const TestProject& project, const CString& statement) const override
    {
        project.Sql(QStringLiteral("app\\catalogue.db"), statement);
    }
};

} // namespace

std::unique_ptr<ImportGround> MakeImportGround()
{
    return std::make_unique<FileGround>();
}

} // namespace test
