#pragma once

/// Marks what the library of the rules offers to a host application. Everything else stays hidden.
///
/// KTQDDE_BUILD is defined while this project itself is compiled; a host that uses the installed library gets
/// the import form on Windows.
#if defined(_WIN32)
#if defined(KTQDDE_BUILD)
#define KTQDDE_RULES_EXPORT __declspec(dllexport)
#else
#define KTQDDE_RULES_EXPORT __declspec(dllimport)
#endif
#elif defined(__GNUC__)
#define KTQDDE_RULES_EXPORT __attribute__((visibility("default")))
#else
#define KTQDDE_RULES_EXPORT
#endif
