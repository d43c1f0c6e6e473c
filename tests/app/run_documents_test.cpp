// The documents that `tarvane run` writes beside its report: which there are, what they replace, and how PDF comes
// about. A script in the place of WeasyPrint shows what is asked of it; the last test runs the program itself.
#include "app_fixture.h"

#include <sys/stat.h>

namespace tarvane::app {

using namespace vessel;
namespace {

class RunDocuments : public ProgramTest {
  protected:
    RunDocuments() {
        write("f.toml", FLANGE_TOML);
        write("thin.toml", with("t", "t = 0.6"));
        std::string ring = with("type", "type = \"loose ring\"");
        for (const char* key : {"g0", "g1", "h"})
            ring = with(key, "", ring);
        write("stop.toml", with("Fid", "Fid = 7", with("ci", "ci = 3.6", ring)));
        std::filesystem::create_directory(folder / "bin");
    }

    void program(const std::string& name, const std::string& script) const {
        const std::string file = write("bin/" + name, script);
        chmod(file.c_str(), 0755);
    }
    // A program of that name, alone on the PATH of run_documents.
    void weasyprint(const std::string& script) const {
        program("weasyprint", "#!/bin/sh\n" + script);
    }

    ProgramRun run_documents(const std::string& arguments, const std::string& before = {}) const {
        return shell("cd '" + folder.string() + "'; " + before + " PATH='" + path("bin") + "' '" +
                     TARVANE_PROGRAM + "' run --plain " + arguments);
    }

    bool there(const std::string& name) const { return std::filesystem::exists(folder / name); }

    std::string text(const std::string& name) const { return read(path(name)); }

