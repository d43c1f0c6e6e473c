// The parser of input files, with assertions that throw: what it takes for granted of a text need not hold
// for one of a user's. It belongs in one source file only.
#pragma once

#include <stdexcept>

namespace tarvane::app {

using namespace vessel;

struct TomlAssertion : std::logic_error {
    using std::logic_error::logic_error;
};

} // namespace tarvane::app

// In a release build the parser drops its assertions, and lets the compiler go by them besides.
#pragma push_macro("NDEBUG")
#undef NDEBUG
#define TOML_ASSERT(expr)                                                                          \
    static_cast<void>((expr) || (throw ::tarvane::app::TomlAssertion(#expr), false))
#define TOML_ENABLE_FORMATTERS 0
#ifdef __GNUC__
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wterminate" // a few stand in routines that may not throw
#endif
#include <toml++/toml.h>
#ifdef __GNUC__
#pragma GCC diagnostic pop
#endif
#pragma pop_macro("NDEBUG")
