#include "editor/session/WorkSession.h"

#include "editor/messages/Guard.h"
#include "editor/project/Project.h"
#include "platform/Files.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>

#include <algorithm>
#include <set>
#include <utility>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

/// The rules of the other categories are to be read.
const auto OthersWanted = static_cast<QEvent::Type>(QEvent::registerEventType());

/// A category's specialty: the first level of its text.
CString SpecialtyOf(const CString& category)
{
    return category.section(u'\\', 0, 0);
}

CStringArray CategoriesOf(const rules::Edit& edit)
{
    CStringArray categories;
    for (const rules::Splice& splice : edit.splices)
        if (!categories.contains(splice.category)) categories.append(splice.category);
    return categories;
}

/// Sorted, each once, and none that the category has not.
void Trim(std::vector<std::size_t>& positions, const rules::SmallCategoryPtr& category)
{
    const std::size_t count = category ? category->rules.size() : 0;
    std::sort(positions.begin(), positions.end());
    positions.erase(std::unique(positions.begin(), positions.end()), positions.end());
    while (!positions.empty() && positions.back() >= count)
        positions.pop_back();
}

} // namespace

/// One edit on the undo stack.
class WorkSession::EditCommand : public QUndoCommand
{
public:
    EditCommand(WorkSession& session, rules::Edit edit)
        : QUndoCommand(edit.text), m_session(session), m_edit(std::move(edit))
    {
    }

    void undo() override { m_session.Change(m_edit, true); }
    void redo() override { m_session.Change(m_edit, false); }

private:
    WorkSession& m_session;
    rules::Edit m_edit;
};

WorkSession::WorkSession(QObject* parent) : QObject(parent)
{
    SetProject(nullptr);
}

WorkSession::~WorkSession() = default;

void WorkSession::SetProject(Project* project)
{
    Close();
    m_project = project;
    RefreshFacts();
}

void WorkSession::RefreshFacts()
{
    if (m_project == nullptr) {
        auto none = std::make_shared<ProjectFacts>();
        none->offered = std::make_shared<const rules::Configuration>(std::vector<rules::Specialty>());
        m_facts = std::move(none);
    } else {
        m_facts = FactsOf(*m_project);
    }
    if (m_file) {
        // The edits stay. What they are about may be offered no more, so they can no longer be taken back.
        const rules::ConfigurationPtr present = Draft().Snapshot();
        m_draft = rules::Draft(m_file->Rules(), m_facts->offered);
        m_draft.Apply(rules::Towards(m_draft, *present, {}));
        m_undo.clear();
    }
    KeepChoiceValid();
    emit Reopened();
}

void WorkSession::Open(const CString& path)
{
    TakeFile(std::make_unique<DraftFile>(*m_project, path, FirstCategory()));
    emit Reopened();
    // Not before the windows have painted: on a machine of few cores the thread would hold them up.
    if (!m_isWhole) QCoreApplication::postEvent(this, new QEvent(OthersWanted), Qt::LowEventPriority - 1);
}

bool WorkSession::event(QEvent* event)
{
    if (event->type() != OthersWanted) return QObject::event(event);
    if (!m_file) return true;
    if (m_isWhole) TellCompleted(); // somebody has asked for them before
    m_file->ReadOthers([this, opened = m_opened] {
        QMetaObject::invokeMethod(
            this, [this, opened] { TakeOthers(opened); }, Qt::QueuedConnection);
    });
    return true;
}

/// Those of the file that was opened as that one, if it is still open.
void WorkSession::TakeOthers(int opened)
{
    if (opened != m_opened || !m_file) return;
    if (RunGuarded([this] { TakeRest(); })) TellCompleted();
}

/// Once for each file.
void WorkSession::TellCompleted()
{
    if (std::exchange(m_completed, m_opened) != m_opened) emit Completed();
}

