#include "dialogs/process/ToolkitTexts.h"

#include "support/TempFolder.h"

#include <QtCore/QFile>
#include <QtCore/QLibraryInfo>
#include <QtCore/QTranslator>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

/// Two folders without any texts; a test puts the installed ones into them.
class ToolkitTexts : public ::testing::Test
{
protected:
    /// Copies the installed texts to that place in the second folder.
    void PutTexts(const CString& name)
    {
        const QString installed = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
        ASSERT_TRUE(QFile::copy(installed + u"/qtbase_zh_CN.qm"_s, m_second.Native(name)));
    }
    bool Load() { return dialogs::LoadToolkitTexts(m_texts, {{}, m_first.Native({}), m_second.Native({})}); }
    QString Undo() const { return m_texts.translate("QLineEdit", "&Undo"); }

    test::TempFolder m_first;
    test::TempFolder m_second;
    QTranslator m_texts;
};

} // namespace

TEST_F(ToolkitTexts, AreNotThereInEmptyFolders)
{
    EXPECT_FALSE(Load());
    EXPECT_EQ(Undo(), QString());
}

TEST_F(ToolkitTexts, AreFoundUnderTheNameOfAnInstallation)
{
    PutTexts(u"qtbase_zh_CN.qm"_s);
    EXPECT_TRUE(Load());
    EXPECT_EQ(Undo(), u"撤消(&U)"_s);
}

TEST_F(ToolkitTexts, AreFoundUnderTheNameOfAProgramsSetup)
{
    m_second.MakeFolder(u"translations"_s);
    PutTexts(u"translations\\qt_zh_CN.qm"_s);
    EXPECT_TRUE(Load());
    EXPECT_EQ(Undo(), u"撤消(&U)"_s);
}
