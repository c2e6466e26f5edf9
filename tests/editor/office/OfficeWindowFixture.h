#pragma once

#include "editor/EditorFixture.h"
#include "editor/office/OfficeWindow.h"
#include "editor/project/Project.h"
#include "embedded/OfficeDatabase.h"
#include "embedded/data/host/CreateProject.h"
#include "platform/Files.h"
#include "support/SourceTree.h"

#include <QtCore/QFile>
#include <QtCore/QTimer>
#include <QtGui/QAction>
#include <QtWidgets/QApplication>
#include <QtWidgets/QInputDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTreeWidget>

namespace test {

/// The main window over a project of the office, and a colleague who publishes.
class OfficeWindowTest : public test::EditorWindow
{
protected:
    static inline const CString House = QStringLiteral("住宅");

    static QByteArray Rules(const CString& name)
    {
        QFile file(test::InSourceTree(QStringLiteral("samples/") + name));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }

    /// The published file with one word changed, as a colleague would have changed it.
    static QByteArray Changed(const QByteArray& bytes, const char* from, const char* to)
    {
        QByteArray changed = bytes;
        const qsizetype at = changed.indexOf(from);
        EXPECT_GE(at, 0);
        return changed.replace(at, static_cast<qsizetype>(qstrlen(from)), to);
    }

    OfficeWindowTest()
    {
        m_window.show();
        embedded::ProjectOptions options;
        options.office = test::TestOffice::Keeper();
        embedded::CreateProject(Folder(QStringLiteral("mine")), options);
    }

    int Publish(const QByteArray& content, int base, const CString& note)
    {
        embedded::Office office(test::TestOffice::Keeper());
        embedded::PublishedConfigurations published(office);
        embedded::VersionMark mark;
        if (base > 0) mark = {base, embedded::DigestOf(published.Content(House, base).value())};
        const auto outcome =
            published.Publish({House, mark, content, note, QStringLiteral("colleague"), {}, {}});
        EXPECT_EQ(outcome.end, embedded::PublishOutcome::Published);
        return outcome.version;
    }
    void Open() { ASSERT_TRUE(m_window.OpenProject(Folder(QStringLiteral("mine")))); }
    /// Opens the window of the office and does something in it.
    void InOffice(const std::function<void(editor::OfficeWindow&)>& step)
    {
        const test::NextWindows user({[&](QDialog& window) {
            auto& office = dynamic_cast<editor::OfficeWindow&>(window);
            step(office);
            office.reject();
        }});
        m_window.Commands().office->trigger();
        EXPECT_TRUE(user.Done());
    }
    CString FilePath()
    {
        return m_window.OpenedProject()->RuleFolder() + u'\\' + House + QStringLiteral(".xml");
    }
    QByteArray File() { return platform::Files().Read(FilePath()).value_or("none"); }
    void WriteFile(const QByteArray& bytes)
    {
        platform::Files().CreateFolder(m_window.OpenedProject()->RuleFolder());
        platform::Files().WriteInPlace(FilePath(), bytes);
    }

    static QTreeWidget& List(QDialog& window, int index)
    {
        for (QTreeWidget* list : window.findChildren<QTreeWidget*>())
            if (list->accessibleName() == (index == 0 ? QStringLiteral("配置") : QStringLiteral("版本")))
                return *list;
        throw std::runtime_error("no such list");
    }
    static void Choose(QDialog& window, const CString& configuration)
    {
        const auto found = List(window, 0).findItems(configuration, Qt::MatchExactly);
        ASSERT_EQ(found.size(), 1);
        List(window, 0).setCurrentItem(found.first());
    }
    static CString Cell(QDialog& window, int list, const CString& key, int column)
    {
        const auto found = List(window, list).findItems(key, Qt::MatchExactly);
        return found.isEmpty() ? QStringLiteral("none") : found.first()->text(column);
    }
    static QPushButton& Button(QDialog& window, const QString& text)
    {
        for (QPushButton* button : window.findChildren<QPushButton*>())
            if (button->text().remove(u'&').startsWith(text)) return *button;
        throw std::runtime_error("no such button");
    }
    /// Presses 发布 and gives the note that is asked for then.
    static void PublishWith(QDialog& window, const QString& note)
    {
        QTimer user;
        bool isTyped = false;
        QObject::connect(&user, &QTimer::timeout, &window, [&] {
            auto* question = qobject_cast<QInputDialog*>(QApplication::activeModalWidget());
            if (question == nullptr || isTyped) return;
            isTyped = true;
            question->setTextValue(note);
            question->accept();
        });
        user.start(10);
        Button(window, QStringLiteral("发布")).click();
        EXPECT_TRUE(isTyped);
    }
    /// The same, and does something in the dialog of that class which comes up next.
    template <typename Dialog>
    static void PublishAndAnswer(QDialog& window, const std::function<void(QDialog&)>& step)
    {
        QTimer user;
        bool isAnswered = false;
        QObject::connect(&user, &QTimer::timeout, &window, [&] {
            auto* dialog = dynamic_cast<Dialog*>(QApplication::activeModalWidget());
            if (dialog == nullptr || isAnswered) return;
            isAnswered = true;
            step(*dialog);
        });
        user.start(10);
        PublishWith(window, {});
        EXPECT_TRUE(isAnswered);
    }
    /// The project has the first version with an edit, and a colleague has published another edit.
    void EditWithAColleague()
    {
        const QByteArray first = Rules(QStringLiteral("PlumbingRules.xml"));
        Publish(first, 0, {});
        Open();
        InOffice([&](editor::OfficeWindow& window) {
            Choose(window, House);
            Button(window, QStringLiteral("取到本机")).click();
        });
        Publish(Changed(first, "DN15", "DN15A"), 1, {});
    }
    /// Another edit of the project's file than the colleague's.
    void EditMyself()
    {
        QByteArray mine = File();
        WriteFile(mine.replace(mine.lastIndexOf("DN"), 2, "dn"));
    }
    /// What the dialog begins with.
    static CString Lead(QDialog& dialog)
    {
        for (const QLabel* label : dialog.findChildren<QLabel*>())
            if (label->wordWrap()) return label->text();
        return {};
    }
    QByteArray LastPublished()
    {
        embedded::Office office(test::TestOffice::Keeper());
        embedded::PublishedConfigurations published(office);
        return published.Content(House, published.Last(House)->number).value();
    }

    test::TestOffice m_office;
};

} // namespace test
