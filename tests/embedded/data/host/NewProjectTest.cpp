#include "embedded/NewProject.h"

#include "embedded/TestProject.h"

#include <QtCore/QDirIterator>

#include <gtest/gtest.h>

#include <map>

using namespace Qt::StringLiterals;
using test::TestProject;

namespace {

/// What the files below a project's folder hold, by their paths in it.
std::map<QString, QByteArray> FilesOf(const TestProject& project)
{
    std::map<QString, QByteArray> files;
    const QDir folder(project.Folder());
    QDirIterator each(folder.path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (each.hasNext()) {
        const QString name = folder.relativeFilePath(each.next()).replace(u'/', u'\\');
        files.emplace(name, project.Temp().ReadFile(TestProject::Below(name)));
    }
    return files;
}

} // namespace

TEST(ProjectToBeginWith, IsWhatCreationMakesWhateverBecameOfTheOneBefore)
{
    const embedded::ProjectOptions options{SQdDeInfo::QuotaMode, u"暖通"_s};
    const TestProject created;
    created.Create(options);
    const TestProject first;
    first.Put(options);
    EXPECT_EQ(FilesOf(first), FilesOf(created));
    first.Sql(u"app\\catalogue.db"_s, u"DELETE FROM bill_items"_s);
    first.Sql(u"project.ktqd"_s, u"DELETE FROM settings"_s);
    const TestProject second;
    second.Put(options);
    EXPECT_EQ(FilesOf(second), FilesOf(created));
    const TestProject other;
    other.Put({SQdDeInfo::BillMode, u"电气"_s});
    EXPECT_NE(FilesOf(other), FilesOf(created));
}
