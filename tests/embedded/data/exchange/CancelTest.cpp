#include "embedded/TestProject.h"
#include "embedded/data/engine/Progress.h"
#include "embedded/data/exchange/TableImport.h"
#include "embedded/data/host/CreateProject.h"
#include "embedded/data/project/ProjectFolder.h"

#include <QtCore/QDirIterator>
#include <QtCore/QFile>

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

using namespace Qt::StringLiterals;
using embedded::Cancelled;
using embedded::CreateProject;
using embedded::TableKind;
using test::TestProject;

namespace {

using Work = std::function<void(const embedded::Progress&)>;

/// Whatever stands in a folder and below it, with its bytes.
std::map<QString, QByteArray> Everything(const test::TempFolder& folder)
{
    std::map<QString, QByteArray> files;
    QDirIterator walk(folder.Native(u"."_s), QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                      QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        QFile file(walk.next());
        files[file.fileName()] = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    return files;
}

/// Cancels work when it calls back for the first time, then for the second and so on, until it passes. Gives
/// what it told that time.
QList<int> CancelEverywhere(const test::TempFolder& folder, const Work& work)
{
    const auto before = Everything(folder);
    for (int limit = 0;; ++limit) {
        QList<int> told;
        const auto tell = [&](int percent) {
            told.append(percent);
            return told.size() <= limit;
        };
        try {
            work(tell);
            return told;
        } catch (const Cancelled&) {
            EXPECT_TRUE(Everything(folder) == before) << "call " << limit;
        }
    }
}

} // namespace

TEST(CancelledCreation, LeavesNothingBehindAndCanBeRepeated)
{
    const TestProject project;
    const QList<int> told = CancelEverywhere(project.Temp(), [&](const embedded::Progress& progress) {
        CreateProject(project.Folder(), {}, progress);
    });
    EXPECT_GE(told.size(), 15) << "one for each table";
    EXPECT_TRUE(std::is_sorted(told.begin(), told.end()));
    EXPECT_GT(told.last(), 80) << "when all tables are filled";
    EXPECT_NO_THROW(embedded::EmbeddedHost(project.Folder()));
}

TEST(CancelledCreation, LeavesWhatStoodInTheFolder)
{
    const TestProject project;
    project.Temp().MakeFolder(TestProject::Below(u"app"_s));
    project.Temp().WriteFile(TestProject::Below(u"app\\QdDeConfig.def"_s), "mine");
    project.Temp().WriteFile(TestProject::Below(u"SysRegedit.ini"_s), "[Other]\n");
    project.Temp().WriteFile(TestProject::Below(u"notes.txt"_s), "mine, too");
    CancelEverywhere(project.Temp(), [&](const embedded::Progress& progress) {
        CreateProject(project.Folder(), {}, progress);
    });
    EXPECT_TRUE(embedded::IsProject(project.Folder()));
}

TEST(CancelledCreation, LeavesAProjectThatAnotherProgramHasMadeMeanwhile)
{
    const TestProject project;
    const auto cancel = [&](int) {
        project.Create();
        return false;
    };
    EXPECT_THROW(CreateProject(project.Folder(), {}, cancel), Cancelled);
    EXPECT_NO_THROW(embedded::EmbeddedHost(project.Folder()));
}

TEST(CancelledExport, LeavesTheOldFile)
{
    const TestProject project;
    project.Put();
    project.Temp().WriteFile(u"out.csv"_s, "old");
    const QList<int> told = CancelEverywhere(project.Temp(), [&](const embedded::Progress& progress) {
        embedded::Export(project.Folder(), TableKind::Bill, project.Temp().Native(u"out.csv"_s), {},
                         progress);
    });
    EXPECT_GE(told.size(), 3);
    EXPECT_TRUE(std::is_sorted(told.begin(), told.end()));
    EXPECT_NE(project.Temp().ReadFile(u"out.csv"_s), "old");
}
