#include "editor/steps/WatchedStep.h"

#include "editor/EditorFixture.h"
#include "editor/project/Project.h"
#include "platform/Files.h"
#include "platform/Messages.h"

#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QProgressBar>
#include <QtWidgets/QPushButton>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// Steps on the window's thread that a test watches from inside.
class StepUnderWindow : public test::EditorWindow
{
protected:
    StepUnderWindow() { m_window.OpenProject(MakeProject(u"project"_s)); }

    bool Run(qint64 pieces, const std::function<void()>& work, std::chrono::milliseconds quiet = 0ms)
    {
        return editor::RunWatched(&m_window, m_window.OpenedProject()->Roles(),
                                  {u"step"_s, pieces, m_folder.Path(u"draft"_s), work}, quiet);
    }
    void DoPiece() const { platform::Files().Read(m_folder.Path(u"nothing"_s)); }
    void Change(const CString& name) const { platform::Files().WriteInPlace(m_folder.Path(name), "new"); }

    static QWidget* Window() { return QApplication::activeModalWidget(); }
    static QPushButton& CancelButton() { return *Window()->findChild<QPushButton*>(); }
    static int Percent()
    {
        const auto* bar = Window()->findChild<QProgressBar*>();
        return 100 * bar->value() / bar->maximum();
    }
};

} // namespace

TEST_F(StepUnderWindow, WindowComesWithTheFirstPieceAfterTheQuietTime)
{
    EXPECT_TRUE(Run(1, [&] {
        EXPECT_EQ(Window(), nullptr);
        DoPiece();
        ASSERT_NE(Window(), nullptr);
        EXPECT_EQ(Window()->findChild<QLabel*>()->text(), u"step"_s);
        EXPECT_EQ(Window()->windowTitle(), u"step - KtQdDeConfig 规则编辑器"_s);
    }));
    EXPECT_EQ(Window(), nullptr);
}

TEST_F(StepUnderWindow, StepThatEndsWithinTheQuietTimeShowsTheBusyCursorOnly)
{
    const auto work = [&] {
        DoPiece();
        EXPECT_EQ(Window(), nullptr);
        EXPECT_NE(QApplication::overrideCursor(), nullptr);
    };
    EXPECT_TRUE(Run(1, work, 1h));
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(StepUnderWindow, MessageOfTheStepStandsUnderTheUsualCursor)
{
    bool wasBusy = true;
    const platform::ScopedMessageHandler user([&](const platform::Message&) {
        wasBusy = QApplication::overrideCursor() != nullptr;
        return platform::Answer::Yes;
    });
    const auto work = [&] {
        EXPECT_TRUE(platform::AskYesNo(u"question"_s));
        EXPECT_NE(QApplication::overrideCursor(), nullptr);
    };
    EXPECT_TRUE(Run(1, work, 1h));
    EXPECT_FALSE(wasBusy);
    EXPECT_TRUE(platform::AskYesNo(u"question"_s)); // by the handler of before
}

TEST_F(StepUnderWindow, LongStepHasNoQuietTime)
{
    const auto work = [&] {
        DoPiece();
        EXPECT_NE(Window(), nullptr);
    };
    EXPECT_TRUE(
        editor::RunWatched(&m_window, m_window.OpenedProject()->Roles(), {u"step"_s, 1, {}, work, true}, 1h));
}

TEST_F(StepUnderWindow, ProgressRisesWithEachPieceAndNeverPassesTheEnd)
{
    QList<int> shown;
    Run(4, [&] {
        for (int piece = 0; piece < 6; ++piece) {
            DoPiece();
            shown.append(Percent());
        }
    });
    EXPECT_EQ(shown, QList<int>({0, 25, 50, 75, 100, 100}));
}

TEST_F(StepUnderWindow, NameOfASmallCategoryIsAPiece)
{
    Run(4, [&] {
        SNvKtSmallCategoryId id;
        host::Categories().SmallCategoryNameToId(u"给排水\\管道\\给水管"_s, id);
        CString name;
        for (int piece = 0; piece < 3; ++piece)
            host::Categories().GetSmallCategoryName(id, name);
        EXPECT_EQ(name, u"给水管"_s);
        EXPECT_EQ(Percent(), 50);
    });
}

TEST_F(StepUnderWindow, CancelledStepEndsAtItsNextPiece)
{
    bool wentOn = false;
    EXPECT_FALSE(Run(4, [&] {
        DoPiece();
        QWidget& window = *Window();
        CancelButton().click();
        EXPECT_EQ(window.findChild<QLabel*>()->text(), u"正在取消…"_s);
        DoPiece();
        wentOn = true;
    }));
    EXPECT_FALSE(wentOn);
}

TEST_F(StepUnderWindow, StepCancelledBeforeItsFirstChangeChangesNothing)
{
    EXPECT_FALSE(Run(4, [&] {
        DoPiece();
        Window()->close();
        Change(u"file"_s);
    }));
    EXPECT_FALSE(m_folder.Exists(u"file"_s));
}

TEST_F(StepUnderWindow, StepThatHasChangedAFileCannotBeCancelled)
{
    EXPECT_TRUE(Run(4, [&] {
        Change(u"file"_s);
        DoPiece();
        EXPECT_FALSE(CancelButton().isEnabled());
        EXPECT_EQ(Window()->findChild<QLabel*>()->text(), u"正在写文件，不能再取消…"_s);
        Window()->close();
        DoPiece();
    }));
}

TEST_F(StepUnderWindow, StepThatHasChangedOnlyItsDraftCanBeCancelled)
{
    EXPECT_FALSE(Run(4, [&] {
        Change(u"draft"_s);
        CancelButton().click();
        DoPiece();
    }));
}

TEST_F(StepUnderWindow, WhatTheStepRaisesIsRaisedAndHostAndFilesAreAsBefore)
{
    const platform::FileSystem* files = &platform::Files();
    const host::ICategories* categories = &host::Categories();
    EXPECT_THROW(Run(1, [] { throw std::runtime_error("no disk"); }), std::runtime_error);
    EXPECT_EQ(&platform::Files(), files);
    EXPECT_EQ(&host::Categories(), categories);
}
