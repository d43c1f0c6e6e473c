#include "call.h"

#include <cstdio>
#include <cstdlib>

namespace calls {

namespace {

// AddressSanitizer watches the bytes around a block; without it there are marks.
constexpr std::size_t MARKS = UNDER_ADDRESS_SANITIZER ? 0 : 64;
constexpr char MARK = '\x5a';

// What the engine says about its host while it calls back.
std::string told;

void TARVANE_CALL message_box(void*, const char* text, const char* title) {
    told.append("message ").append(text).append(" of ").append(title).append("\n");
}
void TARVANE_CALL dialog_text(void*, std::int32_t control, const char* text) {
    told.append("control ").append(std::to_string(control)).append(text).append("\n");
}
void TARVANE_CALL end_dialog(void*) { told.append("end of the dialog\n"); }
void TARVANE_CALL report_fatal(void*, std::int32_t code) {
    told.append("fatal ").append(std::to_string(code)).append("\n");
}
void TARVANE_CALL stop(void*, std::int32_t status) {
    told.append("stop ").append(std::to_string(status)).append("\n");
}
void TARVANE_CALL still_clock(void*, std::int32_t* year, std::int32_t* month, std::int32_t* day,
                              std::int32_t* hour, std::int32_t* minute) {
    *year = 2024;
    *month = 2;
    *day = 29;
    *hour = 13;
    *minute = 5;
}
// A clock that gives nothing, and one that gives nonsense.
void TARVANE_CALL silent_clock(void*, std::int32_t*, std::int32_t*, std::int32_t*, std::int32_t*,
                               std::int32_t*) {}
void TARVANE_CALL broken_clock(void* user, std::int32_t* year, std::int32_t* month,
                               std::int32_t* day, std::int32_t* hour, std::int32_t* minute) {
    told.append("clock\n");
    Chance chance(told.size(), reinterpret_cast<std::uintptr_t>(user) & 1);
    for (std::int32_t* const part : {year, month, day, hour, minute})
        *part = garbage_whole(chance);
}

// A host that takes every record, and one that takes none.
std::int32_t TARVANE_CALL take_record(void*, const char* text, std::int32_t length) {
    told.append(text, static_cast<std::size_t>(length));
    return 0;
}
std::int32_t TARVANE_CALL refuse_record(void*, const char*, std::int32_t) {
    told.append("record refused\n");
    return 1;
}

constexpr std::string_view RECORD_TEXTS[] = {
    "SA-105", "SA-193 B7", "1", "Y", "-24", "CS-2", "11", "-50", "1111", "150", "", "P-No. 1"};

} // namespace

TARVANE_HOST_SERVICES staying_services() {
    TARVANE_HOST_SERVICES table = {};
    table.version = TARVANE_HOST_SERVICES_VERSION;
    table.message_box = message_box;
    table.dialog_text = dialog_text;
    table.end_dialog = end_dialog;
    table.report_fatal = report_fatal;
    table.stop = stop;
    table.clock = still_clock;
    return table;
}

const std::string& heard() { return told; }
void forget_heard() { told.clear(); }

void scribble(Chance& chance, Noise noise, void* block, std::size_t size) {
    char* const bytes = static_cast<char*>(block);
    const auto put = [&](std::size_t at, const void* from, std::size_t count) {
        if (at + count <= size) std::memcpy(bytes + at, from, count);
    };
    if (noise == Noise::all && chance.one_in(4)) {
        const char fill = chance.of({'\0', ' ', '\xff', '9'});
        std::memset(bytes, fill, size);
        return;
    }
    const std::size_t share = size / 64 + 1;
    const std::size_t changes = noise == Noise::all ? 8 * share : chance.below(2 * share);
    for (std::size_t i = 0; i < changes; ++i) {
        const std::size_t at = chance.below(size);
        const std::size_t word = at & ~std::size_t{3}, field = at & ~std::size_t{15};
        if (is_garbage(chance, noise)) {
            const std::uint32_t bits = chance.word();
            const float value = garbage_real(chance);
            if (chance.one_in(2))
                put(at, &bits, 1 + chance.below(4));
            else
                put(word, &value, sizeof value);
        } else if (chance.one_in(2)) {
            const float value = chance.of({0.0f, 1.0f, 2.0f, 0.5f, 25.4f, 20000.0f});
            const std::int32_t whole = chance.between(0, 8);
            if (chance.one_in(3))
                put(word, &whole, sizeof whole);
            else
                put(word, &value, sizeof value);
        } else {
            char text[16];
            std::memset(text, ' ', sizeof text);
            const std::string_view chosen = chance.of(RECORD_TEXTS);
            chosen.copy(text, sizeof text);
            put(field, text, sizeof text);
        }
    }
}

// ---- blocks --------------------------------------------------------------------------------------

Call::Call(const Library& the_library, Chance& the_chance, Noise the_noise,
           const Manner& the_manner, std::string_view the_recipe)
    : library(the_library), chance(the_chance), noise(the_noise), manner(the_manner),
      recipe(the_recipe) {
    shared_count = is_garbage(chance, noise) ? garbage_whole(chance) : chance.between(0, 6);
}

Call::~Call() {
    for (const Block& block : blocks)
        std::free(block.memory);
}

char* Call::block(Block::Kind kind, const void* content, std::size_t size) {
    char* const memory = static_cast<char*>(std::malloc(size + 2 * MARKS));
    if (memory == nullptr) std::abort();
    std::memset(memory, MARK, MARKS);
    if (size > 0) std::memcpy(memory + MARKS, content, size);
    std::memset(memory + MARKS + size, MARK, MARKS);
    blocks.push_back({word, kind, memory, memory + MARKS, size});
    return memory + MARKS;
}

bool Call::blocks_intact() const {
    for (const Block& block : blocks)
        for (std::size_t i = 0; i < MARKS; ++i)
            if (block.memory[i] != MARK || block.memory[MARKS + block.size + i] != MARK)
                return false;
    return true;
}

void Call::next_word() {
    const std::size_t end = recipe.find(' ');
    word = recipe.substr(0, end);
    recipe = end == std::string_view::npos ? std::string_view() : recipe.substr(end + 1);
    const std::size_t colon = word.find(':');
    array = colon == std::string_view::npos ? std::string_view() : word.substr(colon + 1);
    word = word.substr(0, colon);
    if (manner.trace) std::fprintf(stderr, "  %.*s", static_cast<int>(word.size()), word.data());
}

// An array that is as long as its count says has no element for a count out of bounds.
std::size_t Call::array_size() const {
    if (array.empty()) return 1;
    if (array == "count") {
        const bool in_bounds = shared_count >= 0 && shared_count <= 6;
        return in_bounds ? static_cast<std::size_t>(shared_count) : 0;
    }
    std::size_t size = 0;
    for (const char digit : array)
        size = 10 * size + static_cast<std::size_t>(digit - '0');
    return size;
}

// ---- numbers -------------------------------------------------------------------------------------

float* Call::reals() {
    if (word == "record") {
        float values[TARVANE_RECORD_ELEMENTS];
        sensible_flange(chance, values);
        for (float& value : values) {
            const bool most = noise == Noise::half && !chance.one_in(4);
            if (!most && is_garbage(chance, noise) && (noise != Noise::little || chance.one_in(4)))
                value = garbage_real(chance);
            else if (is_edge(chance, noise) && chance.one_in(8))
                value = edge_real(chance, values);
        }
        if (const float t = TARVANE_AT(values, TARVANE_t);
            manner.most_thickness > 0.0f && t > manner.most_thickness) {
            scale_flange(values, manner.most_thickness / t);
            TARVANE_AT(values, TARVANE_t) = manner.most_thickness;
        }
        if (manner.trace)
            for (const float value : values)
                std::fprintf(stderr, " %.9g", static_cast<double>(value));
        flange = reinterpret_cast<float*>(block(Block::Kind::reals, values, sizeof values));
        if (chance.one_in(40)) flange = &library.GETSETUP()->real; // a block of the engine's own
        return flange;
    }
    if (word == "spare") return static_cast<float*>(spare());
    const std::size_t size = array_size();
    // A host may let a result go into the record, or pass one variable twice.
    if (size == 1 && flange != nullptr && word == "out" && chance.one_in(60))
        return flange + chance.below(TARVANE_RECORD_ELEMENTS);
    if (size == 1 && latest_real != nullptr && chance.one_in(60)) return latest_real;
    std::vector<float> values(size);
    for (float& value : values) {
        known = sensible_real(chance, word, value) && known;
        if (is_garbage(chance, noise)) value = garbage_real(chance);
        if (is_edge(chance, noise)) value = edge_real(chance, drawn);
        if (manner.trace) std::fprintf(stderr, " %.9g", static_cast<double>(value));
        drawn.push_back(value);
    }
    auto* const given =
        reinterpret_cast<float*>(block(Block::Kind::reals, values.data(), size * sizeof(float)));
    if (size == 1) latest_real = given;
    return given;
}

std::int32_t* Call::wholes() {
    const std::size_t size = array_size();
    if (size == 1 && word != "count" && latest_whole != nullptr && chance.one_in(60))
        return latest_whole;
    std::vector<std::int32_t> values(size);
    for (std::int32_t& value : values) {
        known = sensible_whole(chance, word, value) && known;
        if (word == "reference" && !chance.one_in(4)) value = reference;
        if (word == "code" && manner.code != 0) value = manner.code;
        if (is_garbage(chance, noise)) value = garbage_whole(chance);
        if (is_edge(chance, noise)) value = chance.between(-1, 12);
        if (word == "count") value = shared_count;
        if (manner.trace) std::fprintf(stderr, " %d", static_cast<int>(value));
    }
    auto* const given = reinterpret_cast<std::int32_t*>(
        block(Block::Kind::wholes, values.data(), size * sizeof(std::int32_t)));
    if (size == 1 && word != "count") latest_whole = given;
    return given;
}

// ---- texts ---------------------------------------------------------------------------------------

char* Call::text_block(std::string content) {
    if (manner.trace) {
        std::fprintf(stderr, " \"");
        for (const char c : content)
            std::fprintf(stderr, c >= ' ' && c <= '~' ? "%c" : "\\x%02x",
                         static_cast<unsigned>(static_cast<unsigned char>(c)));
        std::fprintf(stderr, "\" of %d", static_cast<int>(text_length));
    }
    return block(Block::Kind::text, content.data(), content.size());
}

// The slots of a flange: the unit labels are there in the stand-alone form only.
char* Call::flange_slots() {
    constexpr std::size_t EVERY_FORM = 135;
    std::string slots = sensible_slots(chance);
    for (char& c : slots)
        if (is_garbage(chance, noise) && (noise == Noise::all || chance.one_in(8)))
            c = static_cast<char>(chance.word());
    const float form = flange == nullptr ? -1.0f : TARVANE_AT(flange, TARVANE_ELEMENT);
    if (!(form <= -1.0f)) slots.resize(EVERY_FORM);
    text_length = is_garbage(chance, noise) ? garbage_whole(chance) : TARVANE_TEXT_LENGTH;
    return text_block(slots);
}

char* Call::text() {
    if (word == "slots") return flange_slots();
    if (word == "field") { // 12 characters, whatever the length says
        std::string field = is_garbage(chance, noise) ? garbage_text(chance) : std::string();
        if (field.empty()) known = sensible_text(chance, "chart", field) && known;
        field.resize(12, ' ');
        text_length = is_garbage(chance, noise) ? garbage_whole(chance) : 12;
        return text_block(field);
    }
    if (word == "sizes") { // 60 fields of 10 characters, whatever the length says
        text_length = is_garbage(chance, noise) ? garbage_whole(chance) : chance.of({600, 10});
        return text_block(std::string(600, ' '));
    }
    std::string content;
    known = sensible_text(chance, word, content) && known;
    if (word == "name")
        reference = reference_of(content.substr(0, content.find_last_not_of(' ') + 1));
    if (is_garbage(chance, noise)) content = garbage_text(chance);
    const bool a_path = word == "path" || word == "product" || word == "extension";
    if (a_path || (word == "folder" && !content.starts_with("..")))
        for (char& c : content)
            if (c == '/') c = '_';
    text_length = static_cast<std::int32_t>(content.size());
    if (text_length == 0) text_length = chance.of({0, 0, -1, INT32_MIN, -72});
    // A line of the engine's own store as the text of a call.
    if (!a_path && word != "folder" && chance.one_in(50)) {
        text_length = TARVANE_STORE_WIDTH;
        return library.GETLINESCOMFLG() + chance.below(TARVANE_STORE_RECORDS) * TARVANE_STORE_WIDTH;
    }
    return text_block(content);
}

// ---- blocks and addresses ------------------------------------------------------------------------

void* Call::spare() {
    return reinterpret_cast<void*>(chance.one_in(2) ? 0
                                                    : static_cast<std::uintptr_t>(chance.bits()));
}

void** Call::window() {
    void* const handle = spare();
    return reinterpret_cast<void**>(block(Block::Kind::addresses, &handle, sizeof handle));
}

// Any version, any of the functions left out; but a host that must survive always gives its stop.
TARVANE_HOST_SERVICES* Call::services() {
    TARVANE_HOST_SERVICES table = staying_services();
    if (manner.may_end && chance.one_in(3)) return nullptr;
    table.user = spare();
    if (chance.one_in(2)) table.message_box = nullptr;
    if (chance.one_in(2)) table.dialog_text = nullptr;
    if (chance.one_in(2)) table.end_dialog = nullptr;
    if (chance.one_in(2)) table.report_fatal = nullptr;
    if (chance.one_in(2))
        table.clock = chance.one_in(2) ? broken_clock : silent_clock;
    else if (!manner.own_clock)
        table.clock = nullptr;
    if (manner.may_end && chance.one_in(2)) table.stop = nullptr;
    if (is_garbage(chance, noise)) table.version = garbage_whole(chance);
    return reinterpret_cast<TARVANE_HOST_SERVICES*>(
        block(Block::Kind::addresses, &table, sizeof table));
}

TARVANE_TAKE_RECORD Call::taker() {
    static constexpr TARVANE_TAKE_RECORD TAKERS[] = {take_record, refuse_record, nullptr};
    return chance.of(TAKERS);
}

char* Call::record(std::size_t size) {
    std::vector<char> content(size, ' ');
    if (noise == Noise::all)
        for (char& c : content)
            c = static_cast<char>(chance.word());
    scribble(chance, noise, content.data(), size);
    return block(Block::Kind::record, content.data(), size);
}

} // namespace calls
