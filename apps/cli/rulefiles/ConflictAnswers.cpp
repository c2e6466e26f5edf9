#include "cli/rulefiles/ConflictAnswers.h"

#include "cli/reading/Failure.h"
#include "platform/Console.h"

using namespace Qt::StringLiterals;

namespace cli {

namespace {

using rules::Side;

const CString MineWord = u"mine"_s;
const CString TheirsWord = u"theirs"_s;

/// What the person at the terminal chooses; nothing when there is no answer.
std::optional<Side> Ask()
{
    for (;;) {
        platform::WriteErr(u"取哪一边？m 我方，t 对方，q 不合并："_s);
        const auto line = platform::ReadLine();
        const CString answer = line ? line->trimmed().toLower() : u"q"_s;
        if (answer == u"m" || answer == MineWord) return Side::Mine;
        if (answer == u"t" || answer == TheirsWord) return Side::Theirs;
        if (answer == u"q") return std::nullopt;
    }
}

} // namespace

Option PreferOption()
{
    return {u"prefer"_s, u"SIDE"_s, u"冲突一律取这一边：mine 或 theirs"_s, {}};
}

std::optional<Side> PreferredSide(const Arguments& arguments)
{
    if (!arguments.Has(u"prefer"_s)) return std::nullopt;
    const CString word = arguments.Value(u"prefer"_s);
    if (word != MineWord && word != TheirsWord)
        throw UsageError(u"--prefer 只能是 mine 或 theirs：%1"_s.arg(word));
    return word == MineWord ? Side::Mine : Side::Theirs;
}

std::vector<Side> TellAndAnswer(const std::vector<rules::Conflict>& conflicts, std::optional<Side> preferred)
{
    std::vector<Side> answers;
    const bool asks = !preferred && platform::CanAsk();
    for (std::size_t i = 0; i < conflicts.size(); ++i) {
        platform::WriteErr(u"冲突 %1/%2　%3"_s.arg(i + 1).arg(conflicts.size()).arg(conflicts[i].Describe()));
        const std::optional<Side> answer = asks ? Ask() : preferred;
        if (answer) answers.push_back(*answer);
        if (asks && !answer) break;
    }
    return answers;
}

} // namespace cli
