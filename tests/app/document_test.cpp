// The calculation as a document, and as a page: what each part says, and that the lines of the engine stay.
#include "document/document.h"

#include "app_fixture.h"
#include "catalogue/data_folder.h"
#include "document/html.h"
#include "document/input_rows.h"
#include "document/report_blocks.h"
#include "document/report_view.h"
#include "document/text_columns.h"
#include "values/text.h"

#include <algorithm>
#include <map>
#include <regex>

namespace tarvane::app {

using namespace vessel;
namespace {

const std::string DOCUMENT = R"([document]
title = "Strength calculation"
project = "Recovery <b>bold</b> & more"
client = "Client Ltd"
site = "North site"
item = "V-7"
number = "V-7-C-001"
revision = "B"
date = "2024-05-31"
prepared = "P. Reparer"
checked = "C. Hecker"
approved = "A. Prover"

[[document.revisions]]
revision = "A"
date = "2024-01-01"
description = "first issue"

)";
const std::string SHELL =
    "[[shell]]\ndescription = \"drum\"\nP = 100\nT = 200\nS = 20000\nSa = 20000\n"
    "t = 0.5\nkind = \"cylinder\"\nD = 40\n";
const std::string EXTERNAL =
    "[[external]]\ndescription = \"wall\"\nkind = \"cylinder\"\nP = 15\nT = 300\n"
    "chart = \"CS-2\"\nS = 15000\nD = 48\nt = 0.5\nlength = 60\n";
constexpr std::string_view HASH = "0123456789abcdef";

// A request with its calculation, which refers to it.
struct Made {
    ReadResult input;
    Calculation calculation;

    explicit Made(const std::string& toml)
        : input(read(toml)), calculation(calculate(input.request)) {}
    CalculationDocument document(Detail detail = Detail::full) const {
        return make_document(input.request, calculation,
                             {"drum.toml", std::string(HASH), "2024-05-31"}, detail);
    }
    std::string page(Detail detail = Detail::full) const { return html_of(document(detail)); }