void WorkSession::Recover(const LostDraft& lost)
{
    auto file = std::make_unique<DraftFile>(*m_project, lost.ruleFile, lost.base);
    const rules::Draft begun(file->Rules(), m_facts->offered);
    rules::Draft recovered = begun;
    for (const rules::Edit& edit : lost.edits)
        recovered.Apply(edit);
    const rules::Edit all = rules::Towards(begun, *recovered.Snapshot(), u"没有保存的修改"_s);
    TakeFile(std::move(file));
    emit Reopened();
    Do(all);
    if (m_journalFault.isEmpty()) DraftJournal::Remove(lost);
    if (!IsChanged()) TakeOver(); // the edits came to nothing: what counts is what the file holds
}

void WorkSession::TakeFile(std::unique_ptr<DraftFile> file)
{
    rules::Draft draft(file->RulesSoFar(), m_facts->offered);
    if (m_journal) m_journal->End();
    m_journalFault.clear();
    m_undo.clear();
    m_file = std::move(file);
    m_draft = std::move(draft);
    m_isWhole = m_file->IsWhole();
    ++m_opened;
    ForgetProposedNumbers();
    BeginJournal();
    m_elsewhere.clear();
    if (m_specialty.isEmpty()) m_specialty = m_project->Spec();
    const CString first = FirstCategory();
    if (first.isEmpty()) TakeRest();
    KeepChoiceValid();
    if (m_category != first) TakeRest();
}

/// The category that will be chosen when a file is opened. Empty when only the file can tell: the catalogue
/// does not know it.
CString WorkSession::FirstCategory() const
{
    const CString specialty = m_specialty.isEmpty() ? m_project->Spec() : m_specialty;
    const auto last = m_lastCategories.find(specialty);
    CString wanted = SpecialtyOf(m_category) == specialty ? m_category : CString();
    if (wanted.isEmpty() && last != m_lastCategories.end()) wanted = last->second;
    if (!wanted.isEmpty()) return m_facts->offered->Find(wanted) ? wanted : CString();
    for (const rules::Specialty& one : m_facts->offered->Specialties())
        if (one.name == specialty)
            for (const rules::BigCategory& big : one.bigCategories)
                if (!big.smallCategories.empty()) return big.smallCategories.front()->text;
    return {};
}

const rules::Draft& WorkSession::Draft() const
{
    TakeRest();
    return m_draft;
}

/// Nothing has been edited before: whoever edits asks for the whole draft.
void WorkSession::TakeRest() const
{
    if (m_isWhole) return;
    m_draft.Rebase(m_file->Rules());
    m_isWhole = true;
}

/// To be called before another category is chosen, or something in it.
void WorkSession::NeedCategory(const CString& text) const
{
    if (text != m_category) TakeRest();
}

/// The bill numbers that were proposed for rules which the file holds by now, or which nobody will write.
void WorkSession::ForgetProposedNumbers()
{
    if (m_project != nullptr) m_project->ForgetProposedNumbers();
}

void WorkSession::Close()
{
    if (m_journal) m_journal->End();
    m_journal.reset();
    m_journalFault.clear();
    m_undo.clear();
    m_file.reset();
    m_draft = rules::Draft();
    m_isWhole = true;
    ForgetProposedNumbers();
    m_specialty.clear();
    m_lastCategories.clear();
    KeepChoiceValid();
    emit Reopened();
}

DraftFile::SaveEnd WorkSession::Save(const AnswerConflicts& answer, const AskWhetherAnew& mayWriteAnew)
{
    const DraftFile::SaveEnd end = m_file->Save(Draft().Wanted(), answer, mayWriteAnew);
    if (end == DraftFile::SaveEnd::Cancelled) return end;
    ForgetProposedNumbers();
    m_undo.setClean();
    FollowFile(u"合并进来的修改"_s);
    return end;
}

void WorkSession::Discard()
{
    const rules::Draft saved(m_file->Rules(), m_facts->offered);
    Do(rules::Towards(Draft(), *saved.Snapshot(), u"放弃修改"_s, true));
}

void WorkSession::Reset()
{
    m_undo.clear();
    m_journal->End();
    BeginJournal();
    m_draft = rules::Draft(m_file->Rules(), m_facts->offered);
    m_isWhole = true;
    ForgetProposedNumbers();
    KeepChoiceValid();
    emit Reopened();
}

