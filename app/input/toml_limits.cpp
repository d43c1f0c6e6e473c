#include "input/toml_limits.h"

#include "values/text.h"

#include <string>
#include <vector>

namespace tarvane::app {

using namespace vessel;

namespace {

bool is_key_character(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
           c == '-';
}

bool is_blank(char c) { return c == ' ' || c == '\t' || c == '\r'; }

// Follows strings, comments, brackets and keys through a text.
class Walk {
  public:
    explicit Walk(std::string_view toml_text) : text(toml_text) {}

    std::optional<Fault> first_fault() {
        if (text.starts_with("\xEF\xBB\xBF")) at = 3;
        while (at < text.size() && !fault && !given_up)
            step();
        return fault;
    }

  private:
    std::string_view text;
    std::size_t at = 0;
    int line = 1;
    std::vector<char> open;    // the brackets around this place
    bool in_key = true;        // not in a value
    std::size_t key_begin = 0; // first character of the key, where there is one
    bool has_key = false;
    bool wants_part = true; // at the beginning of a key, and after a point
    bool in_header = false;
    bool in_word = false; // in a value without quotation marks and brackets
    int parts = 1;
    bool given_up = false; // at a place beyond which the parser does not read
    std::optional<Fault> fault;

    char here() const { return text[at]; }

    void refuse(std::string message) { fault = Fault{line, "", std::move(message)}; }

    void begin_key() {
        in_key = wants_part = true;
        has_key = false;
        parts = 1;
    }

    void step() {
        const char c = here();
        if (in_header && in_key && wants_part && (c == '\n' || c == '\r'))
            return refuse("the name of a table is expected, not the end of the line");
        if (c == '\n') return end_line();
        if (c == '#') return comment();
        if (is_blank(c)) {
            ++at;
            in_word = false;
        } else if (static_cast<unsigned char>(c) >= 0x80) {
            refuse(in_quotes(text.substr(at, sequence_length())) +
                   " is allowed between quotation marks only");
        } else if ((c == '"' || c == '\'') && !in_word) {
            const std::size_t begin = at;
            skip_string(c);
            if (in_key) part_of_key(begin);
        } else if (in_key) {
            key_character(c);
        } else {
            value_character(c);
        }
    }

    std::size_t sequence_length() const {
        std::size_t length = 1;
        while (at + length < text.size() && (text[at + length] & 0xC0) == 0x80 && length < 4)
            ++length;
        return length;
    }

    void end_line() {
        ++at;
        ++line;
        in_word = false;
        if (!open.empty()) return;
        in_header = false;
        begin_key();
    }

    void comment() {
        if (in_header && in_key && wants_part)
            return refuse("the name of a table is expected, not a comment");
        while (at < text.size() && here() != '\n')
            ++at;
    }

    // Skips to the end of the string; without an end the parser goes no further.
    void skip_string(char mark) {
        const std::string ends(3, mark);
        const bool several = text.substr(at).starts_with(ends);
        at += several ? 3 : 1;
        while (at < text.size()) {
            const char c = here();
            if (c == '\\' && mark == '"') {
                line += at + 1 < text.size() && text[at + 1] == '\n';
                at += 2;
            } else if (several && text.substr(at).starts_with(ends)) {
                at += 3;
                while (at < text.size() && here() == mark) // quotation marks that end the text
                    ++at;
                return;
            } else if (!several && c == mark) {
                ++at;
                return;
            } else if (!several && c == '\n') {
                break;
            } else {
                line += c == '\n';
                ++at;
            }
        }
        given_up = true;
    }

    void part_of_key(std::size_t begin) {
        if (!has_key) key_begin = begin;
        has_key = true;
        wants_part = false;
        if (at - key_begin > LONGEST_KEY)
            refuse("a key of at most " + std::to_string(LONGEST_KEY) + " characters is expected");
    }

    void key_character(char c) {
        if (is_key_character(c)) {
            part_of_key(at++);
        } else if (c == '.') {
            if (in_header && !has_key)
                return refuse("the name of a table is expected, not a point");
            ++at;
            wants_part = true;
            if (++parts > MOST_KEY_PARTS)
                refuse("a key of at most " + std::to_string(MOST_KEY_PARTS) + " parts is expected");
        } else if (c == '=' && !in_header) {
            ++at;
            in_key = false;
        } else if (c == '[' && open.empty() && !has_key && !in_header) {
            ++at;
            if (at < text.size() && here() == '[') ++at;
            in_header = true;
        } else if (c == ']' && in_header) {
            ++at;
            in_key = false;
        } else if (c == '}' && !open.empty()) {
            close();
        } else {
            refuse(in_quotes(std::string_view(&c, 1)) + " is not allowed in a key");
        }
    }

    void value_character(char c) {
        if (in_header) { // after its name, where the parser accepts nothing more
            ++at;
        } else if ((c == '[' || c == '{') && !in_word) {
            ++at;
            open.push_back(c);
            if (c == '{') begin_key();
            if (open.size() > DEEPEST_NESTING)
                refuse("lists and tables within others, at most " +
                       std::to_string(DEEPEST_NESTING) + " deep, are expected");
        } else if (c == ']' || c == '}') {
            close();
        } else {
            ++at;
            in_word = c != ',';
            if (c == ',' && !open.empty() && open.back() == '{') begin_key();
        }
    }

    // One too many is reported by the parser.
    void close() {
        given_up = open.empty();
        if (given_up) return;
        const char begin = open.back();
        if ((begin == '[') != (here() == ']'))
            return refuse(in_quotes(text.substr(at, 1)) + " cannot end what begins with " +
                          in_quotes(std::string_view(&begin, 1)));
        ++at;
        open.pop_back();
        in_key = in_word = false;
    }
};

} // namespace

std::optional<Fault> check_limits(std::string_view toml_text) {
    if (toml_text.size() > LARGEST_INPUT)
        return Fault{1, "",
                     "an input file of at most " + std::to_string(LARGEST_INPUT / (1024 * 1024)) +
                         " MB is expected"};
    return Walk(toml_text).first_fault();
}

} // namespace tarvane::app