    std::size_t files() const {
        return static_cast<std::size_t>(
            std::distance(std::filesystem::directory_iterator(folder), {}));
    }
};

// What it is given, after the first bytes of a PDF.
constexpr const char* ECHO = "echo %PDF-; exec /bin/cat\n";

TEST_F(RunDocuments, AllTogetherAndOfOneCalculation) {
    weasyprint(ECHO);
    const std::string ALL = " --html p.html --pdf p.pdf --json p.json --csv p.csv --report p.txt";
    for (const auto& [input, status] : {std::pair{"f.toml", 0}, {"thin.toml", 1}}) {
        const std::size_t before = files();
        const ProgramRun run = run_documents(input + ALL);
        EXPECT_EQ(run.status, status) << run.err;
        EXPECT_EQ(run.err.find("tarvane: "), std::string::npos) << run.err;
        const std::string page = text("p.html");
        EXPECT_NE(page.find(status == 0 ? "PASS:" : "FAIL:"), std::string::npos) << page;
        EXPECT_EQ(page.substr(page.size() - 8), "</html>\n");
        EXPECT_EQ(text("p.pdf"), "%PDF-\n" + page) << "of the same page";
        EXPECT_NE(text("p.json").find(status == 0 ? "\"pass\"" : "\"fail\""), std::string::npos);
        EXPECT_EQ(text("p.csv").substr(0, 16), "table,component,");
        EXPECT_FALSE(text("p.txt").empty());
        if (status == 0) {
            EXPECT_EQ(files(), before + 7)
                << "five, and the output of the run; no file in between is left";
        }
    }
}

TEST_F(RunDocuments, ACalculationThatEndsEarlyHasADocumentThatSaysSo) {
    weasyprint(ECHO);
    const ProgramRun run =
        run_documents("stop.toml --html s.html --pdf s.pdf --json s.json --csv s.csv");
    EXPECT_EQ(run.status, 3) << run.err;
    EXPECT_NE(text("s.html").find("NOT MADE"), std::string::npos);
    EXPECT_EQ(text("s.pdf"), "%PDF-\n" + text("s.html"));
    EXPECT_FALSE(there("s.json") || there("s.csv"));
    EXPECT_NE(run.err.find("tarvane: s.json is not written: the calculation was not completed"),
              std::string::npos)
        << run.err;
}

TEST_F(RunDocuments, NoOutputOverwritesAnInputOrAnotherOutput) {
    weasyprint(ECHO);
    const std::string flags[] = {"--report", "--html", "--pdf", "--json", "--csv"};
    for (const std::string& flag : flags) {
        const ProgramRun run = run_documents("f.toml " + flag + " ./f.toml");
        EXPECT_EQ(run.status, 2) << flag;
        EXPECT_NE(run.err.find("it is the input file"), std::string::npos) << run.err;
        EXPECT_EQ(text("f.toml"), FLANGE_TOML);
        for (const std::string& other : flags) {
            if (other == flag) continue;
            const ProgramRun same =
                run_documents("f.toml " + flag + " x.out " + other + " bin/../x.out");
            EXPECT_EQ(same.status, 2) << flag << other;
            EXPECT_FALSE(there("x.out")) << flag << other;
        }
    }
}

TEST_F(RunDocuments, DetailIsThatOfTheDocument) {
    std::size_t size = 0;
    for (const char* detail : {"summary", "checks", "full"}) {
        const std::string name = std::string(detail) + ".html";
        ASSERT_EQ(run_documents("f.toml --html " + name + " --detail " + detail).status, 0);
        const std::string page = text(name);
        EXPECT_GT(page.size(), size) << detail;
        size = page.size();
        const auto holds = [&](const char* id) { return page.find(id) != std::string::npos; };
        EXPECT_EQ(holds("id=\"flange-1-checks\""), detail != std::string("summary"));
        EXPECT_EQ(holds("id=\"flange-1-calculation\""), detail == std::string("full"));
    }
    ASSERT_EQ(run_documents("f.toml --html d.html --detail FULL").status, 0);
    const ProgramRun run = run_documents("f.toml --html e.html --detail all");
    EXPECT_EQ(run.status, 2);
    EXPECT_NE(run.err.find("all"), std::string::npos) << run.err;
    EXPECT_FALSE(there("e.html"));
}

TEST_F(RunDocuments, WithoutWeasyPrintThereIsAWayOut) {
    write("old.pdf", "old");
    const ProgramRun run = run_documents("f.toml --pdf old.pdf --html p.html --json p.json");
    EXPECT_EQ(run.status, 2);
    EXPECT_NE(run.err.find("apt-get install weasyprint"), std::string::npos) << run.err;
    EXPECT_NE(run.err.find("print it with a browser"), std::string::npos) << run.err;
    EXPECT_EQ(text("old.pdf"), "old");
    EXPECT_TRUE(there("p.html") && there("p.json")) << "the others are written all the same";
}

TEST_F(RunDocuments, AFailureOfWeasyPrintIsToldInItsWords) {
    write("old.pdf", "old");
    const auto fails = [&](const std::string& script, const std::string& words) {
        weasyprint(script);
        const ProgramRun run = run_documents("f.toml --pdf old.pdf");
        EXPECT_EQ(run.status, 2) << script;
        EXPECT_NE(run.err.find(words), std::string::npos) << run.err;
        EXPECT_EQ(text("old.pdf"), "old") << script;
    };
    fails("echo %PDF-; echo 'no such font' >&2; exit 3\n", "ended with status 3:\nno such font\n");
    fails("echo %PDF-; kill -9 $$\n", "was ended by signal 9");
    fails("echo hello\n", "wrote no PDF");
    fails("exit 0\n", "wrote no PDF");
}

TEST_F(RunDocuments, WhatWeasyPrintSaysOfThePageIsShown) {
    weasyprint(std::string("echo 'WARNING: PDF/UA support is experimental, x' >&2\n"
                           "echo 'ERROR: No anchor' >&2\n") +
               ECHO);
    const ProgramRun run = run_documents("f.toml --pdf p.pdf --pdf-ua");
    EXPECT_EQ(run.status, 0);
    EXPECT_NE(run.err.find("tarvane: weasyprint: ERROR: No anchor\n"), std::string::npos)
        << run.err;
    EXPECT_EQ(run.err.find("experimental"), std::string::npos) << run.err;
    EXPECT_TRUE(there("p.pdf"));
}

TEST_F(RunDocuments, TheStructureOfScreenReadersIsWrittenWhenAskedFor) {
    weasyprint("echo \"$@\" >>asked\n" + std::string(ECHO));
    EXPECT_EQ(run_documents("f.toml --pdf p.pdf").status, 0);
    EXPECT_EQ(run_documents("f.toml --pdf p.pdf --pdf-ua").status, 0);
    EXPECT_EQ(text("asked"), "--encoding utf-8 - -\n--pdf-variant pdf/ua-1 --encoding utf-8 - -\n");
    const ProgramRun without = run_documents("f.toml --html p.html --pdf-ua");
    EXPECT_NE(without.status, 0);
    EXPECT_NE(without.err.find("--pdf-ua requires --pdf"), std::string::npos) << without.err;
}

TEST_F(RunDocuments, AVersionThatCannotWriteThisStructureSaysSo) {
    weasyprint(R"(case "$*" in *--pdf-variant*)
    echo 'weasyprint: error: unrecognized arguments: --pdf-variant' >&2; exit 2;; esac
)" + std::string(ECHO));
    const ProgramRun run = run_documents("f.toml --pdf p.pdf --pdf-ua");
    EXPECT_NE(run.status, 0);
    EXPECT_NE(run.err.find("unrecognized arguments: --pdf-variant"), std::string::npos) << run.err;
    EXPECT_FALSE(there("p.pdf"));
}

// ---- WeasyPrint as a program in Python ---------------------------------------------------------------------------

constexpr const char* PYTHON = "/usr/bin/python3";

TEST_F(RunDocuments, ItsInterpreterIsStartedWhereItIsPython) {
    const auto first_words = [&](const std::string& line, const std::string& name) {
        // The interpreter, which says what it is given.
        program(name, R"(#!/bin/sh
for word in "$1" "$2"; do case $word in import*) word=code;; esac; printf '%s ' "$word"; done >asked
)" + std::string(ECHO));
        program("weasyprint", line + "\nexit(4)\n");
        const ProgramRun run = run_documents("f.toml --pdf p.pdf");
        EXPECT_EQ(run.status, 0) << line << run.err;
        return text("asked");
    };
    for (const char* python : {"python3", "python", "python3.9"})
        EXPECT_EQ(first_words("#!" + path("bin/") + python, python), "-c code ") << python;
    EXPECT_EQ(first_words("#! " + path("bin/python3") + " -sP", "python3"), "-sP -c ");
    EXPECT_EQ(first_words("#!/usr/bin/env python3", "python3"), "-c code ");
    // Else it is run as it is.
    const std::string own = path("bin/weasyprint") + ' ';
    EXPECT_EQ(first_words("#!" + path("bin/pypy3"), "pypy3"), own + "--encoding ");
    EXPECT_EQ(first_words("#!/usr/bin/env pypy3", "pypy3"), own + "--encoding ");
    EXPECT_EQ(first_words("#!" + path("bin/python3") + " -Wignore", "python3"), "-Wignore " + own);
}

TEST_F(RunDocuments, InPythonItRunsAsByItselfWithoutTheSearchForCircles) {
    if (!std::filesystem::exists(PYTHON)) GTEST_SKIP() << PYTHON << " is not there";
    std::filesystem::create_symlink(PYTHON, folder / "bin/python3");
    const std::string script = R"(
import gc, os, sys
import beside
try:
    import elsewhere
except ImportError:
    pass
open("seen", "a").write("%s %s %s %s %s\n" % (
    __name__, gc.isenabled(), sys.argv[0] == __file__, " ".join(sys.argv[1:]), os.path.basename(sys.path[0])))
print("%PDF-" + sys.stdin.read())
)";
    write("bin/beside.py", "");
    // Of the working directory nothing is run.
    for (const char* name : {"gc", "os", "runpy", "site", "weasyprint", "elsewhere"})
        write(std::string(name) + ".py", "open('hostile', 'w')\n");
    const std::string options = "--encoding utf-8 - -";
    for (const std::string& line : {std::string("#!") + PYTHON, std::string("#!") + PYTHON + " -s",
                                    std::string("#!/usr/bin/env python3")}) {
        program("weasyprint", line + script);
        std::filesystem::remove(folder / "seen");
        EXPECT_EQ(run_documents("f.toml --html p.html --pdf p.pdf").status, 0) << line;
        EXPECT_EQ(text("seen"), "__main__ False True " + options + " bin\n") << line;
        EXPECT_EQ(text("p.pdf"), "%PDF-" + text("p.html") + '\n') << line;
        EXPECT_FALSE(there("hostile")) << line;
    }
    program("weasyprint", std::string("#!") + PYTHON + "\nimport sys\nsys.exit('no such font')\n");
    const ProgramRun run = run_documents("f.toml --pdf q.pdf");
    EXPECT_EQ(run.status, 2);
    EXPECT_NE(run.err.find("weasyprint ended with status 1:\nno such font\n"), std::string::npos)
        << run.err;
    EXPECT_FALSE(there("q.pdf"));
}

