#pragma once

#include "platform/Text.h"

#include <map>

namespace cli {

/// One option of a command.
struct Option
{
    CString name;      ///< without the dashes, as in "--config"
    CString valueName; ///< how the usage text calls the value; empty for an option that takes none
    CString help;      ///< one line
    QChar letter;      ///< the short form, as in "-o"; null when there is none
};

/// The arguments of one command, taken apart: options anywhere, in the forms `--name value`, `--name=value`
/// and `-n value`; everything else, "-" included, is positional, and so is all that follows "--".
class Arguments
{
public:
    /// Takes `words` apart by what `options` allows. Raises `UsageError` for an unknown or repeated option, a
    /// missing value and a value where none belongs.
    Arguments(const CStringArray& words, const CArray<Option>& options);

    const CStringArray& Positional() const noexcept { return m_positional; }
    bool Has(const CString& name) const { return m_values.contains(name); }
    /// The value of an option; empty when it was not given.
    CString Value(const CString& name) const;

private:
    /// Reads the option at `words[index]` and moves `index` to its last word.
    void TakeOption(const CStringArray& words, qsizetype& index, const CArray<Option>& options);

    CStringArray m_positional;
    std::map<CString, CString> m_values;
};

} // namespace cli
