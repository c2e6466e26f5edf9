#pragma once

#include "embedded/data/project/ProjectFolder.h"

#include <memory>
#include <optional>

class QLockFile;

namespace editor {

/// Says for as long as it lives that this program has a project open, so that others can warn. Nothing is
/// kept from anybody: any number of programs may have a project open, and each has a mark of its own, a small
/// file in "history\locks" of the project. It is gone with this object; that of a program that has died is
/// taken away by whoever comes across it. Where nothing can be written there is no mark.
class OpenMark
{
public:
    explicit OpenMark(const embedded::ProjectFolder& project);
    ~OpenMark();
    OpenMark(const OpenMark&) = delete;
    OpenMark& operator=(const OpenMark&) = delete;

private:
    std::unique_ptr<QLockFile> m_mark; ///< null where none could be made
};

/// The folder in which the marks of a project lie, native. It may be missing.
QString MarkFolderOf(const embedded::ProjectFolder& project);

/// Which other processes have the project open: program, process, machine and since when, several joined by
/// "、". Nothing when there is none. The marks of this process do not count, and neither do those of other
/// machines that are so old that nobody can have the project open for as long.
std::optional<CString> OtherProgramWithProject(const embedded::ProjectFolder& project);

/// Whether a mark of the project does not say whose it is, because its program is just making it, or died
/// while it did. Such a one is no other program's to `OtherProgramWithProject`.
bool HasUnsignedMark(const embedded::ProjectFolder& project);

} // namespace editor