TEST_F(RunDocuments, TheDateIsThatOfTheEnvironment) {
    const auto created = [&](const std::string& before) {
        EXPECT_EQ(run_documents("f.toml --html p.html", before).status, 0);
        const std::string page = text("p.html"), meta = "name=\"dcterms.created\" content=\"";
        return page.substr(page.find(meta) + meta.size(), 20);
    };
    EXPECT_EQ(created("SOURCE_DATE_EPOCH=1700000000"), "2023-11-14T22:13:20Z");
    EXPECT_EQ(created("SOURCE_DATE_EPOCH=0"), "1970-01-01T00:00:00Z");
    EXPECT_EQ(created("SOURCE_DATE_EPOCH=253402300799"), "9999-12-31T23:59:59Z");
    for (const char* none : {"253402300800", "-1", "1700000000x", "''"})
        EXPECT_GT(created("SOURCE_DATE_EPOCH=" + std::string(none)), "2024") << none;
}

TEST_F(RunDocuments, TwoPdfsOfOneDateAreTheSameBytes) {
    if (shell("command -v weasyprint").status != 0) GTEST_SKIP() << "WeasyPrint is not installed";
    for (const char* name : {"1.pdf", "2.pdf"}) {
        const ProgramRun run =
            shell("cd '" + folder.string() + "'; SOURCE_DATE_EPOCH=1700000000 '" + TARVANE_PROGRAM +
                  "' run f.toml --detail summary --pdf " + name);
        ASSERT_EQ(run.status, 0) << run.err;
        EXPECT_EQ(run.err.find("weasyprint"), std::string::npos) << run.err;
    }
    EXPECT_EQ(text("1.pdf").substr(0, 5), "%PDF-");
    EXPECT_TRUE(text("1.pdf") == text("2.pdf"));
}

} // namespace
} // namespace tarvane::app
