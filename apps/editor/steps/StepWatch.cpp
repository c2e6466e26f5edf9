#include "editor/steps/StepWatch.h"

#include <utility>

namespace editor {

/// The file system in force, with a piece of work at each reading and each change.
class StepWatch::Files : public platform::FileSystemProxy
{
public:
    Files(Piece piece, CString draft)
        : FileSystemProxy(platform::Files()), m_piece(std::move(piece)), m_draft(std::move(draft))
    {
    }

    void BeginPiece() const { m_piece(m_mayStop); }

    std::optional<QByteArray> Read(const CString& path, CString* reason) override
    {
        BeginPiece();
        return Target().Read(path, reason);
    }
    std::unique_ptr<platform::OutputFile> OpenForWriting(const CString& path) override
    {
        BeginChange(path);
        return Target().OpenForWriting(path);
    }
    bool Remove(const CString& path) override
    {
        BeginChange(path);
        return Target().Remove(path);
    }
    bool CreateFolder(const CString& path) override
    {
        BeginChange(path);
        return Target().CreateFolder(path);
    }
    bool Rename(const CString& from, const CString& to) override
    {
        BeginChange(from);
        return Target().Rename(from, to);
    }

private:
    /// The last moment to stop is right before the first change.
    void BeginChange(const CString& path)
    {
        BeginPiece();
        if (path != m_draft) m_mayStop = false;
    }

    Piece m_piece;
    CString m_draft;
    bool m_mayStop = true;
};

/// The host's categories, with a piece of work at each name of a small one: whoever goes through them asks
/// for each name once.
class StepWatch::Categories : public host::ICategories
{
public:
    Categories(host::ICategories& target, const Files& files) : m_target(target), m_files(files) {}

    bool SpecNameToId(const CString& name, SNvKtSpecId& id) override
    {
        return m_target.SpecNameToId(name, id);
    }
    bool BigCategoryNameToId(const CString& fullName, SNvKtBigCategoryId& id) override
    {
        return m_target.BigCategoryNameToId(fullName, id);
    }
    bool SmallCategoryNameToId(const CString& fullName, SNvKtSmallCategoryId& id) override
    {
        return m_target.SmallCategoryNameToId(fullName, id);
    }
    bool GetAllSpecNames(CStringArray& names) override { return m_target.GetAllSpecNames(names); }
    bool GetAllBigCategoryIdsBySpec(const SNvKtSpecId& spec, CArray<SNvKtBigCategoryId>& ids) override
    {
        return m_target.GetAllBigCategoryIdsBySpec(spec, ids);
    }
    bool GetAllSmallCategoryIdsByBigCategory(const SNvKtBigCategoryId& big,
                                             CArray<SNvKtSmallCategoryId>& ids) override
    {
        return m_target.GetAllSmallCategoryIdsByBigCategory(big, ids);
    }
    bool GetBigCategoryName(const SNvKtBigCategoryId& id, CString& name) override
    {
        return m_target.GetBigCategoryName(id, name);
    }
    bool GetSmallCategoryName(const SNvKtSmallCategoryId& id, CString& name) override
    {
        m_files.BeginPiece();
        return m_target.GetSmallCategoryName(id, name);
    }
    CString GetIndexPath(const CString& treePath) override { return m_target.GetIndexPath(treePath); }

private:
    host::ICategories& m_target;
    const Files& m_files;
};

namespace {

host::Roles WithCategories(host::Roles roles, host::ICategories& categories)
{
    roles.categories = &categories;
    return roles;
}

} // namespace

StepWatch::StepWatch(const host::Roles& roles, Piece piece, const CString& draft)
    : m_files(std::make_unique<Files>(std::move(piece), draft)),
      m_categories(std::make_unique<Categories>(*roles.categories, *m_files)), m_fileSystem(*m_files),
      m_host(host::Install(WithCategories(roles, *m_categories)))
{
}

StepWatch::~StepWatch() = default;

} // namespace editor
