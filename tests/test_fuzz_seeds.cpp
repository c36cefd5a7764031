// Runs every seed of every fuzz target, including inputs that once revealed faults. A crash ends the test: the last
// name printed is the seed's.

#include "fuzz/support.h"
#include "fuzz/targets.h"
#include "support/temporary_directory.h"

#include <gtest/gtest.h>

#include <cstdio>

namespace fs = std::filesystem;

namespace {

class FuzzSeeds : public ::testing::TestWithParam<FuzzTarget> {
protected:
    void TearDown() override { fuzz_stop(); }
};

TEST_P(FuzzSeeds, RunWithoutViolations) {
    int seeds = 0;
    for (const fs::directory_entry &entry : fs::directory_iterator(fs::path(FUZZ_SEEDS) / GetParam().name)) {
        const std::string seed = read_file(entry.path());
        std::fprintf(stderr, "%s\n", entry.path().filename().c_str());
        fuzz_clear_log();
        EXPECT_EQ(GetParam().run(reinterpret_cast<const uint8_t *>(seed.data()), seed.size()), 0);
        seeds++;
    }
    EXPECT_GT(seeds, 0) << "no seed was found, so nothing was tested";
}

INSTANTIATE_TEST_SUITE_P(Of, FuzzSeeds, ::testing::ValuesIn(FUZZ_TARGETS), [](const auto &test) {
    std::string name = test.param.name;
    for (char &c : name) c = c == '-' ? '_' : c;
    return name;
});

} // namespace
