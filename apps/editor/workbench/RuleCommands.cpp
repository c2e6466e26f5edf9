#include "editor/workbench/RuleCommands.h"

#include "editor/messages/Boxes.h"
#include "editor/session/RuleTableText.h"
#include "editor/workbench/CopyDialog.h"
#include "rules/draft/EditLine.h"

#include <QtCore/QMimeData>
#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

/// Rules as an edit that puts them in.
const QString RulesType = u"application/x-ktqdde-rules"_s;
constexpr qsizetype MostLines = 8;

} // namespace

std::size_t RuleCommands::PlaceBehindCurrent() const
{
    const rules::SmallCategoryPtr category = m_session.Category();
    const auto current = m_session.CurrentRule();
    if (!current) return category->rules.size();
    return category->rules[*current].isDefault ? *current : *current + 1;
}

std::vector<rules::Rule> RuleCommands::ChosenOnes() const
{
    std::vector<rules::Rule> chosen;
    for (const auto& [category, positions] : m_session.ChosenPlaces())
        for (const std::size_t position : positions)
            chosen.push_back(m_session.Draft().Find(category)->rules[position]);
    return chosen;
}

void RuleCommands::Add()
{
    m_session.Do(rules::InsertRules(m_session.Draft(), m_session.CategoryText(), PlaceBehindCurrent(),
                                    {rules::Rule()}, u"增加规则"_s));
}

void RuleCommands::Remove()
{
    rules::Edit all;
    for (const auto& [category, positions] : m_session.ChosenPlaces()) {
        rules::Edit one = rules::DeleteRules(m_session.Draft(), category, positions);
        all.text = all.text.isEmpty() ? one.text : u"删除几个类别的规则"_s;
        for (rules::Splice& splice : one.splices)
            all.splices.push_back(std::move(splice));
    }
    m_session.Do(all);
}

void RuleCommands::Shift(bool down)
{
    m_session.Do(
        rules::ShiftRules(m_session.Draft(), m_session.CategoryText(), m_session.ChosenRules(), down));
}

void RuleCommands::MoveTo(std::size_t target)
{
    m_session.Do(
        rules::MoveRules(m_session.Draft(), m_session.CategoryText(), m_session.ChosenRules(), target));
}

void RuleCommands::Copy() const
{
    const std::vector<rules::Rule> chosen = ChosenOnes();
    if (chosen.empty()) return;
    auto* data = new QMimeData; // the clipboard owns it
    data->setData(RulesType, rules::LineOf({{}, {{m_session.CategoryText(), 0, {}, chosen}}}));
    data->setText(TableTextOf(chosen, m_session));
    QGuiApplication::clipboard()->setMimeData(data);
}

bool RuleCommands::CanPaste()
{
    const QMimeData* const data = QGuiApplication::clipboard()->mimeData();
    return data != nullptr && (data->hasFormat(RulesType) || IsTableText(data->text()));
}

void RuleCommands::Paste()
{
    const QMimeData* const data = QGuiApplication::clipboard()->mimeData();
    if (data == nullptr || !m_session.Category()) return;
    std::vector<rules::Rule> pasted;
    if (const auto edit = rules::EditOf(data->data(RulesType)); edit && !edit->splices.empty()) {
        pasted = edit->splices.front().inserted;
    } else {
        CStringArray faults;
        pasted = RulesOfTableText(data->text(), m_session, faults);
        if (!faults.isEmpty()) return ShowWarning(u"没有粘贴：\n"_s + faults.join(u'\n'));
    }
    std::vector<rules::Misfit> misfits;
    const rules::Edit edit =
        rules::PasteRules(m_session.Draft(), pasted, m_session.CategoryText(), PlaceBehindCurrent(),
                          m_session.Facts()->AttributesOf(m_session.CategoryText()), misfits);
    m_session.Do(edit);
    TellMisfits(misfits);
}

void RuleCommands::TellMisfits(const std::vector<rules::Misfit>& misfits) const
{
    if (misfits.empty()) return;
    CStringArray lines;
    for (const rules::Misfit& misfit : misfits)
        if (lines.size() < MostLines) lines.append(u"第 %1 条：%2"_s.arg(misfit.rule + 1).arg(misfit.text));
    const auto rest = static_cast<qsizetype>(misfits.size()) - lines.size();
    if (rest > 0) lines.append(u"还有 %1 处"_s.arg(rest));
    ShowWarning(u"已粘贴，但有些地方与这个类别不合适：\n"_s + lines.join(u'\n'));
}

void RuleCommands::CopyToOthers()
{
    const CString from = m_session.CategoryText();
    const std::vector<rules::Rule> chosenRules = ChosenOnes();
    const auto copyTo = [&](const CString& category, std::vector<rules::Misfit>& misfits) {
        return rules::PasteRules(m_session.Draft(), chosenRules, category,
                                 m_session.Draft().Find(category)->rules.size(),
                                 m_session.Facts()->AttributesOf(category), misfits);
    };
    CopyDialog dialog(
        m_session.Draft(), from, chosenRules.size(),
        [&](const CString& category) {
            std::vector<rules::Misfit> misfits;
            copyTo(category, misfits);
            return misfits;
        },
        &m_window);
    if (dialog.exec() != QDialog::Accepted) return;
    rules::Edit all;
    const CStringArray chosen = dialog.Chosen();
    for (const CString& category : chosen) {
        std::vector<rules::Misfit> misfits;
        for (rules::Splice& splice : copyTo(category, misfits).splices)
            all.splices.push_back(std::move(splice));
    }
    all.text = u"复制 %1 条规则到 %2 个类别"_s.arg(chosenRules.size()).arg(chosen.size());
    m_session.Do(all);
}

} // namespace editor
