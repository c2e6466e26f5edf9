#pragma once

#include "host/Installation.h"
#include "platform/Files.h"

#include <functional>
#include <memory>

namespace editor {

/// Watches a step of the module, which works on the window's thread to its end and knows nothing of progress.
/// While this lives, the module reaches categories and files through here, and `piece` is called before each
/// piece of work: one small category, or one file that is read or changed. What `piece` raises travels up
/// through the module to whoever called it.
class StepWatch
{
public:
    /// `mayStop` says whether the step can still be left without a trace: it becomes false, for good, when
    /// something on the disk has been changed.
    using Piece = std::function<void(bool mayStop)>;

    /// `roles` are those in force; `draft` is the path text of a file that is the step's own, whose changes
    /// leave no trace since whoever runs the step removes it.
    StepWatch(const host::Roles& roles, Piece piece, const CString& draft = {});
    ~StepWatch();
    StepWatch(const StepWatch&) = delete;
    StepWatch& operator=(const StepWatch&) = delete;

private:
    class Categories;
    class Files;

    std::unique_ptr<Files> m_files;
    std::unique_ptr<Categories> m_categories;
    platform::ScopedFileSystem m_fileSystem;
    host::Installation m_host;
};

} // namespace editor
