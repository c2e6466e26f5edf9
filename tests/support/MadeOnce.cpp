#include "support/MadeOnce.h"

#include "support/TempFolder.h"

#include <QtCore/QDir>

#include <filesystem>
#include <map>
#include <memory>

using namespace Qt::StringLiterals;

namespace test {

namespace {

const CString MadeFolder = u"made"_s;

/// What was made, by its key.
std::map<QString, std::unique_ptr<TempFolder>>& Made()
{
    static std::map<QString, std::unique_ptr<TempFolder>> made;
    return made;
}

} // namespace

void PutMadeOnce(const QString& nativeFolder, const QString& key,
                 const std::function<void(const QString&)>& make)
{
    std::unique_ptr<TempFolder>& kept = Made()[key];
    if (kept == nullptr) {
        auto folder = std::make_unique<TempFolder>();
        make(folder->Native(MadeFolder));
        kept = std::move(folder);
    }
    std::filesystem::copy(QDir(kept->Native(MadeFolder)).filesystemPath(),
                          QDir(nativeFolder).filesystemPath(), std::filesystem::copy_options::recursive);
}

} // namespace test
