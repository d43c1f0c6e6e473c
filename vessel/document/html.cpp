#include "document/html.h"

#include "document/html_style.h"
#include "drawing/font.h"
#include "values/text.h"

#include <algorithm>
#include <cctype>
#include <numeric>
#include <string_view>

namespace tarvane::vessel {

namespace {

constexpr std::size_t LINE_WIDTH = 98;   // columns of a line on paper
constexpr std::size_t REPORT_WIDTH = 76; // of most lines of the report

// ---- texts -------------------------------------------------------------------------------------------------

void put_text(std::string& out, std::string_view text) {
    for (const char c : text) {
        switch (c) {
        case '&':
            out += "&amp;";
            break;
        case '<':
            out += "&lt;";
            break;
        case '>':
            out += "&gt;";
            break;
        case '"':
            out += "&quot;";
            break;
        default:
            // What XML and HTML have no character for.
            out += static_cast<unsigned char>(c) < 0x20 && c != '\n' && c != '\t' ? '?' : c;
        }
    }
}

std::string escaped(std::string_view text) {
    std::string out;
    put_text(out, text);
    return out;
}

// A string of a style sheet: what could end it, or the element around it, by its number.
std::string in_style(std::string_view text) {
    constexpr std::string_view DIGITS = "0123456789abcdef";
    std::string out = "\"";
    for (const char c : text) {
        const auto code = static_cast<unsigned char>(c);
        if (code >= 0x80 || std::isalnum(code) != 0 || c == ' ') {
            out += c;
        } else {
            out += '\\';
            out += DIGITS[code >> 4];
            out += DIGITS[code & 15];
            out += ' ';
        }
    }
    return out + '"';
}

std::string_view class_of(Tone tone) {
    switch (tone) {
    case Tone::sound:
        return "pass";
    case Tone::bad:
        return "bad";
    case Tone::advice:
        return "advice";
    case Tone::quiet:
        break;
    }
    return {};
}

// ---- the page ------------------------------------------------------------------------------------------------

class Writer {
  public:
    explicit Writer(const CalculationDocument& of) : document(of) {}

    std::string write() {
        out.reserve(SIZE);
        head();
        front();
        for (const DocumentSection& section : document.opening)
            top_section(section);
        contents();
        for (const DocumentSection& section : document.sections)
            top_section(section);
        out += "</main>\n</body>\n</html>\n";
        return std::move(out);
    }

    std::string write(const DocumentSection& section) {
        out += "<section>\n";
        for (const Block& each : section.blocks)
            block(each);
        out += "</section>\n";
        return std::move(out);
    }

    void put(const Paragraph& block) {
        open("p", class_of(block.tone));
        text(block.text);
        out += "</p>\n";
    }
    void put(const Remark& block) {
        out += "<p>";
        marked("strong", class_of(block.tone), block.word + ':');
        out += ' ';
        text(block.text);
        out += "</p>\n";
    }
    void put(const DocumentList& block) {
        out += "<ul>\n";
        for (const std::string& item : block.items)
            out += "<li>" + escaped(item) + "</li>\n";
        out += "</ul>\n";
    }
    void put(const DocumentTable& block) { table(block, {}); }
    // Lines and no table: a cell costs a maker of PDF as much time as three lines, and a vessel has thousands of them.
    void put(const CheckRows& block) {
        constexpr std::size_t A4 = 103, LETTER = 107; // columns in the font of checks
        CheckColumns columns = fitted(block.rows, document.metric ? A4 : LETTER);
        columns.remark_beside = true;
        std::vector<std::vector<std::string>> rows;
        std::size_t count = 1;
        for (const CheckRow& row : block.rows) {
            rows.push_back(lines_of(row, columns));
            count += rows.back().size();
        }
        open("pre", count > TOGETHER ? "checks" : "checks whole");
        marked("b", {}, check_heads(columns) + '\n');
        for (std::size_t place = 0; place < rows.size(); ++place) {
            const CheckRow& row = block.rows[place];
            const std::vector<std::string>& all = rows[place];
            if (place > 0) out += '\n';
            text(std::string_view(all[0]).substr(0, all[0].size() - row.state.size()));
            if (row.tone == Tone::quiet || row.tone == Tone::sound)
                text(row.state);
            else
                marked("strong", class_of(row.tone), row.state);
            for (std::size_t i = 1; i < all.size(); ++i) {
                out += '\n';
                text(all[i]);
            }
        }
        out += "</pre>\n";
    }
    void put(const Lines& block) {
        constexpr std::size_t REST = 3; // lines that are no page of their own
        open("pre", block.lines.size() > TOGETHER                ? ""
                    : ends_section && block.lines.size() <= REST ? "whole last"
                                                                 : "whole");
        lines(block.lines);
        out += "</pre>\n";
    }
    void put(const Formula& block) {
        open("pre", "whole");
        std::vector<Line> all;
        for (const Line& line : block.lines) {
            for (std::string& part : wrapped_step(line.text))
                all.push_back({std::move(part), line.tone, line.heading});
        }
        lines(all, block.paragraph);
        out += "</pre>\n";
    }
    void put(const MarginNote& block) {
        out += "<p class=\"margin\" role=\"note\">";
        text(block.text);
        out += "</p>\n";
    }
    void put(const Drawing& block) {
        out += "<figure id=\"" + escaped(block.id) + "\">\n" + block.figure.svg + "\n<figcaption>";
        std::string caption = block.caption;
        for (std::size_t i = 0; i < block.figure.dropped.size(); ++i)
            caption +=
                (i == 0 ? ". Without room in the drawing: " : "; ") + block.figure.dropped[i];
        const std::vector<std::string> words = unbroken_words(caption);
        for (std::size_t i = 0; i < words.size(); ++i) {
            if (i > 0) out += ' ';
            // Makers of PDF break a line within ".5", too.
            const std::size_t place = words[i].find_first_of(" .");
            if (place != std::string::npos && place + 1 < words[i].size())
                marked("span", "one", words[i]);
            else
                text(words[i]);
        }
        out += "</figcaption>\n</figure>\n";
    }
    void put(const DrawingReference& block) {
        out += "<p><a class=\"ref\" href=\"#" + escaped(block.id) + "\">" + escaped(block.text) +
               "</a></p>\n";
    }

