// What differs from one platform to the next, besides the files. Only the folder host/ uses it.
#pragma once

#include "frame/text.h"
#include "frame/types.h"

#include <initializer_list>
#include <string_view>

namespace tarvane {

// The pieces one after the other; empty when they do not fit.
template <std::size_t N>
Int put_together(Text<N>& text, std::initializer_list<std::string_view> pieces) {
    std::size_t size = 0;
    for (const std::string_view piece : pieces)
        size += piece.size();
    text.clear();
    if (size > N) return 0;
    Int column = 1;
    for (const std::string_view piece : pieces) {
        text.put(column, piece);
        column += static_cast<Int>(piece.size());
    }
    return static_cast<Int>(size);
}

// A text with a NUL after it, cut to the room there is.
template <std::size_t N>
class Terminated {
  public:
    explicit Terminated(std::string_view text) {
        const std::size_t count = text.size() < N - 1 ? text.size() : N - 1;
        for (std::size_t i = 0; i < count; ++i)
            chars[i] = text[i];
        chars[count] = '\0';
        whole = count == text.size();
    }
    const char* get() const { return chars; }
    bool complete() const { return whole; }

  private:
    char chars[N];
    bool whole;
};

inline constexpr std::string_view MAKER = "Kessendale Lab";
inline constexpr std::string_view PRODUCT_KEY = "TARVANE";
inline constexpr std::string_view VERSION_KEY = "2024";

namespace platform {

// Full path of the file that holds the engine, and of the running program; the length, 0 if unknown.
Int engine_file(char* into, Int width);
Int program_file(char* into, Int width);

#ifndef _WIN32
// Home folder of the user, from the user database; the length, 0 if unknown.
Int home_folder(Text<260>& home);
// The same from a file in the form of /etc/passwd, for the user of a number.
Int home_in_database(std::string_view database, std::uint32_t user, Text<260>& home);
// The user's own settings file; the length of its path, 0 if that is too long.
Int user_settings_file(std::string_view home, std::string_view product, std::string_view version,
                       Text<600>& path);
#endif

// A string value of the suite's settings. False when it is absent.
bool setting(std::string_view product, std::string_view version, std::string_view name,
             Text<260>& value);
// The data folder of a suite whose user chose no other, with a separator at its end; the length, 0
// if it can't be had. Selectors: 268 the user's, 269 common, 270 and 271 common documents.
Int default_system_folder(Int selector, std::string_view product, std::string_view version,
                          Text<260>& path);

void message_box(void* window, const char* text, const char* title);
void dialog_text(void* window, Int control, const char* text);
void end_dialog(void* window);

// Starts a program, by the path of its file and its command line, and waits for its end if wanted. Without
// a path the system looks for what the command line names. False when it can't start.
bool start_program(std::string_view program, std::string_view command, bool wait);
// The system's own text for the last error; its length, 0 if there is none.
Int last_error(char* into, Int width);

void clock(Int& year, Int& month, Int& day, Int& hour, Int& minute);

} // namespace platform

} // namespace tarvane
