#include "tree/SMember.h"

#include "TreeTesting.h"

#include <stdexcept>

using namespace Qt::StringLiterals;

// How rules move within their list. Rules are named by letters: A has id 1, B has id 2 and so on.

namespace {

CPath To(char letter)
{
    CPath path{};
    path.configId = letter - 'A' + 1;
    return path;
}

class SMemberMove : public ::testing::Test
{
protected:
    /// The category holds the rules A, B, ... from now on.
    void Fill(int count)
    {
        m_member.DeleteAllConfig();
        for (int id = 1; id <= count; ++id) {
            auto* rule = new ConfigNode;
            rule->SetId(id);
            m_member.AddConfig(rule);
        }
    }

    /// The letters in list order.
    std::string Order() const
    {
        std::string order;
        for (const ConfigNode* rule : m_member.GetAllConfig())
            order += static_cast<char>('A' + rule->GetId() - 1);
        return order;
    }

    SMember& Member() { return m_member; }
    bool Up(char letter) { return m_member.MoveUpConfig(To(letter)); }
    bool Down(char letter) { return m_member.MoveDownConfig(To(letter)); }

private:
    SMember m_member;
};

} // namespace

TEST_F(SMemberMove, FirstRuleDoesNotMoveUp)
{
    Fill(4);
    EXPECT_FALSE(Up('A'));
    EXPECT_EQ(Order(), "ABCD");
}

TEST_F(SMemberMove, LastRuleDoesNotMoveUp)
{
    Fill(4);
    EXPECT_FALSE(Up('D'));
    EXPECT_EQ(Order(), "ABCD");
}

TEST_F(SMemberMove, SecondRuleMovesUp)
{
    Fill(4);
    EXPECT_TRUE(Up('B'));
    EXPECT_EQ(Order(), "BACD");
}

TEST_F(SMemberMove, RuleBeforeTheLastMovesUp)
{
    Fill(4);
    EXPECT_TRUE(Up('C'));
    EXPECT_EQ(Order(), "ACBD");
}

TEST_F(SMemberMove, RuleBeforeTheLastDoesNotMoveDown)
{
    Fill(4);
    EXPECT_FALSE(Down('C'));
    EXPECT_EQ(Order(), "ABCD");
}

TEST_F(SMemberMove, RuleFurtherUpMovesDown)
{
    Fill(4);
    EXPECT_TRUE(Down('B'));
    EXPECT_EQ(Order(), "ACBD");
    EXPECT_TRUE(Down('A'));
    EXPECT_EQ(Order(), "CABD");
}

TEST_F(SMemberMove, LastRuleDoesNotMoveDown)
{
    Fill(4);
    EXPECT_FALSE(Down('D'));
    EXPECT_EQ(Order(), "ABCD");
}

TEST_F(SMemberMove, UnknownRuleMovesInNeitherDirection)
{
    for (const int count : {2, 3, 4}) {
        Fill(count);
        const std::string before = Order();
        EXPECT_FALSE(Up('Z'));
        EXPECT_FALSE(Down('Z'));
        EXPECT_EQ(Order(), before);
    }
}

TEST_F(SMemberMove, OfTwoRulesNoneMoves)
{
    Fill(2);
    EXPECT_FALSE(Up('A') || Up('B') || Down('A') || Down('B'));
    EXPECT_EQ(Order(), "AB");
}

TEST_F(SMemberMove, SingleRuleDoesNotMoveUp)
{
    Fill(1);
    EXPECT_FALSE(Up('A'));
    EXPECT_FALSE(Up('Z'));
    EXPECT_EQ(Order(), "A");
}

TEST_F(SMemberMove, SingleRuleMovingDownFailsTheIndexCheck)
{
    Fill(1);
    EXPECT_THROW(Down('A'), std::out_of_range);
    EXPECT_THROW(Down('Z'), std::out_of_range);
    EXPECT_EQ(Order(), "A");
}

TEST_F(SMemberMove, InAnEmptyListUpIsFalseAndDownFailsTheIndexCheck)
{
    Fill(0);
    EXPECT_FALSE(Up('A'));
    EXPECT_THROW(Down('A'), std::out_of_range);
}

TEST_F(SMemberMove, OnlyTheRuleIdOfThePathCounts)
{
    Fill(4);
    EXPECT_TRUE(Member().MoveUpConfig(CPath{9, 9, 9, 2, 9, 9, 9, 9}));
    EXPECT_EQ(Order(), "BACD");
}