  private:
    static constexpr std::size_t SIZE = 1 << 20;
    static constexpr std::size_t TOGETHER = 24; // lines on one page

    const CalculationDocument& document;
    std::string out;
    int number = 0;
    bool ends_section = false; // the block that is written

    void text(std::string_view words) { put_text(out, words); }
    void open(std::string_view tag, std::string_view look) {
        out += '<';
        out += tag;
        if (!look.empty()) {
            out += " class=\"";
            out += look;
            out += '"';
        }
        out += '>';
    }
    void marked(std::string_view tag, std::string_view look, std::string_view words) {
        open(tag, look);
        text(words);
        out += "</";
        out += tag;
        out += '>';
    }

    // A step that is wider than the paper goes on under what comes after its "=".
    static std::vector<std::string> wrapped_step(const std::string& line) {
        if (characters(line) <= LINE_WIDTH) return {line};
        const std::size_t sign = line.find_first_not_of(' ');
        const std::size_t indent = line.compare(sign, 2, "= ") == 0 ? sign + 2 : sign;
        std::vector<std::string> parts = wrapped(line.substr(indent), LINE_WIDTH - indent);
        for (std::size_t i = 0; i < parts.size(); ++i)
            parts[i] = (i == 0 ? line.substr(0, indent) : std::string(indent, ' ')) + parts[i];
        return parts;
    }

    // The paragraph is at the right of the last heading, and in its mark, as is the end of the line: each text beside it
    // is one more to lay out.
    void lines(const std::vector<Line>& all, const std::string& paragraph = {}) {
        std::size_t holder = all.size();
        for (std::size_t i = 0; i < all.size() && !paragraph.empty(); ++i)
            if (all[i].heading) holder = i;
        std::string heading; // of several lines: each mark is one more, too
        for (std::size_t i = 0; i < all.size(); ++i) {
            const Line& line = all[i];
            std::string words = line.text;
            if (i == holder) {
                const std::size_t used = characters(words), wide = characters(paragraph);
                const bool beside = used + wide + 2 <= REPORT_WIDTH;
                words += beside ? std::string(REPORT_WIDTH - used - wide, ' ')
                                : '\n' + std::string(REPORT_WIDTH - wide, ' ');
                words += paragraph;
            }
            const bool last = i + 1 == all.size();
            if (!last) words += '\n';
            if (line.heading) {
                heading += words;
                if (!last && all[i + 1].heading && all[i + 1].tone == line.tone) continue;
                marked("b", class_of(line.tone), heading);
                heading.clear();
            } else if (line.tone != Tone::quiet) {
                marked("strong", class_of(line.tone), words);
            } else {
                text(words);
            }
        }
    }

