// The synthesiser: the shapes of its waves, what mutations may change, and that every build makes the same frames.

#include "audio/sfx.h"
#include "audio/sfx_params.h"
#include "audio/sfx_synth.h"
#include "support/allocation_faults.h"
#include "support/log_capture.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstring>
#include <set>
#include <string>
#include <vector>

namespace {

using Frames = std::vector<float>;

Frames render(int preset, Uint64 seed) {
    float *samples = nullptr;
    const int count = sfx_render(preset, seed, &samples);
    Frames frames(samples, samples + count);
    SDL_free(samples);
    return frames;
}

Frames synthesise(const SfxParams &params) {
    SfxSynth *synth = sfx_allocSynth(SFX_FORMAT_F32, SFX_SAMPLE_RATE, 10);
    const int count = sfx_generateWave(synth, &params);
    const auto *samples = static_cast<const float *>(synth->samples);
    Frames frames(samples, samples + count);
    SDL_free(synth);
    return frames;
}

SfxParams defaults(SfxWave wave = SFX_WAVE_SQUARE) {
    SfxParams params;
    sfx_resetParams(&params);
    params.waveType = wave;
    return params;
}

Uint64 fnv1a(const Frames &frames) { // over the bytes, the lowest first
    Uint64 hash = 14695981039346656037u;
    for (const float frame : frames) {
        const auto bits = std::bit_cast<Uint32>(frame);
        for (int shift = 0; shift < 32; shift += 8) hash = (hash ^ (bits >> shift & 0xff)) * 1099511628211u;
    }
    return hash;
}

// Small seeds, as a player counts through them, and others: from a small seed the first draw is always 0.
Uint64 seed_of(int i) { return static_cast<Uint64>(i) * (i % 2 ? 0x9e3779b97f4a7c15u : 1u); }

TEST(AudioSfx, WavesHaveTheirShapes) {
    // A shape over its period, 0 to 1. The phaser, always on, doubles the level; the gain is 0.2.
    struct Case {
        SfxWave wave;
        float duty;
        double (*shape)(double);
    };
    const auto triangle = [](double x) { return x < 0.5 ? 4 * x - 1 : 3 - 4 * x; };
    const Case cases[] = {
        {SFX_WAVE_SQUARE, 0, [](double x) { return x < 0.5 ? 0.5 : -0.5; }},
        {SFX_WAVE_SQUARE, 0.5f, [](double x) { return x < 0.25 ? 0.5 : -0.5; }},
        {SFX_WAVE_SAWTOOTH, 1, [](double x) { return 1 - 2 * x; }},
        {SFX_WAVE_SAWTOOTH, 0, triangle},
        {SFX_WAVE_SINE, 0, [](double x) { return std::sin(2 * 3.14159265358979 * x); }},
        {SFX_WAVE_TRIANGLE, 0, triangle},
        {SFX_WAVE_COUNT, 0, [](double) { return 0.0; }},
    };
    for (const Case &c : cases) {
        SfxParams params = defaults(c.wave);
        params.squareDuty = c.duty;
        params.sustainPunch = 0.5f;
        const Frames frames = synthesise(params);
        const int period = 1098;                    // 100 / (0.3 * 0.3 + 0.001) subsamples
        for (int frame = 0; frame < 130; frame++) { // one period
            double sum = 0;
            for (int i = 1; i <= 8; i++) sum += c.shape((frame * 8 + i) / static_cast<double>(period));
            const double level = 1 + 2 * 0.5 * (1 - frame / 9000.0); // the sustain stage begins with the sound
            // The high-pass filter never closes wholly: it takes about 1 % over a period.
            ASSERT_NEAR(frames[static_cast<size_t>(frame)], sum / 8 * 2 * 0.2 * level, 0.012)
                << "wave " << c.wave << ", duty " << c.duty << ", frame " << frame;
        }
    }
}

TEST(AudioSfx, SmallerFormatsAreTheFloatFramesCutOff) {
    SfxParams params;
    sfx_rng_state = 3;
    sfx_genLaserShoot(&params);
    const Frames frames = synthesise(params);
    SfxSynth *bytes = sfx_allocSynth(SFX_FORMAT_U8, SFX_SAMPLE_RATE, 10);
    SfxSynth *words = sfx_allocSynth(SFX_FORMAT_S16, SFX_SAMPLE_RATE, 10);
    ASSERT_EQ(sfx_generateWave(bytes, &params), static_cast<int>(frames.size()));
    ASSERT_EQ(sfx_generateWave(words, &params), static_cast<int>(frames.size()));
    for (size_t i = 0; i < frames.size(); i++) {
        ASSERT_EQ(static_cast<Uint8 *>(bytes->samples)[i], static_cast<int>(128 + frames[i] * 127));
        ASSERT_EQ(static_cast<Sint16 *>(words->samples)[i], static_cast<int>(32767 * frames[i]));
    }
    SDL_free(bytes);
    SDL_free(words);
}

// --- whole sounds ---

TEST(AudioSfx, MutationKeepsToItsMaskAndRanges) {
    const std::set<int> signed_fields = {6, 7, 10, 13, 15, 16, 18, 21};
    std::set<int> at_minus_one, moved;
    for (int i = 0; i < 200; i++) {
        const int left_out = i / 2 % SFX_PARAM_COUNT;
        SfxParams params = defaults();
        sfx_rng_state = seed_of(i);
        sfx_mutate(&params, 0, 0x3fffff);
        const SfxParams before = defaults();
        ASSERT_EQ(std::memcmp(&params, &before, sizeof params), 0) << "a range of 0 moves nothing";
        sfx_mutate(&params, 1000, 0x3fffff & ~(1u << left_out));
        float was[SFX_PARAM_COUNT], is[SFX_PARAM_COUNT];
        std::memcpy(was, &before.attackTime, sizeof was);
        std::memcpy(is, &params.attackTime, sizeof is);
        ASSERT_EQ(is[left_out], was[left_out]) << "field " << left_out;
        for (int k = 0; k < SFX_PARAM_COUNT; k++) {
            if (is[k] != was[k]) moved.insert(k);
            ASSERT_TRUE(is[k] <= 1 && is[k] >= -1) << "field " << k;
            if (is[k] < 0) at_minus_one.insert(k);
        }
    }
    EXPECT_EQ(moved.size(), 22u);
    EXPECT_EQ(at_minus_one, signed_fields);
}

TEST(AudioSfx, EveryPresetRendersEverySeed) {
    for (int preset = 0; preset < SFX_PRESET_COUNT; preset++) {
        std::set<Uint64> sounds;
        for (int i = 0; i < 200; i++) {
            const Frames frames = render(preset, seed_of(i));
            ASSERT_FALSE(frames.empty()) << sfx_preset_name(preset) << ", seed " << seed_of(i);
            for (const float frame : frames) ASSERT_TRUE(frame >= -1 && frame <= 1) << sfx_preset_name(preset);
            sounds.insert(fnv1a(frames));
        }
        EXPECT_GT(sounds.size(), 190u) << sfx_preset_name(preset);
    }
}

// Made once by a debug build. A difference is a sound that changed, or a compiler that rounds elsewhere.
TEST(AudioSfx, TheFramesAreTheSameInEveryBuild) {
    constexpr Uint64 SEEDS[] = {0, 1, 42, 0xfedcba9876543210};
    constexpr Uint64 HASHES[SFX_PRESET_COUNT][std::size(SEEDS)] = {
        {0x3746348974be5a02u, 0x81bb953e4b9e570du, 0xde8d405c8260ef04u, 0x5a5154be6f8fffe3u},
        {0x75fa01c9522afdf1u, 0x0a6fe781c2263129u, 0x50f878afbf94f6b9u, 0x57fd20266eee2d69u},
        {0x771dfb9e18cdbf92u, 0xc55d80a3ee1fa359u, 0x319a391c07cf1b11u, 0x021b6fb33479956eu},
        {0x3b805dbe06421225u, 0x318268925338b795u, 0x330cc7b6705f6146u, 0x0797eae8555d6069u},
        {0x07bb3fc14d1c0e41u, 0x2deabc247cf6a1beu, 0x66b2221f98a24417u, 0x34e661259f392f43u},
        {0x26a7d951a83912e4u, 0xe424b51c24a55f69u, 0x2757698b0a159191u, 0x9370d4e5d07caf33u},
        {0x13780a0c1ef08656u, 0x421e87be6812b463u, 0xb72537bf507ba994u, 0x0d33d6706fb766fdu},
    };
    for (int preset = 0; preset < SFX_PRESET_COUNT; preset++) {
        for (size_t i = 0; i < std::size(SEEDS); i++) {
            EXPECT_EQ(fnv1a(render(preset, SEEDS[i])), HASHES[preset][i]) << sfx_preset_name(preset) << " " << i;
        }
    }
    constexpr Uint64 RANDOM_HASHES[SFX_WAVE_COUNT] = {
        0x955e92de1c0d89c0u, 0x7b826a95d677f360u, 0x648b182ee2fe2a3fu,
        0xdd1163b06bf2d2deu, 0x014cfd798f07308fu, 0xd2f1dd6175375eedu,
    };
    sfx_rng_state = 5;
    for (int wave = 0; wave < SFX_WAVE_COUNT; wave++) {
        SfxParams params;
        sfx_genRandomize(&params, wave);
        sfx_mutate(&params, 0.1f, 0x3fffff);
        EXPECT_EQ(fnv1a(synthesise(params)), RANDOM_HASHES[wave]) << "wave " << wave;
    }
}

TEST(AudioSfx, FailedAllocationsAreReportedAndLeaveNothing) {
    LogCapture log;
    float *frames = nullptr;
    std::set<std::string> texts;
    expect_allocation_faults_survived(
        &log, [&] { return sfx_render(SFX_COIN, 1, &frames) > 0; },
        [&] {
            for (const std::string &text : log.errors()) texts.insert(text.substr(0, 25));
            SDL_free(frames);
            frames = nullptr;
        });
    EXPECT_EQ(texts, (std::set<std::string>{"[SFX] Memory allocation f", "[SFX] Unable to render Co"}));
}

} // namespace
