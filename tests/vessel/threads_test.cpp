// A host with several threads: one engine, one data folder of it at a time. Compiled once more under ThreadSanitizer.
#include "vessel_fixture.h"

#include <fstream>
#include <string>
#include <thread>
#include <vector>

namespace tarvane::vessel {

namespace {

TEST(Threads, WithHandlesOfTheirOwnFindTheSameAsOne) {
    constexpr int THREADS = 4, CALLS = 5;
    const Handle one;
    std::vector<std::string> requests, wanted;
    for (int i = 0; i < THREADS; ++i) {
        requests.push_back(
            request_of(flange_json(R"(, "ci": 0.0)" + std::to_string(i)),
                       i % 2 == 0 ? R"("units": "US", )" : R"("decimal_comma": true, )"));
        wanted.push_back(one.calculate(requests.back(), TARVANE_WANT_REPORT).text);
    }
    int differences[THREADS] = {};
    std::vector<std::thread> threads;
    for (int i = 0; i < THREADS; ++i) {
        threads.emplace_back([&, i] {
            const auto place = static_cast<std::size_t>(i);
            for (int call = 0; call < CALLS; ++call) {
                const Handle own;
                differences[i] +=
                    own.calculate(requests[place], TARVANE_WANT_REPORT).text != wanted[place];
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    for (const int count : differences)
        EXPECT_EQ(count, 0);
}

TEST(Threads, MayShareAHandle) {
    const Handle shared;
    const std::string sound = request_of(flange_json()), faulty = "{}";
    const std::string wanted = shared.calculate(sound).text;
    std::vector<std::thread> threads;
    int wrong[4] = {};
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&, i] {
            for (int call = 0; call < 10; ++call) {
                const char* result = nullptr;
                const std::int32_t status = tarvane_calculate(
                    shared.get(), i % 2 == 0 ? sound.c_str() : faulty.c_str(), 1, &result);
                wrong[i] += status != (i % 2 == 0 ? TARVANE_OK : TARVANE_FAULTY);
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    for (const int count : wrong)
        EXPECT_EQ(count, 0);
    EXPECT_EQ(shared.calculate(sound).text, wanted);
}

// Each turn of the engine has the folder of its handle, and the sources that were read of it.
TEST(Threads, WithFoldersOfTheirOwnReadThose) {
    const Folder folder("tarvane_threads");
    std::ofstream(folder.path / "data_edition.txt") << "Invented tables, edition 2\n";
    const std::string request = request_of(flange_json());
    const Handle shipped, own(folder.path.string());
    const std::string of_shipped = shipped.calculate(request).text,
                      of_own = own.calculate(request).text;
    EXPECT_NE(of_shipped, of_own);
    int differences[4] = {};
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&, i] {
            const Handle handle(i % 2 == 0 ? std::string(TARVANE_DATA_DIR) : folder.path.string());
            for (int call = 0; call < 10; ++call)
                differences[i] +=
                    handle.calculate(request).text != (i % 2 == 0 ? of_shipped : of_own);
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    for (const int count : differences)
        EXPECT_EQ(count, 0);
}

} // namespace
} // namespace tarvane::vessel