    void cell(const Cell& of, const Column* column, bool heads_row) {
        const std::string_view tag = heads_row ? "th" : "td";
        out += '<';
        out += tag;
        if (heads_row) out += " scope=\"row\"";
        std::string look(class_of(of.tone));
        if (column != nullptr && column->number) look += look.empty() ? "n" : " n";
        if (!look.empty()) out += " class=\"" + look + '"';
        out += '>';
        text(of.text);
        out += "</";
        out += tag;
        out += '>';
    }

    // Shares of the width in per cent by the longest text of each column, those of long texts less where they leave no
    // room for the others.
    static std::vector<std::size_t> shares_of(const DocumentTable& of) {
        constexpr std::size_t GAP = 3, LINE = 100; // characters
        std::vector<std::size_t> wide;
        for (const Column& column : of.columns)
            wide.push_back(characters(column.head));
        for (const std::vector<Cell>& row : of.rows)
            for (std::size_t i = 0; row.size() == wide.size() && i < row.size(); ++i)
                wide[i] = std::max(wide[i], characters(row[i].text));
        for (std::size_t& each : wide)
            each += GAP;
        const auto sum = [&] { return std::accumulate(wide.begin(), wide.end(), std::size_t{0}); };
        while (sum() > LINE && !wide.empty()) {
            std::size_t& most = *std::max_element(wide.begin(), wide.end());
            if (most <= LINE / wide.size()) break;
            --most;
        }
        const std::size_t all = sum();
        for (std::size_t& each : wide)
            each = each * 100 / all;
        return wide;
    }

    void table(const DocumentTable& of, std::string look) {
        constexpr std::size_t FEW = 12; // rows that stay on a page
        look += look.empty() ? "set" : " set";
        if (of.rows.size() <= FEW) look += " whole";
        open("table", look);
        out += '\n';
        if (!of.caption.empty()) out += "<caption>" + escaped(of.caption) + "</caption>\n";
        out += "<colgroup>";
        for (const std::size_t share : shares_of(of))
            out += "<col style=\"width:" + std::to_string(share) + "%\">";
        out += "</colgroup>\n";
        out += "<thead><tr>";
        for (const Column& column : of.columns) {
            if (column.head.empty()) {
                out += "<td></td>";
                continue;
            }
            out += column.number ? "<th scope=\"col\" class=\"n\">" : "<th scope=\"col\">";
            text(column.head);
            out += "</th>";
        }
        out += "</tr></thead>\n<tbody>\n";
        for (const std::vector<Cell>& row : of.rows) {
            out += "<tr>";
            if (row.size() == 1 && of.columns.size() > 1) {
                out += "<td class=\"more\" colspan=\"" + std::to_string(of.columns.size()) + "\">";
                if (row[0].tone == Tone::quiet)
                    text(row[0].text);
                else
                    marked("span", class_of(row[0].tone), row[0].text);
                out += "</td>";
            } else {
                for (std::size_t i = 0; i < row.size(); ++i)
                    cell(row[i], &of.columns[i], i == 0);
            }
            out += "</tr>\n";
        }
        out += "</tbody>\n</table>\n";
    }

    void block(const Block& of) {
        std::visit([this](const auto& each) { put(each); }, of);
    }

    static bool has_drawing(const std::vector<DocumentSection>& sections) {
        return std::any_of(sections.begin(), sections.end(), [](const DocumentSection& section) {
            return has_drawing(section.sections) ||
                   std::any_of(section.blocks.begin(), section.blocks.end(), [](const Block& each) {
                       return std::holds_alternative<Drawing>(each);
                   });
        });
    }

    // ---- head and front ----

    void paper() {
        out += "@page { size: ";
        out += document.metric ? "A4" : "Letter";
        out += "; margin: 23mm 16mm 15mm 20mm;\n";
        const auto given = [](const std::string& text, std::string_view without) {
            return text.empty() ? std::string(without) : text;
        };
        std::string line = given(document.project, document.title);
        // What nobody signs is no record.
        if (!document.front.signatures.columns.empty())
            line += ", " + given(document.number, "no document number") + ", " +
                    (document.revision.empty() ? "no revision" : "revision " + document.revision) +
                    ", " + given(document.date, "no date");
        // Margins of a page do not have the font of its body. Each box costs a maker of PDF milliseconds a page: one is
        // enough, whose width is not that of its words.
        out += "@top-right { content: " + in_style(line) +
               " \"\\a tarvane " TARVANE_VERSION ", \" string(heading) "
               "\" \\2014  page \" counter(page) \" of \" counter(pages); width: 100%; "
               "font: 7.5pt \"DejaVu Sans\", sans-serif; color: #333; white-space: pre-line; "
               "text-align: right; vertical-align: bottom; padding-bottom: 4mm; }\n";
        out += "}\n";
    }