  private:
    static ReadResult read(const std::string& toml) {
        set_data_folder(TARVANE_DATA_DIR);
        ReadResult result = read_input(toml);
        EXPECT_TRUE(result.faults.empty()) << fault_line("f", result.faults.front());
        return result;
    }
};

std::string page_of(const std::string& toml, Detail detail = Detail::full) {
    return Made(toml).page(detail);
}

bool has(std::string_view page, std::string_view part) {
    return page.find(part) != std::string_view::npos;
}

// What a reader reads: no tags, and the characters themselves.
std::string text_of_page(const std::string& page) {
    std::string text =
        std::regex_replace(page.substr(page.find("<body>")), std::regex("<[^>]*>"), "");
    for (const auto& [name, character] : {std::pair{"&lt;", "<"}, std::pair{"&gt;", ">"},
                                          std::pair{"&quot;", "\""}, std::pair{"&amp;", "&"}}) {
        for (std::size_t at = text.find(name); at != std::string::npos;
             at = text.find(name, at + 1))
            text.replace(at, std::string_view(name).size(), character);
    }
    return text;
}

const DocumentSection* section(const std::vector<DocumentSection>& all, std::string_view id) {
    for (const DocumentSection& each : all) {
        if (each.id == id) return &each;
        if (const DocumentSection* inner = section(each.sections, id)) return inner;
    }
    return nullptr;
}

template <class Kind>
std::vector<Kind> blocks_of(const CalculationDocument& document, std::string_view id) {
    std::vector<Kind> found;
    const DocumentSection* in = section(document.sections, id);
    if (in == nullptr) in = section(document.opening, id);
    EXPECT_NE(in, nullptr) << id;
    if (in == nullptr) return found;
    for (const Block& block : in->blocks)
        if (const Kind* one = std::get_if<Kind>(&block)) found.push_back(*one);
    return found;
}

// "Not made: flange 1: ..." of each open point.
std::vector<std::string> open_points(const CalculationDocument& document) {
    std::vector<std::string> points;
    for (const Block& block : document.front.open_points)
        if (const auto* remark = std::get_if<Remark>(&block))
            points.push_back(remark->word + ": " + remark->text);
    return points;
}

bool any_has(const std::vector<std::string>& texts, std::string_view part) {
    return std::any_of(texts.begin(), texts.end(),
                       [part](const std::string& text) { return has(text, part); });
}

// ---- front page ------------------------------------------------------------------------------------------------

TEST(Document, FrontPageHasEachFactThatIsGiven) {
    const std::string page = page_of(DOCUMENT + SHELL);
    for (const std::string_view fact :
         {"<h1>Strength calculation</h1>", "Client Ltd", "North site", "V-7</td>", "V-7-C-001",
          "2024-05-31", "P. Reparer", "C. Hecker", "A. Prover", "first issue", "2024-01-01"})
        EXPECT_TRUE(has(page, fact)) << fact;
    const CalculationDocument bare = Made(SHELL).document();
    EXPECT_TRUE(bare.front.facts.empty());
    EXPECT_TRUE(bare.front.revisions.rows.empty());
    EXPECT_EQ(bare.front.signatures.rows.size(), 3u); // to be signed by hand
    EXPECT_EQ(bare.title, "Calculation of pressure parts");
}

TEST(Document, TextsOfTheUserStayTexts) {
    const std::string page =
        page_of(DOCUMENT + with("description", "description = \"<i>&\\\"x\"", SHELL));
    EXPECT_FALSE(has(page, "<b>bold"));
    EXPECT_FALSE(has(page, "<i>"));
    EXPECT_TRUE(has(page, "Recovery &lt;b&gt;bold&lt;/b&gt; &amp; more"));
    EXPECT_TRUE(has(page, "&lt;i&gt;&amp;&quot;x"));
    // In the style sheet, where the project is in the head of every page.
    const std::string style =
        page.substr(page.find("<style>"), page.find("</style>") - page.find("<style>"));
    EXPECT_TRUE(has(style, "Recovery \\3c b\\3e bold\\3c \\2f b\\3e  \\26  more"))
        << style.substr(0, 600);
}

TEST(Document, EveryPageNamesProjectDocumentRevisionDateAndNumber) {
    const std::string page = page_of(DOCUMENT + SHELL);
    EXPECT_TRUE(has(page, "@top-right { content: \"Recovery "));
    EXPECT_TRUE(has(page, "V\\2d 7\\2d C\\2d 001\\2c  revision B\\2c  2024\\2d 05\\2d 31"));
    EXPECT_TRUE(has(page, "page \" counter(page) \" of \" counter(pages)"));
    EXPECT_FALSE(has(page, "@top-left")) << "each box takes its time on every page";
    const std::string bare = page_of(SHELL);
    EXPECT_TRUE(has(bare, "no document number\\2c  no revision\\2c  no date"));
}

TEST(Document, VerdictIsAWordAndOnlyAPassIsGreen) {
    const Made passing(SHELL), failing(with("t", "t = 0.05", SHELL));
    EXPECT_EQ(passing.document().front.verdict, "PASS");
    EXPECT_TRUE(has(passing.page(), "<strong class=\"pass\">PASS</strong>"));
    EXPECT_EQ(failing.document().front.verdict, "FAIL");
    const std::string page = failing.page();
    EXPECT_FALSE(has(page, "class=\"pass\">FAIL"));
    EXPECT_TRUE(has(page, "<strong class=\"bad\">FAIL</strong>"));
    EXPECT_TRUE(has(page, "<strong class=\"bad\">fail</strong>"));
    // Its calculation is there all the same.
    EXPECT_TRUE(has(page, "Required Thickness due to Internal Pressure"));
    const std::regex green("class=\"pass\">([^<]*)<");
    for (auto at = std::sregex_iterator(page.begin(), page.end(), green);
         at != std::sregex_iterator(); ++at)
        EXPECT_TRUE((*at)[1] == "pass" || (*at)[1] == "PASS" || (*at)[1] == "PASS:") << (*at)[1];
}

TEST(Document, OpenPointsAreWhatFailsWasNotMadeIsWaivedOrApproximate) {
    const std::string thin =
        "[[shell]]\ndescription = \"top\"\nP = 10\nT = 200\nS = 20000\nSa = 20000\nt = 0.18\n"
        "kind = \"torispherical\"\nD = 100\nL = 100\nr = 7\n";
    const CalculationDocument unmade = Made(thin).document();
    EXPECT_EQ(unmade.front.verdict, "NOT MADE");
    EXPECT_TRUE(any_has(open_points(unmade), "Not made: shell 1 (top): thickness of a thin head"));
    const CalculationDocument waived = Made(thin + "waive = \"head_1_4f\"\n").document();
    EXPECT_TRUE(any_has(open_points(waived), "Waived: shell 1 (top): thickness of a thin head"));
    EXPECT_FALSE(any_has(open_points(waived), "Not made"));
    const CalculationDocument failing = Made(with("t", "t = 0.05", SHELL)).document();
    EXPECT_TRUE(any_has(open_points(failing), "Fails: shell 1 (drum): required thickness"));
    EXPECT_TRUE(any_has(open_points(Made(EXTERNAL).document()),
                        "Approximate: figures of ExtChartData.txt (CS-2)"));
    const CalculationDocument none = Made(SHELL).document();
    EXPECT_TRUE(open_points(none).empty());
    EXPECT_TRUE(std::holds_alternative<Paragraph>(none.front.open_points.at(0)));
}

TEST(Document, WordsOnAVerdictThatPassesAreNoAlarm) {
    // The small end of the hub limits its MAWP, which is above P all the same.
    const std::string passing = page_of(with("g0", "g0 = 0.13", with("t", "t = 3")));
    EXPECT_TRUE(has(passing, "<strong class=\"pass\">PASS</strong>"));
    EXPECT_TRUE(has(passing, "<strong>Verdict:</strong>"));
    EXPECT_TRUE(
        has(page_of(with("t", "t = 0.05", SHELL)), "<strong class=\"bad\">Verdict:</strong>"));
}

// ---- order and parts ---------------------------------------------------------------------------------------------

TEST(Document, PartsComeInTheirOrder) {
    const std::string page = page_of(DOCUMENT + SHELL + EXTERNAL);
    std::size_t last = 0;
    for (const std::string_view id :
         {"open-points", "scope", "assumptions", "references", "contents", "shell-1",
          "shell-1-inputs", "shell-1-drawing", "shell-1-checks", "shell-1-results",
          "shell-1-calculation", "external-1", "data", "not-covered"}) {
        const std::size_t at = page.find("id=\"" + std::string(id) + '"');
        ASSERT_NE(at, std::string::npos) << id;
        EXPECT_GT(at, last) << id;
        last = at;
    }
    // Each entry of the contents leads to a part, and no id is there twice.
    const std::regex links("href=\"#([^\"]*)\""), ids(" id=\"([^\"]*)\"");
    std::vector<std::string> known;
    for (auto at = std::sregex_iterator(page.begin(), page.end(), ids);
         at != std::sregex_iterator(); ++at) {
        EXPECT_EQ(std::count(known.begin(), known.end(), (*at)[1].str()), 0) << (*at)[1];
        known.push_back((*at)[1]);
    }
    for (auto at = std::sregex_iterator(page.begin(), page.end(), links);
         at != std::sregex_iterator(); ++at)
        EXPECT_EQ(std::count(known.begin(), known.end(), (*at)[1].str()), 1) << (*at)[1];
}

TEST(Document, DetailDecidesWhatAComponentShows) {
    const Made made(SHELL);
    EXPECT_EQ(section(made.document(Detail::summary).sections, "shell-1"), nullptr);
    EXPECT_FALSE(made.document(Detail::summary).front.components.rows.empty());
    const CalculationDocument checks = made.document(Detail::checks);
    EXPECT_NE(section(checks.sections, "shell-1-checks"), nullptr);
    EXPECT_NE(section(checks.sections, "shell-1-inputs"), nullptr);
    EXPECT_EQ(section(checks.sections, "shell-1-calculation"), nullptr);
    EXPECT_NE(section(made.document().sections, "shell-1-calculation"), nullptr);
}

TEST(Document, InputsHaveTheirSourceAndAreNotRounded) {
    const Made made(with("t", "t = 0.123456", with("P", "P = \"10 bar\"", SHELL)));
    const std::vector<InputRow> rows =
        input_rows(*made.input.request.elements[0], made.input.request.units);
    const auto row = [&](std::string_view key) {
        const auto at = std::find_if(rows.begin(), rows.end(),
                                     [&](const InputRow& each) { return each.key->name == key; });
        EXPECT_NE(at, rows.end()) << key;
        return at == rows.end() ? InputRow{} : *at;
    };
    EXPECT_EQ(row("t").value, "0.123456");
    EXPECT_EQ(row("t").unit, "in.");
    EXPECT_EQ(row("t").source, "file");
    EXPECT_EQ(row("P").source, "file: 10 bar");
    EXPECT_EQ(row("kind").value, "cylinder");
    EXPECT_EQ(row("E").source, "default");
}

TEST(Document, AssumptionsNameTheDefaultsThatDecide) {
    const auto words = [](const std::string& toml) {
        std::string all;
        for (const DocumentList& list :
             blocks_of<DocumentList>(Made(toml).document(), "assumptions"))
            for (const std::string& item : list.items)
                all += item + '\n';
        return all;
    };
    EXPECT_TRUE(has(words(SHELL), "Joint efficiency (E) is 1.000 by default: shell 1 (drum)"))
        << words(SHELL);
    EXPECT_FALSE(has(words(SHELL + "E = 1\n"), "Joint efficiency"));
    EXPECT_TRUE(has(words(EXTERNAL), "Figures of ExtChartData.txt are approximate: CS-2"));
    EXPECT_TRUE(has(words(EXTERNAL), "Factor A comes from the equations"));
}

TEST(Document, ReferencesHaveTheirEdition) {
    const std::vector<DocumentTable> tables = blocks_of<DocumentTable>(
        Made(SHELL + with("code", "code = \"VIII-2\"")).document(), "references");
    ASSERT_EQ(tables.size(), 1u);
    ASSERT_GE(tables[0].rows.size(), 2u);
    EXPECT_TRUE(has(tables[0].rows[0][0].text, "Division 1"));
    EXPECT_EQ(tables[0].rows[0][2].text, "shell 1 (drum)");
    EXPECT_EQ(tables[0].rows[0][1].text, "current, of no one year");
    EXPECT_TRUE(has(tables[0].rows[1][0].text, "Division 2"));
    EXPECT_EQ(tables[0].rows[1][1].text, "2017");
}

TEST(Document, OfABucklingStressNamesTheCodeCaseAndNoTable) {
    const std::string page = page_of(EXTERNAL + "method = \"stress\"\nSy = 30000\n");
    EXPECT_TRUE(has(page, "ASME Code Case 2286"));
    EXPECT_FALSE(has(page, "not from Table G"));
    EXPECT_FALSE(has(page_of(EXTERNAL), "ASME Code Case 2286"));
}

// Name and edition of each reference, and what uses it.
std::map<std::string, std::pair<std::string, std::string>> references_of(const std::string& toml) {
    std::map<std::string, std::pair<std::string, std::string>> all;
    for (const DocumentTable& table : blocks_of<DocumentTable>(Made(toml).document(), "references"))
        for (const std::vector<Cell>& row : table.rows)
            all[row[0].text] = {row[1].text, row[2].text};
    return all;
}

TEST(Document, OfAShellWithABucklingStressNamesTheCodeCase) {
    const std::string outside =
        SHELL + "P_external = 15\nlength = 60\nSy = 30000\nchart = \"CS-2\"\n";
    EXPECT_EQ(references_of(outside + "method = \"stress\"\n")["ASME Code Case 2286"].second,
              "shell 1 (drum)");
    EXPECT_FALSE(references_of(outside).contains("ASME Code Case 2286"));
    EXPECT_FALSE(references_of(SHELL).contains("ASME Code Case 2286"));
    const std::string pipe = "[[compression]]\nT = 300\nchart = \"CS-2\"\nSy = 33600\nDo = 12\n"
                             "t = 0.5\nlength = 120\n";
    EXPECT_TRUE(references_of(pipe).contains("ASME Code Case 2286"));
    EXPECT_FALSE(references_of(pipe + "code = \"VIII-2\"\n").contains("ASME Code Case 2286"));
}

TEST(Document, StandardFlangeHasTheEditionOfItsFigures) {
    const auto references = references_of(
        "[[flange]]\ntype = \"weld neck\"\nkind = \"rated\"\nrating = 270\nP = 150\nT = 300\n"
        "material = \"SA-105\"\nstandard = { class = 150, size = 20, wall = 0.5 }\n");
    EXPECT_EQ(references.at("ASME B16.5").first, "2020 in one copy");
    EXPECT_EQ(references.at("ASME B16.5").second, "flange 1");
    EXPECT_EQ(std::count_if(references.begin(), references.end(),
                            [](const auto& each) { return has(each.first, "B16.5"); }),
              1);
}

TEST(Document, EndNamesProgramInputDataAndWhatIsNotChecked) {
    const std::string page = page_of(EXTERNAL);
    EXPECT_TRUE(has(page, "<td>drum.toml</td>"));
    EXPECT_TRUE(has(page, HASH));
    EXPECT_TRUE(has(page, "ExtChartData.txt, SHA-256 "));
    EXPECT_TRUE(has(page, "fatigue, UG-22"));
    EXPECT_TRUE(has(page, "<meta name=\"dcterms.created\" content=\"2024-05-31\">"));
}

// ---- results ------------------------------------------------------------------------------------------------------

// The lines of the results of the first component, each with what goes on below it, and its paragraphs with those of
// its checks.
std::string results_text(const std::string& toml) {
    const CalculationDocument document = Made(toml).document();
    const std::string id = document.sections[0].id;
    std::string text;
    for (const Lines& lines : blocks_of<Lines>(document, id + "-results"))
        for (const Line& line : lines.lines)
            text += line.text + '\n';
    text = std::regex_replace(text, std::regex("\n    "), " ");
    for (const std::string& part : {id + "-checks", id + "-results"}) {
        for (const Paragraph& paragraph : blocks_of<Paragraph>(document, part))
            text += paragraph.text + '\n';
        for (const Remark& remark : blocks_of<Remark>(document, part))
            text += remark.word + ": " + remark.text + '\n';
    }
    return text;
}

constexpr std::string_view RATED_DECIDES =
    "The rated pressure decides: every check that depends on "
    "the pressure passes at it.";

TEST(Document, SaysWhichPressureDecidesAndWhatTheOtherIs) {
    std::string cover = FLANGE_TOML;
    for (const char* key : {"B", "g0", "g1", "h"})
        cover = with(key, "", cover);
    cover = with("type", "type = \"blind\"\nchannel_cover = true\nmaterial = \"SA-105\"", cover);
    const std::string deflected = with("t", "t = 0.9", cover);
    const std::string by_deflection = results_text(deflected);
    EXPECT_TRUE(has(by_deflection, RATED_DECIDES)) << by_deflection;
    EXPECT_TRUE(has(by_deflection, "is no pressure that the cover holds"));
    EXPECT_TRUE(has(by_deflection, "Maximum allowable working pressure, not reliable"));
    EXPECT_FALSE(any_has(open_points(Made(deflected).document()), "MAWP"));

    const std::string failing = results_text(with("t", "t = 0.8"));
    EXPECT_TRUE(any_has(open_points(Made(with("t", "t = 0.7")).document()),
                        "; this MAWP is an estimate, the rated pressure is "));
    EXPECT_TRUE(has(failing, RATED_DECIDES)) << failing;
    EXPECT_TRUE(has(failing, "from a design that does not pass, and not to be relied upon."));
    EXPECT_TRUE(has(failing, "Maximum allowable working pressure, estimate"));
    const std::string passing = results_text(with("g0", "g0 = 0.13", with("t", "t = 3")));
    EXPECT_TRUE(has(passing, "is an estimate in proportion from the design pressure.")) << passing;

    const std::string shell = results_text(SHELL);
    EXPECT_TRUE(has(shell, "the lower one decides.")) << shell;
    EXPECT_FALSE(has(shell, "estimate"));
    EXPECT_FALSE(has(shell, "pressure, estimate"));
    EXPECT_FALSE(has(results_text(EXTERNAL), "decides"));
}

TEST(Document, ResultsStandAloneAndOnce) {
    const std::string shell = results_text(SHELL);
    EXPECT_TRUE(has(shell, "Required thickness with allowances ")) << shell;
    EXPECT_TRUE(has(shell, "Maximum allowable working pressure, new and cold "));
    EXPECT_TRUE(has(shell, "MAWP by Appendix 1-4(f), new and cold"));
    EXPECT_FALSE(has(shell, "The same"));
    const std::string flange = results_text(FLANGE_TOML);
    EXPECT_TRUE(has(flange, "\nNo value\n"));
    EXPECT_TRUE(has(flange, "\nkind is not design: all of the selected design; all of the "
                            "rounded design\n"))
        << flange;
    EXPECT_FALSE(has(flange, "Number of bolts"));
    const std::string design =
        results_text(with("C", "", with("n", "", with("a", "kind = \"design\""))));
    EXPECT_TRUE(has(design, "Number of bolts, selected ")) << design;
    EXPECT_TRUE(has(design, "Number of bolts, rounded "));
    EXPECT_TRUE(has(flange, "\nno partition gasket: Effective width of the partition gasket\n"));
    EXPECT_FALSE(has(flange, " 0.00 lbf"));
    const std::string rated = results_text(
        "[[flange]]\ntype = \"weld neck\"\nkind = \"rated\"\nrating = 270\nP = 150\nT = 300\n");
    EXPECT_TRUE(has(rated, "\nkind rated: no stresses are calculated: all other results\n"))
        << rated;
}

TEST(Document, WordsOfAComponentAreItsVerdict) {
    const auto word = [](const std::string& toml) {
        const CalculationDocument document = Made(toml).document();
        const auto remarks = blocks_of<Remark>(document, document.sections[0].id + "-checks");
        return remarks.empty() ? std::string() : remarks[0].word;
    };
    EXPECT_EQ(word(SHELL), "PASS");
    EXPECT_EQ(word(with("t", "t = 0.05", SHELL)), "FAIL");
    // No stress for the check of the convex side.
    EXPECT_EQ(word("[[external]]\nkind = \"elliptical\"\nP = 15\nT = 300\nchart = \"CS-2\"\n"
                   "D = 48\nt = 0.5\n"),
              "NOT MADE");
}

TEST(Document, AnAbbreviationIsInCapitals) {
    const CalculationDocument document =
        Made("[[mdmt]]\ndescription = \"shell\"\ncurve = \"B\"\ntg = 1.0\n").document();
    EXPECT_EQ(document.sections[0].title, "MDMT 1 (shell)");
    EXPECT_EQ(Made(SHELL).document().sections[0].title, "Shell 1 (drum)");
}

TEST(Document, HasOneDecimalMark) {
    const std::string toml = "decimal_comma = true\n" +
                             with("description", "description = \"drum 2.5\"", SHELL) +
                             with("t", "t = 0.8");
    const Made made(toml);
    const CalculationDocument document = made.document();
    const std::regex point("[0-9][.][0-9]");
    std::vector<std::string> texts;
    for (const auto& [words, of] : document.front.components.rows[0])
        texts.push_back(words);
    for (const std::string id : {"shell-1", "flange-1"}) {
        for (const char* part : {"-inputs", "-results"})
            for (const Lines& lines : blocks_of<Lines>(document, id + part))
                if (lines.lines[0].text != "No value") // names alone
                    for (const Line& line : lines.lines)
                        texts.push_back(line.text);
        for (const CheckRows& checks : blocks_of<CheckRows>(document, id + "-checks"))
            for (const CheckRow& row : checks.rows)
                texts.insert(texts.end(), {row.demand, row.limit, row.ratio, row.unit, row.remark});
        for (const Paragraph& paragraph : blocks_of<Paragraph>(document, id + "-checks"))
            texts.push_back(paragraph.text);
        for (const Remark& remark : blocks_of<Remark>(document, id + "-checks"))
            texts.push_back(remark.text);
    }
    for (const std::string& point_text : open_points(document))
        texts.push_back(point_text);
    int commas = 0;
    for (std::string text : texts) {
        // What the user wrote stays.
        for (std::size_t at = text.find("drum 2.5"); at != text.npos; at = text.find("drum 2.5"))
            text.erase(at, std::string_view("drum 2.5").size());
        EXPECT_FALSE(std::regex_search(text, point)) << text;
        commas += std::regex_search(text, std::regex("[0-9],[0-9]")) ? 1 : 0;
    }
    EXPECT_GT(commas, 100);
    EXPECT_TRUE(std::regex_search(document.front.words, std::regex("[0-9],[0-9]{4}")))
        << document.front.words;
}

// ---- calculation ------------------------------------------------------------------------------------------------

TEST(Document, LinesOfTheEngineStay) {
    const Made made(FLANGE_TOML + SHELL);
    const std::string text = text_of_page(made.page());
    int lines = 0;
    for (const Calculated& each : made.calculation.calculated) {
        for (const ReportLine& line : report_lines(each.outcome->report)) {
            if (line.text.empty() || is_drawing(line.text)) continue;
            const std::string shown = with_raised_powers(to_utf8(line.text));
            EXPECT_TRUE(has(text, shown)) << shown;
            ++lines;
        }
    }
    EXPECT_GT(lines, 150);
}

TEST(Document, FormulasAreBlocksWithTheirParagraph) {
    const std::vector<Formula> formulas =
        blocks_of<Formula>(Made(FLANGE_TOML).document(), "flange-1-calculation");
    const auto with_symbol = [&](std::string_view symbol) {
        const auto at = std::find_if(formulas.begin(), formulas.end(), [&](const Formula& each) {
            return std::any_of(each.lines.begin(), each.lines.end(),
                               [&](const Line& line) { return has(line.text, symbol); });
        });
        EXPECT_NE(at, formulas.end()) << symbol;
        return at == formulas.end() ? Formula{} : *at;
    };
    EXPECT_EQ(with_symbol("[SHo]").paragraph, "2-7");
    EXPECT_EQ(with_symbol("[SHo]").lines.size(), 4u); // heading, symbols, numbers, value
    EXPECT_EQ(with_symbol("[Wm1]").paragraph, "2-5");
    EXPECT_EQ(with_symbol("[Bsmax]").paragraph, ""); // the line says it
    const std::vector<Formula> other = blocks_of<Formula>(
        Made(with("code", "code = \"EN 13445\"")).document(), "flange-1-calculation");
    EXPECT_TRUE(std::any_of(other.begin(), other.end(),
                            [](const Formula& each) { return each.paragraph == "11.5.2"; }));
}

TEST(Document, PlaceholdersOfTheEngineHaveANoteWithTheValue) {
    const Made made(with("code", "code = \"VIII-2\""));
    const CalculationDocument document = made.document();
    EXPECT_TRUE(has(text_of_page(html_of(document)), "/@0 ##")); // the line stays
    std::vector<std::string> notes;
    for (const MarginNote& note : blocks_of<MarginNote>(document, "flange-1-calculation"))
        notes.push_back(note.text);
    EXPECT_TRUE(any_has(notes, "Sa = 25000.00 psi"));
    EXPECT_TRUE(any_has(notes, "leaves out no value")); // the row of bars
    const Made loaded(with("code", "code = \"VIII-2\"") +
                      "external_loads = true\naxial_force = 5000\nbending_moment = 8000\n");
    notes.clear();
    for (const MarginNote& note : blocks_of<MarginNote>(loaded.document(), "flange-1-calculation"))
        notes.push_back(note.text);
    EXPECT_TRUE(any_has(notes, "@3 in place of a value: hD = ")) << notes.size();
    // A line without a gap has none.
    for (const MarginNote& note :
         blocks_of<MarginNote>(Made(FLANGE_TOML).document(), "flange-1-calculation"))
        EXPECT_TRUE(has(note.text, "leaves out no value")) << note.text;
}

TEST(Document, WordForADrawingGivesWayToTheDrawing) {
    const Made made(FLANGE_TOML);
    const CalculationDocument document = made.document();
    const std::vector<Drawing> drawings = blocks_of<Drawing>(document, "flange-1-drawing");
    ASSERT_EQ(drawings.size(), 1u);
    EXPECT_TRUE(has(drawings[0].figure.svg, "<svg"));
    const std::vector<DrawingReference> references =
        blocks_of<DrawingReference>(document, "flange-1-calculation");
    ASSERT_FALSE(references.empty());
    EXPECT_EQ(references[0].id, drawings[0].id);
    const std::string page = html_of(document);
    EXPECT_FALSE(has(page, "Image="));
    EXPECT_FALSE(has(page, "[Drawing:"));
    EXPECT_TRUE(has(page, "href=\"#" + drawings[0].id + '"'));
    EXPECT_TRUE(has(page, "role=\"img\" aria-label=\""));
}

TEST(Document, HasTheFontOfDrawingsOnceWhereItHasOne) {
    const auto fonts = [](const std::string& page) {
        std::size_t count = 0;
        for (std::size_t at = 0; (at = page.find("@font-face", at)) != std::string::npos; ++at)
            ++count;
        return count;
    };
    const Made made(std::string(FLANGE_TOML) + SHELL);
    EXPECT_EQ(fonts(html_of(made.document(Detail::checks))), 1U);
    EXPECT_EQ(fonts(html_of(made.document(Detail::summary))), 0U);
    const std::string page = html_of(made.document(Detail::checks));
    EXPECT_LT(page.find("src: url(data:font/ttf;base64,AAEAAAA"), page.find("</style>"));
    EXPECT_TRUE(has(page, "<g font-family=\"Tarvane Drawing, DejaVu Sans"));
}

// What a drawing of its own has in its frame is in the caption here, once; no line ends within an equation of it.
TEST(Document, CaptionHasTheWordsOfTheFrame) {
    const CalculationDocument document = Made(FLANGE_TOML).document();
    Drawing drawing = blocks_of<Drawing>(document, "flange-1-drawing").at(0);
    const std::string title = "Figure 1: flange 1 (test flange): weld neck flange. Scale 1 : ";
    EXPECT_TRUE(drawing.caption.starts_with(title)) << drawing.caption;
    EXPECT_TRUE(has(drawing.caption, ", dimensions in inches. 12 bolts \xC3\x98"))
        << drawing.caption;
    EXPECT_TRUE(has(drawing.caption, ". Indicated: gasket; nut")) << drawing.caption;
    for (const std::string words : {"weld neck", "bolts", "Indicated", "inches"})
        EXPECT_FALSE(has(drawing.figure.svg.substr(drawing.figure.svg.find('>')), words)) << words;
    EXPECT_EQ(blocks_of<DrawingReference>(document, "flange-1-calculation").at(0).text,
              "Figure 1: flange 1 (test flange), scale " + drawing.figure.scale);
    drawing.caption = "Figure 2: shell 1.5. ci = .0625, \xC3\x98.5; nut";
    drawing.figure.dropped = {"t = 1.5", "h = 2"};
    DocumentSection section;
    section.blocks.emplace_back(drawing);
    EXPECT_TRUE(has(
        html_of(section),
        "<figcaption>Figure 2: shell <span class=\"one\">1.5.</span> <span class=\"one\">ci = "
        ".0625,</span> <span class=\"one\">\xC3\x98.5;</span> nut. Without room in the drawing: "
        "<span class=\"one\">t = 1.5;</span> <span class=\"one\">h = 2</span></figcaption>"))
        << html_of(section);
}

TEST(Document, WholePowersAreRaised) {
    EXPECT_EQ(with_raised_powers("0.312^(2) * go^(-1)"), "0.312² * go⁻¹");
    EXPECT_EQ(with_raised_powers("in.^-1"), "in.⁻¹");
    EXPECT_EQ(with_raised_powers("x^12+1"), "x¹²+1");
    EXPECT_EQ(with_raised_powers("(Do/t)^(0.94), 0.938^0.25, a^b, ^"),
              "(Do/t)^(0.94), 0.938^0.25, a^b, ^");
}

TEST(Document, LongStepsGoOnUnderTheirSign) {
    CalculationDocument document = Made(SHELL).document(Detail::summary);
    std::string step = "  = ";
    for (int i = 0; i < 30; ++i)
        step += "12345 + ";
    document.sections[0].blocks.emplace_back(Formula{{{step}}, {}});
    const std::string page = html_of(document);
    const std::size_t at = page.find("  = 12345");
    ASSERT_NE(at, std::string::npos);
    const std::string block = page.substr(at, page.find("</pre>", at) - at);
    EXPECT_TRUE(has(block, "\n    12345"));
    std::size_t begin = 0;
    while (begin < block.size()) {
        const std::size_t end = std::min(block.find('\n', begin), block.size());
        EXPECT_LE(end - begin, 98u);
        begin = end + 1;
    }
}

TEST(Document, HeadingsInARowAreOneMarkWithTheParagraphAtTheRight) {
    const std::string page = page_of(FLANGE_TOML);
    const std::string first = "Basic Flange and Bolt Loads:";
    const std::size_t at = page.find("<b>" + first + '\n');
    ASSERT_NE(at, std::string::npos);
    const std::string mark = page.substr(at, page.find("</b>", at) - at);
    const std::string line = mark.substr(3 + first.size() + 1);
    EXPECT_TRUE(line.starts_with("Hydrostatic End Load due to Pressure [H]:  ")) << mark;
    EXPECT_TRUE(line.ends_with(" 2-3\n")) << mark;
    EXPECT_EQ(line.size(), 77u) << mark;
}

TEST(Document, AShortRemarkTakesThePlaceOfFigures) {
    const CheckRow without{.label = "Heat treatment",
                           .load_case = {},
                           .paragraph = "UCS-56",
                           .demand = {},
                           .relation = {},
                           .limit = {},
                           .unit = {},
                           .ratio = {},
                           .state = "pass",
                           .remark = std::string(37, 'x')};
    CheckRow longer = without, with = without;
    longer.remark += 'x';
    with.remark = "none";
    with.ratio = "0.5";
    const CheckColumns usual, beside{.remark_beside = true};
    const std::string heads = check_heads(beside);
    const std::vector<std::string> one = lines_of(without, beside);
    ASSERT_EQ(one.size(), 1u);
    EXPECT_EQ(one[0].substr(heads.find("State")), "pass");
    EXPECT_EQ(one[0].find("  " + without.remark + "  pass"), 50u) << one[0];
    EXPECT_EQ(lines_of(longer, beside).size(), 2u);
    EXPECT_EQ(lines_of(with, beside).size(), 2u) << "its figures are there";
    EXPECT_EQ(lines_of(without, usual).size(), 2u) << "a terminal has it below";
}

TEST(Document, ColumnsOfTablesHaveTheirWidths) {
    CalculationDocument document = Made(SHELL).document(Detail::summary);
    const std::string wide(300, 'x');
    document.sections[0].blocks.emplace_back(
        DocumentTable{.caption = {},
                      .columns = {{"Item"}, {"Value", true}, {"Source"}},
                      .rows = {{{"1234567"}, {"1"}, {wide}}, {{wide}}}});
    // 10, 8 and as much as they leave of a line.
    EXPECT_TRUE(has(html_of(document),
                    "<table class=\"set whole\">\n<colgroup><col style=\"width:10%\">"
                    "<col style=\"width:8%\"><col style=\"width:82%\"></colgroup>"));
}

TEST(Document, WhatBelongsTogetherStaysOnAPage) {
    const std::string page = page_of(SHELL + FLANGE_TOML);
    EXPECT_TRUE(has(page, "<nav aria-labelledby=\"contents\" class=\"whole\">"));
    EXPECT_TRUE(has(page, "<pre class=\"checks whole\"><b>Check ")); // few rows
    EXPECT_TRUE(has(page, "<pre class=\"checks\"><b>Check "));       // many
    // The closing line of a calculation is no page of its own.
    EXPECT_TRUE(has(page, "<pre class=\"whole last\"><b>TARVANE is a trademark"));
    EXPECT_TRUE(has(page, "string-set: heading \"front page\""));
}

TEST(Document, LongLabelsHaveTheRoomThatOthersLeave) {
    const CalculationDocument document = Made(FLANGE_TOML).document();
    const auto lines = [&](const std::string& id) {
        std::string text;
        for (const Lines& block : blocks_of<Lines>(document, id)) {
            for (const Line& line : block.lines) {
                EXPECT_LE(characters(line.text), 102u) << line.text;
                text += line.text + '\n';
            }
        }
        return text;
    };
    EXPECT_TRUE(has(lines("flange-1-inputs"), "\nBolt allowable stress at design temperature  Sb"));
    EXPECT_TRUE(has(lines("flange-1-results"),
                    "\nMaximum allowable working pressure, new and cold, estimate MAPnc "));
    // A text among the numbers ends where they end.
    const std::regex limits("\nWhat limits the MAWP +( [^ ]+)+\n");
    std::smatch found;
    const std::string results = lines("flange-1-results");
    ASSERT_TRUE(std::regex_search(results, found, limits)) << results;
    const std::size_t heads_end = results.find("Value") + 5;
    EXPECT_EQ(found[0].length() - 2, static_cast<std::ptrdiff_t>(heads_end)) << found[0];
    const std::string page = html_of(document);
    EXPECT_TRUE(has(page, "\nTangential flange stress, gasket seating "));
}

TEST(Document, ColumnsGrowNoFurtherThanThePage) {
    const std::vector<TextColumn> columns{{4}, {6}, {4, true}};
    using Rows = std::vector<std::vector<std::string>>;
    const auto widths = [&](const Rows& rows, std::size_t page) {
        std::vector<std::size_t> all;
        for (const TextColumn& column : fitted(columns, rows, page))
            all.push_back(column.width);
        return all;
    };
    using Widths = std::vector<std::size_t>;
    EXPECT_EQ(widths({{"abc", "x", "1"}}, 20), (Widths{4, 6, 4})) << "no need";
    EXPECT_EQ(widths({{"abcdef", "x", "1"}}, 20), (Widths{7, 6, 4})) << "of the page";
    EXPECT_EQ(widths({{"abcdef", "x", "1"}}, 14), (Widths{7, 5, 2}))
        << "of the others, the last first";
    EXPECT_EQ(widths({{"abcdefghijkl", "xy", "1"}, {}}, 14), (Widths{9, 3, 2}))
        << "as far as it goes";
    EXPECT_EQ(widths({{"äöüäöü", "abcdefgh", "1234"}}, 10), (Widths{4, 6, 4})) << "no room";
}

TEST(Document, AWideNumberBeginsInTheRoomBeforeIt) {
    const std::vector<TextColumn> columns{{6}, {6}, {4, true}, {3}};
    using Row = std::vector<std::string>;
    using Lines = std::vector<std::string>;
    EXPECT_EQ(row_lines(columns, Row{"abc", "", "äö 45678", "m"}), (Lines{"abc    äö 45678 m"}));
    EXPECT_EQ(row_lines(columns, Row{"abc", "", "0123456789", "m"}), (Lines{"abc  0123456789 m"}));
    EXPECT_EQ(row_lines(columns, Row{"abcdef", "", "01 345 890", "m"}),
              (Lines{"abcde        01 m", "f           345", "            890"}));
    EXPECT_EQ(row_lines(columns, Row{"abc", "x", "12 45", "m"}), (Lines{"abc   x   12 45 m"}));
}

TEST(Document, NothingAsksForAPageNumberInItsOwnSection) {
    const std::string page = page_of(FLANGE_TOML);
    EXPECT_TRUE(has(page, "nav a::after { content: target-counter(attr(href), page); position: "
                          "absolute; right: 0; "));
    std::size_t counters = 0;
    for (std::size_t at = page.find("target-counter"); at != std::string::npos;
         at = page.find("target-counter", at + 1))
        ++counters;
    EXPECT_EQ(counters, 1u) << "each makes pages that are laid out anew";
    EXPECT_TRUE(has(page, "\n</b> = ")) << "the end of the line is inside of its mark";
    EXPECT_TRUE(has(page, " 2-3\n</b> = ")) << "and the paragraph, too";
}

TEST(Document, TheSameInputGivesTheSameBytes) {
    EXPECT_EQ(page_of(FLANGE_TOML), page_of(FLANGE_TOML));
}

} // namespace
} // namespace tarvane::app
