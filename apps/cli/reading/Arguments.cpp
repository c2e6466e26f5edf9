#include "cli/reading/Arguments.h"

#include "cli/reading/Failure.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace cli {

namespace {

bool LooksLikeOption(const CString& word)
{
    return word.size() > 1 && word.startsWith(u'-');
}

const Option& FindOption(const CString& spelling, const CArray<Option>& options)
{
    const auto found = std::find_if(options.begin(), options.end(), [&](const Option& option) {
        return spelling == u"--"_s + option.name ||
               (!option.letter.isNull() && spelling == CString(u'-') + option.letter);
    });
    if (found == options.end()) throw UsageError(u"不认识的选项：%1"_s.arg(spelling));
    return *found;
}

} // namespace

Arguments::Arguments(const CStringArray& words, const CArray<Option>& options)
{
    for (qsizetype i = 0; i < words.size(); ++i) {
        if (words[i] == u"--") {
            m_positional += words.mid(i + 1);
            return;
        }
        if (LooksLikeOption(words[i])) {
            TakeOption(words, i, options);
        } else {
            m_positional += words[i];
        }
    }
}

CString Arguments::Value(const CString& name) const
{
    const auto found = m_values.find(name);
    return found == m_values.end() ? CString() : found->second;
}

void Arguments::TakeOption(const CStringArray& words, qsizetype& index, const CArray<Option>& options)
{
    const CString& word = words[index];
    const qsizetype equals = word.startsWith(u"--") ? word.indexOf(u'=') : -1;
    const Option& option = FindOption(equals < 0 ? word : word.left(equals), options);
    CString value;
    if (option.valueName.isEmpty()) {
        if (equals >= 0) throw UsageError(u"选项 --%1 不带值"_s.arg(option.name));
    } else if (equals >= 0) {
        value = word.mid(equals + 1);
    } else {
        if (index + 1 >= words.size() || LooksLikeOption(words[index + 1]))
            throw UsageError(u"选项 --%1 缺少值 %2"_s.arg(option.name, option.valueName));
        value = words[++index];
    }
    if (!option.valueName.isEmpty() && value.isEmpty())
        throw UsageError(u"选项 --%1 的值不能为空"_s.arg(option.name));
    if (!m_values.emplace(option.name, value).second) throw UsageError(u"选项 --%1 重复"_s.arg(option.name));
}

} // namespace cli
