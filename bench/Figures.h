#pragma once

#include "platform/Text.h"

namespace bench {

/// A rule file of the generated kind.
struct Input
{
    QByteArray nativePath;
    CString path;
    CString spec;
};

/// Each prints its line and tells whether the bar is met. `Open` and `Save` give their ratio for the
/// comparison of sizes.
bool Open(const char* name, const Input& input, int rounds, double bar, double& ratio);
bool Save(const char* name, const Input& input, int rounds, double bar, double& ratio);
bool Resolve(const Input& input, int rounds);

/// Each measurement of these two is a process of its own: what the peer's million pieces leave of the heap
/// would slow down whoever comes next, and a process has but one peak of memory.
bool OpenVersusDom(const Input& input, int rounds, const QString& program);
bool OpenMemory(const Input& input, const QString& program);

/// The work of such a process: "time-store", "time-dom", "peak-store" or "peak-raw". Prints milliseconds or
/// bytes.
int RunChild(const QString& work, const Input& input);

} // namespace bench
