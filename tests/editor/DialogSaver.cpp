// Works in the configuration dialog as a user of the editor does, for tests that kill it:
// `dialog_saver PROJECT COUNT` opens the dialog COUNT times, adds a rule and closes it. Where the project has
// a second rule file, each dialog then calls that and adds a rule there, too, so that it ends on the other
// file. Prints "added" and "saved CONFIGURATION" as it goes.
// `dialog_saver PROJECT COUNT CATEGORY` opens a draft of the current rule file as the workbench does, and
// COUNT times adds a rule to the category and saves it. Prints "saved" or "merged" after each.
#include "dialogs/AutoConfigIds.h"
#include "editor/project/Project.h"
#include "editor/session/DraftFile.h"
#include "editor/window/ModuleSteps.h"
#include "platform/Paths.h"
#include "rules/draft/Draft.h"
#include "rules/draft/RuleEdits.h"

#include <QtCore/QTimer>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDialog>
#include <QtWidgets/QListWidget>

#include <cstdio>
#include <exception>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

using namespace Qt::StringLiterals;
using namespace dialogs::autoconfig;

namespace {

constexpr int ChosenButton = 1;
constexpr int FileList = 1000;

void Tell(const CString& line)
{
    std::puts(line.toUtf8().constData());
    std::fflush(stdout);
}

CString ConfigurationOf(const CString& ruleFile)
{
    return platform::BeforeLastStop(platform::FileNameOf(ruleFile));
}

template <typename Widget>
Widget* Find(const QWidget* dialog, int id)
{
    return dialog == nullptr ? nullptr : dialog->findChild<Widget*>(u"id%1"_s.arg(id));
}

template <typename Widget>
Widget& Require(const QWidget* dialog, int id)
{
    auto* widget = Find<Widget>(dialog, id);
    if (widget == nullptr) throw std::runtime_error("no control " + std::to_string(id));
    return *widget;
}

/// Works in the configuration dialog, once it is there, and closes it.
class User : public QTimer
{
public:
    /// Of a project that is on one rule file and may have another.
    explicit User(const editor::Project& project)
        : m_first(ConfigurationOf(project.CurrentRuleFile())),
          m_other(ConfigurationOf(project.RuleFiles().value(1)))
    {
        connect(this, &QTimer::timeout, this, [this] { Look(); });
        start(0);
    }

private:
    void Look()
    {
        QWidget* dialog = QApplication::activeModalWidget();
        if (Find<QAbstractButton>(dialog, AddRuleButton) == nullptr) return;
        stop();
        AddRule(*dialog);
        if (!m_other.isEmpty()) {
            CallOther(*dialog);
            AddRule(*dialog);
        }
        dialog->close();
    }

    static void AddRule(const QWidget& dialog)
    {
        Require<QAbstractButton>(&dialog, AddRuleButton).click();
        Tell(u"added"_s);
    }

    /// Saves the first file, too.
    void CallOther(const QWidget& dialog)
    {
        singleShot(0, this, [this] { ChooseOther(); }); // in the dialog that the button opens
        Require<QAbstractButton>(&dialog, LoadFileButton).click();
        Tell(u"saved "_s + m_first);
    }

    void ChooseOther() const
    {
        const QWidget* dialog = QApplication::activeModalWidget();
        auto& list = Require<QListWidget>(dialog, FileList);
        list.setCurrentItem(list.findItems(m_other, Qt::MatchExactly).value(0));
        Require<QAbstractButton>(dialog, ChosenButton).click();
    }

    CString m_first;
    CString m_other;
};

/// Nobody else changes a rule that this program has made.
std::optional<std::vector<rules::Side>> RaiseOnConflicts(const std::vector<rules::Conflict>&)
{
    throw std::runtime_error("a conflict");
}

/// A rule that nobody else makes: two that both sides of a merge have added alike would become one.
rules::Rule RuleOfRun(int run)
{
    rules::Condition condition;
    condition.attribute = u"材质"_s;
    condition.equalOperator = u"＝"_s;
    condition.value = u"工作台 %1"_s.arg(run);
    rules::Rule rule;
    rule.conditions.push_back(condition);
    return rule;
}

void SaveInDialog(editor::Project& project, int count)
{
    editor::ModuleSteps steps(nullptr, project);
    for (int run = 0; run < count; ++run) {
        const User user(project);
        if (steps.Configure() != editor::StepEnd::Done) throw std::runtime_error("the dialog was refused");
        Tell(u"saved "_s + ConfigurationOf(project.CurrentRuleFile()));
    }
}

void SaveInWorkbench(editor::Project& project, int count, const CString& category)
{
    editor::DraftFile file(project, project.CurrentRuleFile());
    rules::Draft draft(file.Rules(), file.Rules());
    for (int run = 0; run < count; ++run) {
        draft.Apply(rules::InsertRules(draft, category, 0, {RuleOfRun(run)}, {}));
        const auto end = file.Save(draft.Wanted(), &RaiseOnConflicts);
        if (end == editor::DraftFile::SaveEnd::Cancelled) throw std::runtime_error("the save was refused");
        draft = rules::Draft(file.Rules(), file.Rules());
        Tell(end == editor::DraftFile::SaveEnd::Merged ? u"merged"_s : u"saved"_s);
    }
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    try {
        editor::Project project(arguments.value(1));
        project.BecomeHost(nullptr);
        const int count = arguments.value(2).toInt();
        if (arguments.size() > 3)
            SaveInWorkbench(project, count, arguments[3]);
        else
            SaveInDialog(project, count);
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
