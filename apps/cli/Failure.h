#pragma once

#include "platform/Text.h"

#include <stdexcept>

namespace cli {

/// A command was refused or failed. The text is the reason, ready to be shown to a person; the program ends
/// with 1.
class Refusal : public std::runtime_error
{
public:
    explicit Refusal(const CString& reason) : std::runtime_error(reason.toStdString()) {}
};

/// The command line does not fit the command. The program shows the text and the usage line and ends with 2.
class UsageError : public std::runtime_error
{
public:
    explicit UsageError(const CString& reason) : std::runtime_error(reason.toStdString()) {}
};

} // namespace cli
