#include "bench/CompareFigures.h"

#include "bench/Measure.h"
#include "platform/Files.h"
#include "rules/compare/DifferenceText.h"
#include "rules/model/Snapshot.h"

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

constexpr std::size_t ChangedRules = 100;

/// The file with other quantities in a hundred rules that lie evenly in it.
QByteArray WithChanges(QByteArray bytes)
{
    const qsizetype step = bytes.size() / static_cast<qsizetype>(ChangedRules);
    qsizetype at = 0;
    for (std::size_t i = 0; i < ChangedRules; ++i) {
        const QByteArray field = "strFormula=\"";
        const qsizetype found = bytes.indexOf(field, at);
        if (found < 0) throw std::runtime_error("the input has too few rules");
        bytes.insert(found + field.size(), "2×");
        at += step;
    }
    return bytes;
}

rules::ConfigurationPtr Read(const CString& path)
{
    CString reason;
    rules::ConfigurationPtr read = rules::ReadRuleFile(path, reason);
    if (!read) throw std::runtime_error(reason.toStdString());
    return read;
}

void CompareBoth(const CString& a, const CString& b)
{
    const rules::Comparison comparison = rules::Compare(*Read(a), *Read(b));
    if (comparison.Changed() != ChangedRules) throw std::runtime_error("another number of rules has changed");
    const CStringArray lines = rules::DifferenceLines(comparison);
    Keep(&lines);
}

void OpenBoth(const CString& a, const CString& b)
{
    const rules::ConfigurationPtr first = Read(a);
    const rules::ConfigurationPtr second = Read(b);
    Keep(&first);
    Keep(&second);
}

} // namespace

bool Compare(const Input& input, int rounds)
{
    const CString changed = input.path + u".changed"_s;
    platform::Files().WriteInPlace(changed, WithChanges(platform::Files().Read(input.path).value()));
    const Timed timed = Alternate(
        rounds, [&] { CompareBoth(input.path, changed); }, [&] { OpenBoth(input.path, changed); });
    return Report({"compare", "open_both", 2.0}, timed.oursMs, timed.peerMs, timed.Ratio());
}

} // namespace bench
