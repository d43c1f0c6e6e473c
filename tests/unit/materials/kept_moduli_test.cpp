// What is kept of ElastAlp07.txt: a lookup gives the same as one that reads the file, and nothing of a
// file that is no longer there.
#include "host/file_identity.h"
#include "host/file_units.h"
#include "host/install_paths.h"
#include "materials/modulus.h"

#include "../data_folder.h"
#include "../no_files.h"

#include <fcntl.h>
#include <sys/stat.h>

namespace tarvane {
namespace {

namespace fs = std::filesystem;
using data_test::NoFiles;

// Everything that a lookup leaves, as bytes.
std::string lookup(Int emod_reference, Int coe_reference, Real T) {
    Real alpha = -1.0f, E = -1.0f;
    READ_ELAST_ALPHA(emod_reference, coe_reference, T, T, alpha, E);
    std::string all;
    const auto add = [&all](const auto& value) {
        all.append(reinterpret_cast<const char*>(&value), sizeof value);
    };
    add(alpha);
    add(E);
    add(EMOD_STATUS);
    add(COE_STATUS);
    const PROPERTY_LOOKUP& p = PROPERTIES;
    all.append(p.emod_identifier.view()).append(p.coe_identifier.view());
    all.append(p.emod_description.view()).append(p.coe_description.view());
    for (Int i = 0; i < PROPERTY_POINTS; ++i) {
        add(p.axis[i]);
        add(p.emod_values[i]);
        add(p.coe_values[i]);
    }
    for (const Real value :
         {p.EMOD_EXTRA, p.emod_temperature, p.coe_temperature, p.modulus_psi, p.expansion})
        add(value);
    return all;
}

// Lookups one after the other: what one leaves is part of the next.
std::vector<std::string> lookups() {
    PROPERTIES = {};
    std::vector<std::string> all;
    for (Int reference = -1; reference <= 12; ++reference)
        for (const Int coe_reference : {-1, reference, 13 - reference})
            for (const Real T : {-400.0f, 70.0f, 150.0f, 200.0f, 399.5f, 1500.0f})
                all.push_back(lookup(reference, coe_reference, T));
    return all;
}

std::string numbers(Real first, Int count = 36) {
    std::string line;
    for (Int i = 0; i < count; ++i)
        line += ' ' + std::to_string(first + static_cast<Real>(10 * i));
    return line;
}
std::string row(const std::string& reference, const std::string& identifier,
                const std::string& values) {
    std::string line = reference;
    line.resize(19, ' ');
    line += identifier;
    line.resize(27, ' ');
    line += "Description of " + identifier;
    line.resize(63, ' ');
    return line + values + '\n';
}

std::string table(const std::string& modulus = "29.0") {
    return "; comment\n[Emod]\n[Temp]   " + numbers(70.0f) + "\n" +
           row("1 0.25", "TM-1", " 36*" + modulus) + row("2 7.5", "TM-2", numbers(20.0f)) +
           row("3 0.5", "TM-3", " 30.0,, 31.0 2*,33*32.0") + "[CoE]\n[Temp]   " + numbers(60.0f) +
           "\n" + row("1 0", "TE-1", " 36*6.5") + row("12 0", "TE-2", numbers(3.0f));
}

class KeptModuli : public data_test::DataTest {
  public:
    fs::path file() const { return folder / "system" / NAME; }

  protected:
    void use(const std::string& text) { write_file("system", NAME, text); }
    static void wait() { data_test::wait_until_settled(); }
    static Real modulus(Int reference = 1) {
        Real alpha = -1.0f, E = -1.0f;
        READ_ELAST_ALPHA(reference, -1, 0.0f, 100.0f, alpha, E);
        return E;
    }
    static Real modulus_without_files() {
        const NoFiles none;
        return modulus();
    }

