#include "editor/docks/findings/FindingsWatch.h"

#include "editor/docks/findings/SeverityMark.h"
#include "rules/check/Check.h"
#include "rules/check/CheckParts.h"

#include <QtCore/QElapsedTimer>

#include <algorithm>
#include <iterator>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

/// After so many milliseconds what was found so far is told, before the next categories are checked.
constexpr qint64 TellEvery = 50;

/// The findings at the places that their rules have now; what is about a rule that is gone is left out.
void Place(std::vector<rules::Finding>& findings, const rules::SmallCategory& category)
{
    std::map<int, int> positions; // by id; of rules that share one the first
    for (std::size_t i = 0; i < category.rules.size(); ++i)
        positions.try_emplace(category.rules[i].id, static_cast<int>(i) + 1);
    const auto isInPlace = [&](const rules::Finding& finding) {
        const auto index = static_cast<std::size_t>(finding.position) - 1;
        return finding.position == 0 ||
               (index < category.rules.size() && category.rules[index].id == finding.ruleId);
    };
    std::erase_if(findings, [&](rules::Finding& finding) {
        if (isInPlace(finding)) return false;
        const auto place = positions.find(finding.ruleId);
        if (place == positions.end()) return true;
        finding.position = place->second;
        return false;
    });
    std::stable_sort(findings.begin(), findings.end(),
                     [](const auto& a, const auto& b) { return a.position < b.position; });
}

std::optional<rules::Severity> Worst(std::span<const rules::Finding> findings)
{
    std::optional<rules::Severity> worst;
    for (const rules::Finding& finding : findings)
        worst = std::max(worst, std::optional(rules::SeverityOf(finding.code)));
    return worst;
}

} // namespace

FindingsWatch::FindingsWatch(WorkSession& session, QObject* parent) : QObject(parent), m_session(session)
{
    connect(&session, &WorkSession::Reopened, this, [this] { BeginAnew(); });
    connect(&session, &WorkSession::Edited, this,
            [this](const QStringList& categories) { NoteEdited(categories); });
    connect(&session, &WorkSession::Completed, this, [this] { CheckNearby(); });
    connect(&session, &WorkSession::FileChanged, this, [this] { NoteEdited({}); });
    connect(&session, &WorkSession::CategoryChosen, this, [this] {
        if (m_session.IsOpen() && !IsCurrent(m_session.CategoryText())) CheckNearby();
    });
    BeginAnew();
}

FindingsWatch::~FindingsWatch() = default;

const std::vector<rules::Finding>& FindingsWatch::Of(const CString& category) const
{
    static const std::vector<rules::Finding> None;
    const auto found = m_shown.find(category);
    return found == m_shown.end() ? None : found->second;
}

std::span<const rules::Finding> FindingsWatch::Of(const CString& category, std::size_t position) const
{
    const std::vector<rules::Finding>& all = Of(category);
    const auto [first, last] = std::equal_range(
        all.begin(), all.end(), rules::Finding{.category = {}, .position = static_cast<int>(position) + 1},
        [](const auto& a, const auto& b) { return a.position < b.position; });
    return {first, last};
}

CStringArray FindingsWatch::Categories() const
{
    CStringArray texts{CString()};
    for (const rules::Specialty& specialty : m_session.DraftSoFar().Specialties()) {
        texts.append(specialty.name);
        for (const rules::BigCategory& big : specialty.bigCategories) {
            texts.append(specialty.name + u'\\' + big.name);
            for (const rules::SmallCategoryPtr& small : big.smallCategories)
                texts.append(small->text);
        }
    }
    std::map<CString, bool> isListed;
    for (const CString& text : texts)
        isListed[text] = true;
    // What the reader has passed over is in no list.
    for (const auto& [text, findings] : m_shown)
        if (!isListed[text]) texts.append(text);
    texts.removeIf([this](const CString& text) { return !m_shown.contains(text); });
    return texts;
}

std::optional<rules::Severity> FindingsWatch::WorstOf(const CString& category) const
{
    return Worst(Of(category));
}

std::optional<rules::Severity> FindingsWatch::WorstOf(const CString& category, std::size_t position) const
{
    return Worst(Of(category, position));
}

CString FindingsWatch::TextOf(const CString& category, std::size_t position) const
{
    CStringArray lines;
    for (const rules::Finding& finding : Of(category, position))
        lines.append(u"%1：%2"_s.arg(SeverityText(rules::SeverityOf(finding.code)), finding.text));
    return lines.join(u'\n');
}

bool FindingsWatch::IsCurrent(const CString& category) const
{
    const auto found = m_checked.find(category);
    return found != m_checked.end() && found->second.category == m_session.DraftSoFar().Find(category);
}

void FindingsWatch::BeginAnew()
{
    m_nearby.Leave();
    m_further.Leave();
    CStringArray former;
    for (const auto& [category, findings] : m_shown)
        former.append(category);
    m_checked.clear();
    m_ofFile.clear();
    m_shown.clear();
    m_isCurrent = !m_session.IsOpen();
    emit FindingsChanged(former);
    if (!m_isCurrent) CheckNearby();
}

