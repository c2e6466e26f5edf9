#include "docs/Documents.h"
#include "docs/Shell.h"

#include <gtest/gtest.h>

#include <cctype>

using namespace Qt::StringLiterals;

namespace {

/// The project that the documents work on.
const QString SampleName = u"示例工程"_s;

/// Documents on offices have a test of their own, since their commands need a server.
bool IsOnOffices(const QString& path)
{
    return path.endsWith(u"/office.md"_s);
}

QStringList PathsWithCommands()
{
    QStringList paths;
    for (const QString& path : test::DocumentPaths())
        if (!IsOnOffices(path) && !test::Document(path).Commands().isEmpty()) paths.append(path);
    return paths;
}

std::string NameOf(const testing::TestParamInfo<QString>& info)
{
    std::string name = info.param.toStdString();
    for (char& c : name)
        if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
    return name;
}

/// Puts what the document takes for granted into the folder: the files that it shows, and the sample project
/// unless it makes that itself.
void Prepare(const test::Document& document, const test::Shell& shell)
{
    for (const test::ShownFile& file : document.Files())
        shell.Folder().WriteFile(file.name, file.content);
    const bool makesProject = document.Text().contains(u"ktqdde init "_s + SampleName);
    if (makesProject || !document.Text().contains(SampleName)) return;
    ASSERT_EQ(shell.Run({u"ktqdde"_s, u"demo"_s, SampleName}).toStdString(), "");
}

} // namespace

class DocumentCommands : public testing::TestWithParam<QString>
{
};

TEST_P(DocumentCommands, SucceedOneBehindTheOtherInOneFolder)
{
    const test::Document document(GetParam());
    const test::Shell shell;
    ASSERT_NO_FATAL_FAILURE(Prepare(document, shell));
    for (const test::ShownCommand& command : document.Commands())
        ASSERT_EQ(shell.Run(command.words).toStdString(), "")
            << document.Path().toStdString() << ':' << command.line << ": "
            << command.words.join(u' ').toStdString();
}

INSTANTIATE_TEST_SUITE_P(Documents, DocumentCommands, testing::ValuesIn(PathsWithCommands()), NameOf);