    static constexpr const char* NAME = "ElastAlp07.txt";
};

TEST_F(KeptModuli, AnOldFileIsReadOnceAndANewOneEachTime) {
    use(table());
    EXPECT_EQ(modulus(), 29.0f);
    EXPECT_EQ(modulus_without_files(), 0.0f);
    EXPECT_EQ(EMOD_STATUS, 1);
    wait();
    EXPECT_EQ(modulus_without_files(), 0.0f);
    EXPECT_EQ(modulus(), 29.0f);
    EXPECT_EQ(modulus_without_files(), 29.0f);
    EXPECT_EQ(EMOD_STATUS, 0);
    RESET_MATERIALS();
    EXPECT_EQ(modulus_without_files(), 29.0f);
    EXPECT_EQ(EMOD_STATUS, 0);
}

// What changes while the tables are reset is as for a fresh process.
TEST_F(KeptModuli, AResetKeepsNothingOfAFileThatIsNoLongerTheSame) {
    const auto reset = [&](const std::string& text) {
        use(text);
        wait();
        EXPECT_GT(modulus(), 0.0f);
        RESET_MATERIALS();
    };
    reset(table());
    use(table("28.0"));
    EXPECT_EQ(modulus(), 28.0f);

    reset(table());
    fs::resize_file(file(), 20);
    EXPECT_EQ(modulus(), 0.0f);
    EXPECT_EQ(COE_STATUS, 0);

    reset(table());
    fs::remove(file());
    EXPECT_EQ(modulus(), 0.0f);
    EXPECT_EQ(COE_STATUS, 1);

    reset(table());
    fs::permissions(file(), fs::perms::none);
    EXPECT_EQ(modulus_without_files(), 0.0f);
    EXPECT_EQ(COE_STATUS, 1);
}

// The lookups of a calculation use the file as it was at the first of them, until the host is called.
TEST_F(KeptModuli, ACalculationLooksOnce) {
    use(table());
    wait();
    EXPECT_EQ(modulus(), 29.0f);
    {
        const LOOKS_ARE of_a_calculation(Looks::shared);
        EXPECT_EQ(modulus(), 29.0f);
        fs::remove(file());
        EXPECT_EQ(modulus(), 29.0f);
        LOOK_AGAIN();
        EXPECT_EQ(modulus(), 0.0f);
    }
    use(table());
    wait();
    const LOOKS_ARE of_a_calculation(Looks::shared);
    EXPECT_EQ(modulus(), 29.0f);
    {
        const LOOKS_ARE of_the_host(Looks::own);
        EXPECT_EQ(modulus(), 29.0f);
        use(table("28.0"));
        EXPECT_EQ(modulus(), 28.0f); // a lookup of the host's own, as any
        fs::remove(file());
        EXPECT_EQ(modulus(), 0.0f);
        use(table("27.0"));
    }
    EXPECT_EQ(modulus(), 27.0f);
    wait();
    EXPECT_EQ(modulus(), 27.0f);
    EXPECT_EQ(modulus_without_files(), 27.0f);
    fs::remove(file());
    EXPECT_EQ(modulus(), 27.0f);
}

// Each way from the engine to its host, and each file that it opens or writes, ends a look.
TEST_F(KeptModuli, ALookEndsWhereOthersMayRun) {
    use(table());
    wait();
    EXPECT_EQ(modulus(), 29.0f);
    static const KeptModuli* test;
    test = this;
    HOST_SERVICES services;
    services.version = HOST_SERVICES_VERSION;
    services.message_box = [](void*, const char*, const char*) { fs::remove(test->file()); };
    services.dialog_text = [](void*, Int, const char*) { fs::remove(test->file()); };
    services.end_dialog = [](void*) { fs::remove(test->file()); };
    services.report_fatal = [](void*, Int) { fs::remove(test->file()); };
    services.stop = [](void*, Int) { fs::remove(test->file()); };
    services.clock = [](void*, Int*, Int*, Int*, Int*, Int*) { fs::remove(test->file()); };
    const TAKE_RECORD take = [](void*, const char*, Int) -> Int {
        fs::remove(test->file());
        return 0;
    };
    const std::pair<const char*, void (*)()> ways[] = {
        {"message box", [] { MESSAGE_BOX("text", "title"); }},
        {"dialog", [] { SET_DIALOG_TEXT(1, "text"); }},
        {"end of the dialog", [] { END_DIALOG(); }},
        {"fatal", [] { FATAL_STOP(25); }},
        {"stop", [] { STOP_HOST(1); }},
        {"clock",
         [] {
             Int now[5];
             HOST_CLOCK(now[0], now[1], now[2], now[3], now[4]);
         }},
        {"record", [] { write_to_unit(21, "text", 4); }},
        {"file",
         [] {
             fs::remove(test->file());
             open_unit_for_reading(22, "/dev/null");
         }},
    };
    Int status = 1;
    OPENHOSTUNIT(21, take, nullptr, status);
    SET_HOST_SERVICES(&services);
    for (const auto& [name, way] : ways) {
        use(table());
        wait();
        const LOOKS_ARE of_a_calculation(Looks::shared);
        EXPECT_EQ(modulus(), 29.0f) << name;
        way();
        EXPECT_EQ(modulus(), 0.0f) << name;
    }
    SET_HOST_SERVICES(nullptr);
    close_unit(21);
}

// Each text in a file that is read and one that is kept.
TEST_F(KeptModuli, ALookupLeavesTheSameAsOneThatReads) {
    const std::string whole = table();
    std::vector<std::string> texts = {
        whole,
        "",
        "[CoE]\n",
        "[Emod] [CoE]\n" + whole,
        "[CoE] [Temp]   " + numbers(70.0f) + "\n" + whole,
        // An axis of which items are left out, after another one.
        whole + "[Temp]    1.0,,3.0 33*500.0\n" + row("11 0", "TE-3", numbers(2.0f)),
        whole + "[Temp]    1.0 2.0\n" + row("11 0", "TE-3", numbers(2.0f)),
        whole + "[Temp]    1.0 x" + numbers(1.0f) + "\n" + row("11 0", "TE-3", numbers(2.0f)),
        row("4 1", "TM-9", numbers(1.0f, 35)) + whole,
        row("4 1", "TM-9", " 1.0 2.0 / 3.0") + whole,
        row("4 x", "TM-9", numbers(1.0f)) + whole,
        row(", 3.5", "TM-9", numbers(1.0f)) + whole,
        whole + std::string(70000, 'x') + "\n" + row("12 0", "TE-4", numbers(5.0f)),
    };
    std::mt19937 chance(15);
    for (int i = 0; i < 60; ++i) {
        std::string text = whole;
        for (int k = 0; k < 3; ++k)
            text[chance() % text.size()] = "0 9.,*/;[\n"[chance() % 10];
        if (i % 10 == 0) text.resize(chance() % text.size());
        texts.push_back(text);
    }
    const auto place = [&](std::size_t i) { return folder / std::to_string(i); };
    std::vector<std::vector<std::string>> read;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        fs::create_directories(place(i));
        write_file(std::to_string(i), NAME, texts[i]);
        SET_MODULE_DIR(place(i).string());
        read.push_back(lookups());
    }
    wait();
    int kept = 0;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        SET_MODULE_DIR(place(i).string());
        lookup(1, 1, 70.0f); // the file is read
        {
            const NoFiles none;
            lookup(-1, -1, 0.0f);
            kept += EMOD_STATUS == 0 ? 1 : 0;
        }
        EXPECT_EQ(lookups(), read[i]) << texts[i];
    }
    // All but the one with a line without an end.
    EXPECT_EQ(kept, static_cast<int>(texts.size()) - 1);
}

