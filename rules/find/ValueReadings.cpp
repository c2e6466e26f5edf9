#include "rules/find/ValueReadings.h"

#include "rules/find/FoldedText.h"
#include "rules/match/Trace.h"

#include <algorithm>

namespace rules {

ValueReadings::ValueReadings(const CString& value, const NumberReader& numbers)
    : m_numbers(numbers), m_folded(Folded(value)), m_readings{value}
{
    const CString number = NumberIn(value);
    if (number.isEmpty()) return;
    m_isNumber = true;
    m_readings.append(number);
    for (const auto& [before, behind] : numbers.Forms())
        m_readings.append(before + number + behind);
}

/// The number without what the attribute's values have around it; empty when there is none.
CString ValueReadings::NumberIn(const CString& value) const
{
    if (PlainNumber(value)) return value;
    for (const auto& [before, behind] : m_numbers.Forms()) {
        const CString head = Folded(before);
        const CString tail = Folded(behind);
        const qsizetype length = m_folded.size() - head.size() - tail.size();
        if (length <= 0 || !m_folded.startsWith(head) || !m_folded.endsWith(tail)) continue;
        const CString number = m_folded.sliced(head.size(), length);
        if (PlainNumber(number)) return number;
    }
    return {};
}

bool ValueReadings::Finds(const Condition& condition, const CString& foldedValue) const
{
    const auto holds = [&](const CString& reading) { return Judge(condition, m_numbers, reading).holds; };
    if (!condition.isValueForm) return std::any_of(m_readings.begin(), m_readings.end(), holds);
    // ≠65 is none that somebody means who looks for 65, however it is written.
    if (condition.equalOperator == u"≠")
        return m_folded != foldedValue && std::all_of(m_readings.begin(), m_readings.end(), holds);
    if (condition.equalOperator != u"＝") return false;
    if (m_isNumber) return std::any_of(m_readings.begin(), m_readings.end(), holds);
    return !foldedValue.isEmpty() && foldedValue.contains(m_folded);
}

} // namespace rules