void FindingsWatch::NoteEdited(const CStringArray& categories)
{
    m_isCurrent = !m_session.IsOpen();
    if (m_isCurrent) return;
    for (const CString& category : categories)
        Show(category); // where the rules stand now
    emit FindingsChanged(categories);
    CheckNearby();
}

/// The categories that the draft has in another state than the one that was checked.
std::vector<rules::SmallCategoryPtr> FindingsWatch::Unchecked() const
{
    std::vector<rules::SmallCategoryPtr> unchecked;
    for (const rules::Specialty& specialty : m_session.DraftSoFar().Specialties())
        for (const rules::BigCategory& big : specialty.bigCategories)
            for (const rules::SmallCategoryPtr& small : big.smallCategories) {
                const auto known = m_checked.find(small->text);
                if (known == m_checked.end() || known->second.category != small) unchecked.push_back(small);
            }
    return unchecked;
}

/// What was checked before and edited since, and the chosen category.
void FindingsWatch::CheckNearby()
{
    m_further.Leave();
    std::vector<rules::SmallCategoryPtr> wanted = Unchecked();
    std::erase_if(wanted, [this](const rules::SmallCategoryPtr& category) {
        return category->text != m_session.CategoryText() && !m_checked.contains(category->text);
    });
    std::stable_partition(wanted.begin(), wanted.end(), [this](const rules::SmallCategoryPtr& category) {
        return category->text == m_session.CategoryText();
    });
    if (wanted.empty()) {
        m_nearby.Leave();
        return CheckFurther();
    }
    m_nearby.Start([this, wanted, facts = m_session.Facts()](StepControl& control) {
        CheckedList checked;
        for (const rules::SmallCategoryPtr& category : wanted) {
            control.Check();
            checked.push_back({category, rules::CheckCategory(*category, facts->checks)});
        }
        return [this, checked = std::move(checked)] {
            Take(checked);
            CheckFurther();
        };
    });
}

void FindingsWatch::CheckFurther()
{
    if (!m_session.IsWhole()) return; // the others come first
    std::vector<rules::SmallCategoryPtr> wanted = Unchecked();
    if (wanted.empty()) return CheckFile();
    m_further.Start([this, wanted = std::move(wanted), facts = m_session.Facts()](StepControl& control) {
        QElapsedTimer begun;
        begun.start();
        CheckedList checked;
        for (const rules::SmallCategoryPtr& category : wanted) {
            control.Check();
            checked.push_back({category, rules::CheckCategory(*category, facts->checks)});
            if (begun.elapsed() > TellEvery) break;
        }
        return [this, checked = std::move(checked)] {
            Take(checked);
            CheckFurther();
        };
    });
}

/// How the file is built, and bill numbers, which take all categories.
void FindingsWatch::CheckFile()
{
    m_further.Start([this, state = m_session.Draft().Snapshot(), structure = m_session.Structure(),
                     facts = m_session.Facts()](StepControl& control) {
        rules::FindingList list;
        rules::CheckStructure(*state, structure, facts->checks, list);
        control.Check();
        ByCategory findings;
        for (rules::Finding& finding : list.All())
            findings[finding.category].push_back(std::move(finding));
        for (rules::Finding& finding : rules::CheckBillNumbers(*state, facts->checks))
            findings[finding.category].push_back(std::move(finding));
        return [this, findings = std::move(findings)] { TakeFile(findings); };
    });
}

void FindingsWatch::Take(CheckedList checked)
{
    CStringArray categories;
    for (Checked& one : checked) {
        const CString text = one.category->text;
        m_checked[text] = std::move(one);
        Show(text);
        categories.append(text);
    }
    emit FindingsChanged(categories);
}

void FindingsWatch::TakeFile(ByCategory findings)
{
    CStringArray categories;
    for (const auto& [category, former] : m_ofFile)
        categories.append(category);
    for (const auto& [category, now] : findings)
        if (!m_ofFile.contains(category)) categories.append(category);
    m_ofFile = std::move(findings);
    for (const CString& category : categories)
        Show(category);
    m_isCurrent = true;
    emit FindingsChanged(categories);
}

/// Brings together what is known of a category.
void FindingsWatch::Show(const CString& category)
{
    std::vector<rules::Finding> all;
    if (const auto ofFile = m_ofFile.find(category); ofFile != m_ofFile.end()) all = ofFile->second;
    if (const auto own = m_checked.find(category); own != m_checked.end())
        all.insert(all.end(), own->second.findings.begin(), own->second.findings.end());
    if (const rules::SmallCategoryPtr state = m_session.DraftSoFar().Find(category)) Place(all, *state);
    if (all.empty())
        m_shown.erase(category);
    else
        m_shown[category] = std::move(all);
}

} // namespace editor
