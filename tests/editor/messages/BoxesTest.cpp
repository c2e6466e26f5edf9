#include "editor/messages/Boxes.h"

#include "editor/EditorFixture.h"

#include <QtWidgets/QMessageBox>

using namespace Qt::StringLiterals;

namespace {

/// Whether a box has room for its caption beside what else stands in a title bar.
bool ShowsItsCaption(const QDialog& box)
{
    QFont bold = box.font();
    bold.setBold(true);
    const QFontMetrics metrics(bold);
    return box.width() >= metrics.horizontalAdvance(box.windowTitle()) + 6 * metrics.height();
}

} // namespace

TEST(Boxes, AreTitledByTheProgramAndWideEnoughForThat)
{
    QStringList titles;
    int wide = 0;
    const auto look = [&](QDialog& box) {
        titles.append(box.windowTitle());
        wide += ShowsItsCaption(box) ? 1 : 0;
        test::PressButton(box, u"取消"_s);
    };
    const test::NextWindows user({look, look, look});
    editor::AskLeave(nullptr, u"甲"_s);
    editor::AskOpenAnyway(nullptr, u"甲"_s, u"乙"_s);
    editor::AskHeadTarget(nullptr, u"甲"_s);
    ASSERT_TRUE(user.Done());
    EXPECT_EQ(titles, QStringList(3, editor::ProgramName()));
    EXPECT_EQ(wide, 3);
}

TEST(Boxes, WarningsAndQuestionsAreTitledByTheProgramAndEndInTheirMarks)
{
    test::MessageRecorder messages;
    editor::ShowWarning(u"甲"_s);
    EXPECT_FALSE(editor::AskYesNo(u"乙"_s));
    ASSERT_EQ(messages.Messages().size(), 2U);
    EXPECT_EQ(messages.Texts(), CStringArray({u"甲!"_s, u"乙?"_s}));
    for (const platform::Message& message : messages.Messages())
        EXPECT_EQ(message.caption, editor::ProgramName());
}
