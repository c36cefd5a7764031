// The seeds of the fuzz targets, including inputs that once revealed faults. Each runs without a violation; and random
// changes of the texts among them are read, or refused with a message, as they were before, also out of memory.

#include "fuzz/support.h"
#include "fuzz/targets.h"
#include "support/call_faults.h"
#include "support/stored.h"
#include "support/temporary_directory.h"

#include <SDL3/SDL_stdinc.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <iterator>

namespace fs = std::filesystem;

namespace {

class FuzzSeeds : public ::testing::TestWithParam<FuzzTarget> {
protected:
    Uint64 random = 1;

    void TearDown() override { fuzz_stop(); }

    size_t below(size_t limit) { return static_cast<size_t>(SDL_rand_r(&random, static_cast<Sint32>(limit))); }

    std::vector<fs::path> seeds() const {
        std::vector<fs::path> files;
        for (const fs::directory_entry &entry : fs::directory_iterator(fs::path(FUZZ_SEEDS) / GetParam().name))
            files.push_back(entry.path());
        std::sort(files.begin(), files.end());
        return files;
    }

    static void run(const std::string &input) {
        fuzz_clear_log();
        EXPECT_EQ(GetParam().run(reinterpret_cast<const uint8_t *>(input.data()), input.size()), 0);
    }

    // Replaces a number by one next to it, or by one near a limit of its type.
    void change_number(std::string *text) {
        constexpr const char *DIGITS = "0123456789";
        const size_t from = text->find_first_of(DIGITS, below(text->size()));
        if (from == text->npos) return;
        const size_t end = std::min(text->find_first_not_of(DIGITS, from), std::min(text->size(), from + 18));
        const long long number = std::stoll(text->substr(from, end - from));
        const std::string others[] = {
            std::to_string(number + 1), std::to_string(number - 1),    "0",          "1",          "-1", "nan",
            std::to_string(2 * number), std::to_string(number) + ".5", "2147483648", "4294967297", "1e9"};
        text->replace(from, end - from, others[below(std::size(others))]);
    }

    std::string changed(std::string text) {
        for (size_t left = 1 + below(2); left > 0 && !text.empty(); left--) {
            const size_t kind = below(16), at = below(text.size()), length = 1 + below(12);
            if (kind < 13) change_number(&text);
            if (kind == 13) text.erase(at, length);
            if (kind == 14) text.insert(below(text.size()), text.substr(at, length));
            if (kind == 15) text[at] = ",;:= \n\"'<>/-+#x"[below(15)];
        }
        return text;
    }

    std::string changed_bytes(std::string bytes) { // cut off, or one of them by one, or to anything
        if (bytes.empty()) return bytes;
        if (below(4) == 0) return bytes.substr(0, below(bytes.size()));
        char &byte = bytes[below(bytes.size())];
        byte = static_cast<char>(below(2) ? byte + (below(2) ? 1 : -1) : static_cast<int>(below(256)));
        return bytes;
    }
};

int failing_call, loads_before; // a call in the load after `loads_before`, counted from 1; 0: none
void fail_call(bool begins) {
    if (!begins) call_faults_disarm();
    if (begins && loads_before-- == 0 && failing_call > 0) call_faults_arm(failing_call);
}

class FuzzDigests : public FuzzSeeds {}; // of the formats that libraries do not decode

TEST_P(FuzzSeeds, RunWithoutViolations) {
    for (const fs::path &seed : seeds()) {
        std::fprintf(stderr, "%s\n", seed.filename().c_str()); // a crash ends the test: the last name is the seed's
        run(read_file(seed));
    }
    EXPECT_FALSE(seeds().empty());
}

// If it fails after an intended change, ./dev accept stores the new digests. The log beside them has one line per
// input: compare it with that of a build before the change.
TEST_P(FuzzDigests, ChangedInputsGiveStoredDigests) {
    const int cases = std::min(200, 4000 / static_cast<int>(seeds().size())); // of each seed
    std::string digests, log;
    fuzz_set_load_hook(fail_call);
    run(""); // starts the engine
    fuzz_take_digest();
    for (const fs::path &file : seeds()) {
        const std::string seed = read_file(file);
        Uint64 all = 0;
        std::string problems;
        for (int i = 0; i < cases; i++) {
            failing_call = i % 4 == 3 ? 1 + static_cast<int>(below(1 + below(120))) : 0;
            loads_before = static_cast<int>(below(2) * below(6));
            run(i == 0 ? seed : GetParam().format == FUZZ_BINARY ? changed_bytes(seed) : changed(seed));
            const Uint64 one = fuzz_take_digest();
            all = all * 31 + one;
            if (i == 0) problems = fuzz_logged_problems();
            log += file.filename().string() + " " + std::to_string(i) + " " + std::to_string(one) + "\n";
        }
        digests += file.filename().string() + " " + std::to_string(all) + "\n" + problems;
    }
    expect_stored(std::string(GetParam().name) + ".txt", digests, log);
}

constexpr auto NAME = [](const auto &test) {
    std::string name = test.param.name;
    for (char &c : name) c = c == '-' ? '_' : c;
    return name;
};
std::vector<FuzzTarget> own_formats() {
    std::vector<FuzzTarget> targets(std::begin(FUZZ_TARGETS), std::end(FUZZ_TARGETS));
    std::erase_if(targets, [](const FuzzTarget &target) { return target.format == FUZZ_DECODED; });
    return targets;
}

INSTANTIATE_TEST_SUITE_P(Of, FuzzSeeds, ::testing::ValuesIn(FUZZ_TARGETS), NAME);
INSTANTIATE_TEST_SUITE_P(Of, FuzzDigests, ::testing::ValuesIn(own_formats()), NAME);

} // namespace
