#pragma once

#include "e2e/EditorUser.h"

namespace test {

/// A user of the editor in either mode.
class ModeJourney : public EditorTest, public ::testing::WithParamInterface<SQdDeInfo::EQdDeMode>
{
protected:
    ModeJourney() { MakeProject(GetParam()); }

    /// Gives the selected rule the items of the mode: a bill item with a quota item, or a quota item alone.
    void PickItems(const QString& title);
    /// The rule of `EditorTest::AddRangeRule` with these items, as XML.
    static QByteArray ItemRule();
};

/// Both modes, as the values of a test suite.
inline auto Modes()
{
    return ::testing::Values(SQdDeInfo::BillMode, SQdDeInfo::QuotaMode);
}

/// What a mode is called in the name of a test.
inline const char* NameOfMode(const ::testing::TestParamInfo<SQdDeInfo::EQdDeMode>& mode)
{
    return mode.param == SQdDeInfo::BillMode ? "Bill" : "Quota";
}

} // namespace test
