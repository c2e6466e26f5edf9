#include "editor/files/OtherPrograms.h"

#include "editor/files/FilesFixture.h"
#include "editor/files/OpenMark.h"
#include "support/Patience.h"

#include <QtCore/QDir>
#include <QtCore/QFile>

#include <vector>

using namespace Qt::StringLiterals;

namespace {

class OtherPrograms : public test::ProjectWithFiles
{
protected:
    OtherPrograms() : m_own(Project()) {}

    /// What a program of another machine writes; its mark stands there before that.
    QString Mark() const { return QDir(editor::MarkFolderOf(Project())).filePath(u"open-forged.lock"_s); }
    void MakeMark(const QByteArray& signature) const
    {
        QFile file(Mark());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(signature), signature.size());
    }

    const QByteArray Signature = "4711\nktqdde-editor\nelsewhere\n";
    editor::OpenMark m_own;
    std::vector<std::optional<CString>> m_told;
};

} // namespace

TEST_F(OtherPrograms, AreToldOnceAtFirst)
{
    MakeMark(Signature);
    const editor::OtherPrograms programs(Project(), [this](const auto& others) { m_told.push_back(others); });
    ASSERT_EQ(m_told.size(), 1U);
    EXPECT_TRUE(m_told.front().value_or(CString()).contains(u"elsewhere"));
}

TEST_F(OtherPrograms, AreToldWhenTheySignTheirMarkLaterThanTheyMakeIt)
{
    MakeMark({});
    EXPECT_TRUE(editor::HasUnsignedMark(Project()));
    const editor::OtherPrograms programs(Project(), [this](const auto& others) { m_told.push_back(others); });
    ASSERT_EQ(m_told.size(), 1U);
    EXPECT_EQ(m_told.front(), std::nullopt);
    MakeMark(Signature); // into the same file, of which its folder says nothing
    EXPECT_FALSE(editor::HasUnsignedMark(Project()));
    test::WaitInLoopFor(u"the other program"_s, [&] { return m_told.size() == 2; });
    EXPECT_TRUE(m_told.back().value_or(CString()).contains(u"elsewhere"));
}