TEST_F(KeptModuli, AFileThatChangesIsReadAgain) {
    use(table());
    wait();
    EXPECT_EQ(modulus(), 29.0f);
    use(table("28.0")); // of the same size
    EXPECT_EQ(modulus(), 28.0f);

    const auto age = [&] {
        wait();
        EXPECT_EQ(modulus(), 28.0f);
        EXPECT_EQ(modulus_without_files(), 28.0f);
    };
    age();
    // Another file takes its name, with the times of the former one.
    struct stat status;
    ASSERT_EQ(stat(file().c_str(), &status), 0);
    write_file("system", "other", table("27.0"));
    const struct timespec times[2] = {status.st_atim, status.st_mtim};
    ASSERT_EQ(utimensat(AT_FDCWD, (folder / "system" / "other").c_str(), times, 0), 0);
    fs::rename(folder / "system" / "other", file());
    EXPECT_EQ(modulus(), 27.0f);

    use(table("28.0"));
    age();
    write_file("library", NAME, table("26.0"));
    EXPECT_EQ(modulus(), 26.0f);
    remove_file("library", NAME);
    EXPECT_EQ(modulus(), 28.0f);

    fs::resize_file(file(), 20);
    EXPECT_EQ(modulus(), 0.0f);
    EXPECT_EQ(EMOD_STATUS, 1);

    use(table("28.0"));
    age();
    fs::remove(file());
    EXPECT_EQ(modulus(), 0.0f);
    EXPECT_EQ(COE_STATUS, 1); // no file: both

    fs::create_directory(file());
    EXPECT_EQ(modulus(), 0.0f);
    EXPECT_EQ(COE_STATUS, 1);
}