    void meta(std::string_view name, const std::string& content) {
        if (content.empty()) return;
        out += "<meta name=\"" + std::string(name) + "\" content=\"" + escaped(content) + "\">\n";
    }

    void head() {
        out += "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n<title>";
        std::string title = document.title;
        for (const std::string* part : {&document.project, &document.number})
            if (!part->empty()) title += " - " + *part;
        text(title);
        out +=
            "</title>\n<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n";
        meta("generator", "tarvane " TARVANE_VERSION);
        meta("author", document.author);
        meta("description", document.front.verdict + ": " + document.front.words);
        meta("dcterms.created", document.created);
        meta("dcterms.modified", document.created);
        out += "<style>\n";
        if (has_drawing(document.sections)) out += font_face();
        paper();
        out += HTML_STYLE;
        out += "</style>\n</head>\n<body>\n";
    }

    void front() {
        const FrontPage& front = document.front;
        out += "<header>\n";
        marked("h1", {}, front.title);
        out += '\n';
        if (!front.facts.empty()) {
            out += "<table class=\"facts\">\n<tbody>\n";
            for (const FrontText& fact : front.facts)
                out += "<tr><th scope=\"row\">" + escaped(fact.label) + "</th><td>" +
                       escaped(fact.text) + "</td></tr>\n";
            out += "</tbody>\n</table>\n";
        }
        out += "</header>\n<main>\n";
        out += front.passes ? "<p class=\"verdict of-pass\">" : "<p class=\"verdict of-bad\">";
        marked("strong", front.passes ? "pass" : "bad", front.verdict);
        text(front.words);
        out += "</p>\n";
        if (!front.signatures.columns.empty()) table(front.signatures, "signatures");
        if (!front.revisions.rows.empty()) table(front.revisions, {});
        table(front.components, "components");
        if (front.open_points.empty()) return;
        out += "<h2 id=\"open-points\">Open points</h2>\n";
        for (const Block& each : front.open_points)
            block(each);
    }

    void entry(int of, const DocumentSection& section) {
        out += "<li><a href=\"#" + escaped(section.id) + "\">" + std::to_string(of) + "&ensp;" +
               escaped(section.title) + "</a></li>\n";
    }
    void contents() {
        if (document.front.open_points.empty() && document.opening.empty() &&
            document.sections.empty())
            return;
        // Of one page, if it has room there.
        constexpr std::size_t MOST = 45;
        const bool whole = document.opening.size() + document.sections.size() < MOST;
        open("nav aria-labelledby=\"contents\"", whole ? "whole" : "");
        out += "\n<h2 id=\"contents\">Contents</h2>\n<ol>\n";
        if (!document.front.open_points.empty())
            out += "<li><a href=\"#open-points\">Open points</a></li>\n";
        int of = 0;
        for (const DocumentSection& section : document.opening)
            entry(++of, section);
        for (const DocumentSection& section : document.sections)
            entry(++of, section);
        out += "</ol>\n</nav>\n";
    }

    // ---- sections ----

    void top_section(const DocumentSection& section) {
        const std::string own = std::to_string(++number);
        out += "<section>\n<h2 id=\"" + escaped(section.id) +
               (section.new_page ? "\" class=\"page\">" : "\">") + own + "&ensp;" +
               escaped(section.title) + "</h2>\n";
        for (const Block& each : section.blocks)
            block(each);
        int part = 0;
        for (const DocumentSection& each : section.sections) {
            out += "<h3 id=\"" + escaped(each.id) + "\">" + own + '.' + std::to_string(++part) +
                   "&ensp;" + escaped(each.title) + "</h3>\n";
            for (const Block& inner : each.blocks) {
                ends_section = &inner == &each.blocks.back();
                block(inner);
            }
        }
        out += "</section>\n";
    }
};

} // namespace

std::string html_of(const CalculationDocument& document) { return Writer(document).write(); }

std::string html_of(const DocumentSection& section) {
    return Writer(CalculationDocument()).write(section);
}

} // namespace tarvane::vessel
