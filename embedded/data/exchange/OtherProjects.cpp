#include "embedded/data/exchange/OtherProjects.h"

#include "embedded/data/catalogue/CatalogueDatabase.h"
#include "platform/TimeText.h"

#include <utility>

namespace embedded {

using namespace Qt::StringLiterals;

namespace {

/// A project as a refusal names it, with the day around which the office was last told what it uses.
CString Named(const ProjectUse& use)
{
    return u"办公室的另一个工程“%1”（%2 前后用过）"_s.arg(use.project, platform::DayText(use.at));
}

} // namespace

OtherProjects::OtherProjects(CArray<ProjectUse> uses, CArray<Library> before, Database& database)
    : m_uses(std::move(uses)), m_before(std::move(before))
{
    if (m_uses.isEmpty()) return;
    const CatalogueData data = ReadCatalogue(database);
    for (const ProjectUse& use : std::as_const(m_uses))
        m_hadSpecialty.append(HasSpecialty(data, use.specialty));
}

void OtherProjects::Check(const CatalogueData& data, const CArray<Library>& after, ImportReport& report) const
{
    for (qsizetype other = 0; other < m_uses.size(); ++other) {
        const ProjectUse& use = m_uses[other];
        if (m_hadSpecialty[other] && !HasSpecialty(data, use.specialty))
            report.refused.append({0, u"文件中没有%1的当前专业“%2”"_s.arg(Named(use), use.specialty)});
        for (const auto& [word, code] : use.libraries)
            CheckLibrary(use, word, code, after, report);
    }
}

void OtherProjects::CheckLibrary(const ProjectUse& use, const CString& word, const CString& code,
                                 const CArray<Library>& after, ImportReport& report) const
{
    const auto role = RoleOfWord(word);
    if (!role || code.isEmpty()) return;
    if (FindLibrary(m_before, *role, code) == nullptr || FindLibrary(after, *role, code) != nullptr) return;
    report.refused.append(
        {0, u"%1正在使用%2“%3”，不能去掉，也不能改作别用"_s.arg(Named(use), RoleLabel(*role), code)});
}

} // namespace embedded
