// The parser of input files, with assertions that throw: what it assumes about a text need not be true
// of a user's. It takes seconds to compile: it belongs in the few source files that parse.
#pragma once

#include <stdexcept>

namespace tarvane::app {

using namespace vessel;

struct TomlAssertion : std::logic_error {
    using std::logic_error::logic_error;
};

} // namespace tarvane::app

// In a release build the parser drops its assertions, and lets the compiler rely on them.
#pragma push_macro("NDEBUG")
#undef NDEBUG
#define TOML_ASSERT(expr)                                                                          \
    static_cast<void>((expr) || (throw ::tarvane::app::TomlAssertion(#expr), false))
#define TOML_ENABLE_FORMATTERS 0
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wterminate" // a few are in routines that may not throw
#endif
#include <toml++/impl/forward_declarations.h>
// Its table of blanks takes for granted that most letters from U+00A1 on never come: they are no blanks.
#undef TOML_UNREACHABLE
#define TOML_UNREACHABLE return false
#include <toml++/impl/unicode.h>
#undef TOML_UNREACHABLE
#define TOML_UNREACHABLE __builtin_unreachable()
#include <toml++/toml.h>
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic pop
#endif
#pragma pop_macro("NDEBUG")
