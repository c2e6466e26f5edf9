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

/// Nobody takes what the command writes to standard output any more, as behind `| head`. The program ends
/// with 1, without a word.
class NobodyListens : public std::runtime_error
{
public:
    NobodyListens() : std::runtime_error("nobody listens") {}
};

/// The command line does not fit the command. The program shows the text and the usage line and ends with 2.
class UsageError : public std::runtime_error
{
public:
    explicit UsageError(const CString& reason) : std::runtime_error(reason.toStdString()) {}
};

} // namespace cli