bool WorkSession::TakeOver()
{
    if (!m_file || IsChanged()) return false;
    try {
        TakeRest();
        m_file = std::make_unique<DraftFile>(*m_project, m_file->Path());
    } catch (const std::runtime_error&) {
        return false;
    }
    FollowFile(u"文件里的修改"_s);
    return true;
}

/// The edits so far are in the file; what it holds besides becomes one more, and what comes begins on that.
void WorkSession::FollowFile(const CString& text)
{
    const rules::Edit others = rules::Towards(m_draft, *m_file->Rules(), text, true);
    if (!others.IsEmpty()) m_undo.push(new EditCommand(*this, others));
    m_draft.Rebase(m_file->Rules());
    m_journal->End();
    BeginJournal();
    m_undo.setClean();
    KeepChoiceValid();
    // Another program may have brought categories that nobody knew.
    if (!others.IsEmpty()) emit Reopened();
    emit FileChanged();
}

void WorkSession::BeginJournal()
{
    m_journal = std::make_unique<DraftJournal>(m_project->Folder(), m_file->Path(), m_file->Bytes());
    m_journalFault.clear();
}

const rules::FileStructure& WorkSession::Structure() const
{
    static const rules::FileStructure None;
    return m_file ? m_file->Structure() : None;
}

void WorkSession::Do(const rules::Edit& edit)
{
    if (edit.IsEmpty()) return;
    TakeRest();
    m_undo.push(new EditCommand(*this, edit));
}

void WorkSession::Change(const rules::Edit& edit, bool isReverted)
{
    const auto chosen = std::pair(m_rules, m_current);
    const rules::SmallCategoryPtr former = Category();
    isReverted ? m_draft.Revert(edit) : m_draft.Apply(edit);
    if (m_journalFault.isEmpty()) {
        try {
            m_journal->Add(isReverted ? edit.Inverse() : edit);
        } catch (const platform::FileError& error) {
            m_journalFault = error.Message();
        }
    }
    FollowRules(former);
    // Positions there may be others now, and nobody is to work on what he has not chosen.
    for (const CString& category : CategoriesOf(edit))
        m_elsewhere.erase(category);
    KeepChoiceValid();
    emit Edited(CategoriesOf(edit));
    if (chosen != std::pair(m_rules, m_current)) emit RulesChosen();
}

bool WorkSession::IsChanged() const
{
    return m_file && m_draft.IsChanged();
}

/// What the change has brought into the chosen category is chosen, else the same rules as before, wherever
/// they stand now.
void WorkSession::FollowRules(const rules::SmallCategoryPtr& former)
{
    const rules::SmallCategoryPtr present = Category();
    if (!former || !present || former == present) return;
    std::set<int> known;
    std::set<int> chosen;
    for (std::size_t i = 0; i < former->rules.size(); ++i) {
        known.insert(former->rules[i].id);
        if (std::binary_search(m_rules.begin(), m_rules.end(), i)) chosen.insert(former->rules[i].id);
    }
    const rules::Rule* const current = m_current ? &former->rules[*m_current] : nullptr;
    std::vector<std::size_t> made;
    std::vector<std::size_t> kept;
    std::optional<std::size_t> cursor;
    for (std::size_t i = 0; i < present->rules.size(); ++i) {
        const int id = present->rules[i].id;
        if (!known.contains(id)) made.push_back(i);
        if (chosen.contains(id)) kept.push_back(i);
        if (current != nullptr && id == current->id) cursor = i;
    }
    if (!made.empty())
        ChooseInCategory(made, made.front());
    else if (!kept.empty())
        ChooseInCategory(kept, cursor);
    else if (m_current) // those that were chosen are gone: the one that stands there now
        ChooseInCategory({std::min(*m_current, present->rules.size() - 1)}, std::nullopt);
}

rules::SmallCategoryPtr WorkSession::Category() const
{
    return m_draft.Find(m_category);
}

void WorkSession::ChooseSpecialty(const CString& name)
{
    if (name == m_specialty) return;
    TakeRest();
    const auto& all = m_draft.Specialties();
    if (std::none_of(all.begin(), all.end(), [&](const auto& one) { return one.name == name; })) return;
    m_specialty = name;
    m_category.clear();
    KeepChoiceValid();
    emit SpecialtyChosen();
    emit CategoryChosen();
    emit RulesChosen();
}