TEST_F(KeptModuli, AFileThatMayNoLongerBeReadIsNotThere) {
    use(table());
    wait();
    EXPECT_EQ(modulus(), 29.0f);
    EXPECT_EQ(modulus_without_files(), 29.0f);
    fs::permissions(file(), fs::perms::none);
    // A user who may read everything may read this, too.
    EXPECT_EQ(modulus_without_files(), 0.0f);
    EXPECT_EQ(EMOD_STATUS, 1);
}

TEST_F(KeptModuli, AFileLongerThanTheTableIsReadEachTime) {
    std::string text = "[Emod]\n[Temp]   " + numbers(70.0f) + "\n";
    for (int i = 0; i < 598; ++i)
        text += row("5 0", "TM-5", numbers(1.0f));
    write_file("library", NAME, text);
    use(text + row("6 0", "TM-6", " 36*25.0"));
    wait();
    EXPECT_EQ(modulus(6), 0.0f);
    EXPECT_EQ(EMOD_STATUS, 1);
    const auto opens_no_file = [] {
        const NoFiles none;
        lookup(-1, -1, 0.0f);
        return EMOD_STATUS == 0;
    };
    EXPECT_TRUE(opens_no_file()); // 600 lines
    remove_file("library", NAME);
    EXPECT_EQ(modulus(6), 25.0f);
    EXPECT_EQ(modulus(6), 25.0f);
    EXPECT_FALSE(opens_no_file());
}

TEST_F(KeptModuli, ALookupNeedsAFreeUnitAndTakesIt) {
    use(table());
    wait();
    EXPECT_EQ(modulus(), 29.0f);
    const auto take = [](void*, const char*, Int) -> Int { return 0; };
    Int status = 0;
    for (Int unit = FIRST_UNIT; unit <= LAST_UNIT; ++unit)
        OPENHOSTUNIT(unit, take, nullptr, status);
    EXPECT_EQ(modulus(), 0.0f);
    EXPECT_EQ(EMOD_STATUS, 1);
    EXPECT_EQ(COE_STATUS, 1);

    // With one unit free the lookup has it, so that the chart in place of the table can't be read.
    write_file("system", "ExtChartData.txt",
               "[CS-2]\n900 0 20.0 1E-4 1000 0.1 9000 0 0 0\n\n[END]\n");
    SET_CHART("CS-2");
    close_unit(LAST_UNIT);
    EXPECT_EQ(modulus(), 29.0f);
    EXPECT_EQ(modulus(9), 0.0f);
    close_unit(LAST_UNIT - 1);
    EXPECT_EQ(modulus(9), 20.0f);
    for (Int unit = FIRST_UNIT; unit <= LAST_UNIT; ++unit)
        close_unit(unit);
    Int unit = 0;
    GETNEXTUNIT(unit);
    EXPECT_EQ(unit, FIRST_UNIT); // free again
}

} // namespace
} // namespace tarvane
