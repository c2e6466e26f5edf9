#pragma once

/// Marks what the module offers to a host application. Everything else stays hidden.
///
/// KTQDDE_BUILD is defined while this project itself is compiled; a host that uses the installed
/// module gets the import form on Windows.
#if defined(_WIN32)
#if defined(KTQDDE_BUILD)
#define KTQDDE_EXPORT __declspec(dllexport)
#else
#define KTQDDE_EXPORT __declspec(dllimport)
#endif
#elif defined(__GNUC__)
#define KTQDDE_EXPORT __attribute__((visibility("default")))
#else
#define KTQDDE_EXPORT
#endif