void WorkSession::ChooseCategory(const CString& text)
{
    NeedCategory(text);
    if (text == m_category || !m_draft.Find(text)) return;
    const bool isOtherSpecialty = SpecialtyOf(text) != m_specialty;
    m_specialty = SpecialtyOf(text);
    m_category = text;
    m_lastCategories[m_specialty] = text;
    m_rules.clear();
    m_current.reset();
    m_elsewhere.clear();
    KeepChoiceValid();
    if (isOtherSpecialty) emit SpecialtyChosen();
    emit CategoryChosen();
    emit RulesChosen();
}

rules::RulePlaces WorkSession::ChosenPlaces() const
{
    rules::RulePlaces places = m_elsewhere;
    if (!m_rules.empty()) places[m_category] = m_rules;
    return places;
}

void WorkSession::ChoosePlaces(rules::RulePlaces places, const CString& category, std::size_t position)
{
    for (const auto& [text, positions] : places)
        NeedCategory(text);
    ChooseCategory(category);
    if (m_category != category) return;
    auto own = std::move(places[category]);
    places.erase(category);
    const bool isOtherElsewhere = places != m_elsewhere;
    m_elsewhere = std::move(places);
    KeepChoiceValid();
    const auto chosen = std::pair(m_rules, m_current);
    ChooseInCategory(std::move(own), position);
    if (isOtherElsewhere || chosen != std::pair(m_rules, m_current)) emit RulesChosen();
}

void WorkSession::ChooseRules(std::vector<std::size_t> positions, std::optional<std::size_t> current)
{
    const auto chosen = std::pair(m_rules, m_current);
    const bool hadOthers = !m_elsewhere.empty();
    m_elsewhere.clear();
    ChooseInCategory(std::move(positions), current);
    if (hadOthers || chosen != std::pair(m_rules, m_current)) emit RulesChosen();
}

/// Emits nothing.
void WorkSession::ChooseInCategory(std::vector<std::size_t> positions, std::optional<std::size_t> current)
{
    const rules::SmallCategoryPtr category = Category();
    Trim(positions, category);
    if (current && !std::binary_search(positions.begin(), positions.end(), *current)) current.reset();
    if (!current && !positions.empty()) current = positions.front();
    m_rules = std::move(positions);
    m_current = current;
}

void WorkSession::GoTo(const CString& category, std::size_t position)
{
    ChooseCategory(category);
    if (category == m_category) ChooseRules({position}, position);
}

/// The category that was last chosen in the specialty, else its first one; none where it has none.
CString WorkSession::UsualCategory() const
{
    const auto last = m_lastCategories.find(m_specialty);
    if (last != m_lastCategories.end() && m_draft.Find(last->second)) return last->second;
    for (const rules::Specialty& specialty : m_draft.Specialties())
        if (specialty.name == m_specialty)
            for (const rules::BigCategory& big : specialty.bigCategories)
                if (!big.smallCategories.empty()) return big.smallCategories.front()->text;
    return {};
}

/// Emits nothing: whoever changes the draft says so itself.
void WorkSession::KeepChoiceValid()
{
    const auto& all = m_draft.Specialties();
    const auto isChosen = [&](const auto& one) { return one.name == m_specialty; };
    if (std::none_of(all.begin(), all.end(), isChosen))
        m_specialty = all.empty() ? CString() : all.front().name;
    if (!m_draft.Find(m_category) || SpecialtyOf(m_category) != m_specialty) {
        m_category = UsualCategory();
        m_rules.clear();
        m_current.reset();
    }
    const rules::SmallCategoryPtr category = Category();
    Trim(m_rules, category);
    if (m_rules.empty() && category && !category->rules.empty()) m_rules = {0};
    if (!m_current || !std::binary_search(m_rules.begin(), m_rules.end(), *m_current))
        m_current = m_rules.empty() ? std::nullopt : std::optional(m_rules.front());
    m_elsewhere.erase(m_category);
    for (auto& [text, positions] : m_elsewhere)
        Trim(positions, m_draft.Find(text));
    std::erase_if(m_elsewhere, [](const auto& entry) { return entry.second.empty(); });
}

} // namespace editor
