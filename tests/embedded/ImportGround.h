#pragma once

#include "embedded/TestProject.h"

#include <memory>

namespace test {

/// What the projects of the import tests stand on. The same tests are part of several programs, each with a
/// ground of its own.
class ImportGround
{
public:
    virtual ~ImportGround() = default;
    virtual embedded::ProjectOptions Options() const = 0;
    /// Runs one statement on the catalogue into which imports go.
    virtual void Sql(const TestProject& project, const CString& statement) const = 0;
};

/// The ground of this program, made anew for each test.
std::unique_ptr<ImportGround> MakeImportGround();

} // namespace test
