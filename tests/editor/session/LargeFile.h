#pragma once

#include "editor/session/SessionFixture.h"
#include "platform/Files.h"

namespace test {

/// A session on a project whose current configuration has so many rules in two specialties that they are not
/// all read at once.
class LargeFile : public SessionTest
{
protected:
    LargeFile()
    {
        for (const rules::Specialty& specialty : m_session->Facts()->offered->Specialties())
            if (specialty.name == QStringLiteral("电气"))
                m_lamps = specialty.bigCategories.front().smallCategories.front()->text;
        rules::Draft many(Saved(), m_session->Facts()->offered);
        for (const CString& category : {Pipes, m_lamps}) {
            std::vector<rules::Rule> rules;
            for (int i = 0; i < Rules; ++i)
                rules.push_back(RuleFor(QStringLiteral("材质"), QStringLiteral("管材%1").arg(i)));
            many.Apply(rules::InsertRules(many, category, 0, rules, {}));
        }
        WriteOutside(many);
    }

    static constexpr int Rules = 2000;
    CString m_lamps; ///< a category of another specialty than that of the project
};

} // namespace test
