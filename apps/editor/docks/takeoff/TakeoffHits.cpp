#include "editor/docks/takeoff/TakeoffHits.h"

#include "tables/TableError.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

constexpr int TellInterval = 100; ///< milliseconds

/// The rules of the categories that the host offers: the others stay in the file, and nothing is priced by
/// them.
rules::ConfigurationPtr OfferedRules(const rules::Draft& draft)
{
    std::vector<rules::Specialty> offered = draft.Specialties();
    for (rules::Specialty& specialty : offered)
        for (rules::BigCategory& big : specialty.bigCategories)
            std::erase_if(big.smallCategories, [&](const rules::SmallCategoryPtr& small) {
                return !draft.IsOffered(small->text);
            });
    return std::make_shared<const rules::Configuration>(std::move(offered));
}

/// Whether two snapshots are made of the same states of categories.
bool IsSame(const rules::Configuration& a, const rules::Configuration& b)
{
    const auto statesOf = [](const rules::Configuration& configuration) {
        std::vector<rules::SmallCategoryPtr> states;
        for (const rules::Specialty& specialty : configuration.Specialties())
            for (const rules::BigCategory& big : specialty.bigCategories)
                states.insert(states.end(), big.smallCategories.begin(), big.smallCategories.end());
        return states;
    };
    return statesOf(a) == statesOf(b);
}

} // namespace

TakeoffHits::TakeoffHits(WorkSession& session, QObject* parent) : QObject(parent), m_session(session)
{
    connect(&session, &WorkSession::Reopened, this, [this] {
        if (m_session.OpenedProject() == nullptr)
            Close();
        else
            Price();
    });
    connect(&session, &WorkSession::Edited, this, [this] { Price(); });
    connect(&session, &WorkSession::FileChanged, this, [this] {
        if (m_figures && !IsSame(*m_figures->rules, *OfferedRules(m_session.Draft()))) Price();
    });
    connect(&m_telling, &QTimer::timeout, this, &TakeoffHits::StateChanged);
    m_telling.setInterval(TellInterval);
}

TakeoffHits::~TakeoffHits() = default;

void TakeoffHits::Open(const CString& path)
{
    m_path = path;
    m_table.reset();
    m_error.clear();
    TakeFigures(nullptr);
    m_work.Start([this, path](StepControl& control) -> BackgroundWork::Outcome {
        CString error;
        try {
            return [this, table = TakeoffTable::Read(path, control)] {
                m_table = table;
                Price();
            };
        } catch (const tables::TableError& raised) {
            error = raised.Message();
        } catch (const TakeoffTooLarge& raised) {
            error = QString::fromUtf8(raised.what());
        }
        return [this, error] {
            m_error = error;
            Enter(State::Failed);
        };
    });
    Enter(State::Reading);
}

void TakeoffHits::Reload()
{
    if (!m_path.isEmpty()) Open(CString(m_path));
}

void TakeoffHits::Close()
{
    m_work.Leave();
    m_path.clear();
    m_table.reset();
    m_error.clear();
    TakeFigures(nullptr);
    Enter(State::Closed);
}

void TakeoffHits::Enter(State state)
{
    m_state = state;
    if (state == State::Reading || state == State::Pricing)
        m_telling.start();
    else
        m_telling.stop();
    emit StateChanged();
}

void TakeoffHits::Price()
{
    if (!m_table) return; // it is priced when it is read
    if (!m_session.IsOpen()) {
        m_work.Leave();
        TakeFigures(nullptr);
        return Enter(State::Current);
    }
    m_work.Start([this, table = m_table, rules = OfferedRules(m_session.Draft()),
                  facts = m_session.Facts()](StepControl& control) -> BackgroundWork::Outcome {
        return [this, figures = PriceTable(table, rules, facts, control)] {
            TakeFigures(figures);
            Enter(State::Current);
        };
    });
    Enter(State::Pricing);
}

void TakeoffHits::TakeFigures(TakeoffFiguresPtr figures)
{
    if (!figures && !m_figures) return;
    m_figures = std::move(figures);
    m_indexes.clear();
    emit HitsChanged();
}

std::optional<std::size_t> TakeoffHits::PricedIndex(const CategoryHits& hits, const CString& category,
                                                    std::size_t position) const
{
    const rules::SmallCategoryPtr now = m_session.Draft().Find(category);
    if (!now || position >= now->rules.size()) return std::nullopt;
    if (now == hits.category) return position;
    std::map<int, std::size_t>& indexes = m_indexes[category];
    if (indexes.empty())
        for (std::size_t i = 0; i < hits.category->rules.size(); ++i)
            indexes.try_emplace(hits.category->rules[i].id, i);
    const auto known = indexes.find(now->rules[position].id);
    return known == indexes.end() ? std::nullopt : std::optional(known->second);
}

std::vector<std::uint32_t> TakeoffHits::RowsOf(const CString& category, std::size_t position) const
{
    const CategoryHits* const hits = m_figures ? m_figures->HitsOf(category) : nullptr;
    const auto index = hits != nullptr ? PricedIndex(*hits, category, position) : std::nullopt;
    if (!index) return {};
    const auto rows = hits->RowsOf(*index);
    return {rows.begin(), rows.end()};
}

std::optional<std::uint64_t> TakeoffHits::HitsOf(const CString& category, std::size_t position) const
{
    const CategoryHits* const hits = m_figures ? m_figures->HitsOf(category) : nullptr;
    const auto index = hits != nullptr ? PricedIndex(*hits, category, position) : std::nullopt;
    return index ? std::optional<std::uint64_t>(hits->RowsOf(*index).size()) : std::nullopt;
}

std::optional<std::uint64_t> TakeoffHits::ComponentsOf(const CString& category) const
{
    const CategoryHits* const hits = m_figures ? m_figures->HitsOf(category) : nullptr;
    return hits != nullptr ? std::optional(hits->Components()) : std::nullopt;
}

std::optional<std::uint64_t> TakeoffHits::OnDefaultOf(const CString& category) const
{
    const CategoryHits* const hits = m_figures ? m_figures->HitsOf(category) : nullptr;
    return hits != nullptr ? std::optional(hits->onDefault) : std::nullopt;
}

} // namespace editor
