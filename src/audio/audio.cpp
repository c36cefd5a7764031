#include "lumarind/audio/audio.h"

#include "audio/audio_internal.h"
#include "lumarind/core/error.h"
#include "lumarind/core/files.h"

#include <SDL3/SDL_audio.h>
#include <SDL3/SDL_error.h>
#include <SDL3/SDL_hints.h>
#include <SDL3/SDL_init.h>
#include <SDL3/SDL_iostream.h>
#include <SDL3/SDL_log.h>
#include <SDL3/SDL_properties.h>
#include <SDL3_mixer/SDL_mixer.h>

static constexpr const char *TAG_MUSIC = "music";
static constexpr const char *TAG_SFX = "sfx";
static constexpr int LOOP_FOREVER = -1;
static constexpr int AUDIO_RATE_MAX = 768000; // Hz
static constexpr int AUDIO_FRAMES_MIN = 2;
static constexpr const char *AUDIO_TOO_SHORT = "it contains no sound";

AudioState *lumarind::audio;

static float _audio_clamp(float volume) {
    if (!(volume >= 0)) return 0; // maps NaN to 0 as well: a NaN gain would silence the mixer permanently
    return volume > 1 ? 1 : volume;
}

static bool _audio_is_bus(AudioBus bus) { return bus >= AUDIO_BUS_MASTER && bus < AUDIO_BUS_COUNT; }

// --- lifetime ---

static MIX_Mixer *audio_open_mixer() {
    MIX_Mixer *mixer = MIX_CreateMixerDevice(SDL_AUDIO_DEVICE_DEFAULT_PLAYBACK, nullptr);
    if (mixer) return mixer;
    SDL_LogWarn(
        SDL_LOG_CATEGORY_APPLICATION, "[AUDIO] No playback device (%s), continuing without sound", SDL_GetError());
    SDL_QuitSubSystem(SDL_INIT_AUDIO); // so that the next start selects the dummy driver
    SDL_SetHintWithPriority(SDL_HINT_AUDIO_DRIVER, "dummy", SDL_HINT_OVERRIDE);
    return MIX_CreateMixerDevice(SDL_AUDIO_DEVICE_DEFAULT_PLAYBACK, nullptr);
}

static MIX_Track *audio_create_track(const char *tag) {
    MIX_Track *track = MIX_CreateTrack(audio->mixer);
    if (track && MIX_TagTrack(track, tag)) return track;
    engine_error("[AUDIO] Track creation failed, error: %s", SDL_GetError());
    MIX_DestroyTrack(track); // ignores null
    return nullptr;
}

static void audio_apply_volume(AudioBus bus) {
    const float level = audio_volume(bus);
    switch (bus) {
    case AUDIO_BUS_MASTER:
        MIX_SetMixerGain(audio->mixer, level);
        break;
    case AUDIO_BUS_MUSIC:
        MIX_SetTagGain(audio->mixer, TAG_MUSIC, level);
        break;
    case AUDIO_BUS_SFX:
        MIX_SetTagGain(audio->mixer, TAG_SFX, level);
        for (int i = 0; i < AUDIO_SFX_TRACKS; i++) {
            if (audio->sfx_volumes[i] != 1) MIX_SetTrackGain(audio->sfx[i], level * audio->sfx_volumes[i]);
        }
        break;
    default:
        break;
    }
}

static bool _audio_create_tracks() {
    audio->music = audio_create_track(TAG_MUSIC);
    if (!audio->music) return false;
    for (int i = 0; i < AUDIO_SFX_TRACKS; i++) {
        audio->sfx[i] = audio_create_track(TAG_SFX);
        if (!audio->sfx[i]) return false;
        audio->sfx_volumes[i] = 1;
    }
    return true;
}

bool audio_setup() {
    if (audio) return true;
    audio = static_cast<AudioState *>(SDL_calloc(1, sizeof *audio));
    if (!audio) return engine_error("[AUDIO] Memory allocation failed, error: %s", SDL_GetError());

    audio->library_started = MIX_Init();
    if (!audio->library_started) {
        return engine_error("[AUDIO] SDL_mixer initialization failed, error: %s", SDL_GetError());
    }
    audio->mixer = audio_open_mixer();
    if (!audio->mixer) return engine_error("[AUDIO] Mixer creation failed, error: %s", SDL_GetError());
    if (!_audio_create_tracks()) return false;
    // Last: setting a tag's gain affects only tracks that already have the tag.
    for (int bus = 0; bus < AUDIO_BUS_COUNT; bus++) audio_apply_volume(static_cast<AudioBus>(bus));

    SDL_AudioSpec spec = {};
    MIX_GetMixerFormat(audio->mixer, &spec);
    SDL_Log("[AUDIO] Mixer open on %s: %d Hz, %d channels", SDL_GetCurrentAudioDriver(), spec.freq, spec.channels);
    return true;
}

void audio_cleanup() {
    if (!audio) return;
    for (MIX_Track *track : audio->sfx) {
        if (track) MIX_DestroyTrack(track);
    }
    if (audio->music) MIX_DestroyTrack(audio->music);
    if (audio->mixer) MIX_DestroyMixer(audio->mixer);
    if (audio->library_started) MIX_Quit();
    SDL_free(audio);
    audio = nullptr;
}

// --- sounds ---

static MIX_Mixer *_audio_preferred_mixer() { return audio ? audio->mixer : nullptr; }

// The first four bytes of a file (big-endian) and the names of its decoders, which vary between builds of SDL_mixer.
// Without a name SDL_mixer would also try its WAV and AIFF decoders on the data after an ID3v2 tag.
struct AudioKind {
    Uint32 magic, mask;
    const char *decoders[3];
};
static constexpr AudioKind AUDIO_KINDS[] = {
    {0x4F676753, 0xFFFFFFFF, {"VORBIS", "STBVORBIS", "OPUS"}}, // OggS
    {0x664C6143, 0xFFFFFFFF, {"FLAC", "DRFLAC"}},              // fLaC
    {0xFFE00000, 0xFFE00000, {"MPG123", "DRMP3"}},             // MP3: 11 set bits
};
static constexpr Uint32 MAGIC_RIFF = 0x52494646;
static constexpr Uint32 MAGIC_FORM = 0x464F524D;

// Seeks to the start of the audio data, past a leading ID3v2 tag and its zero padding.
static void _audio_skip_tag(SDL_IOStream *file) {
    Uint8 head[10] = {};
    Sint64 at = 0;
    if (SDL_ReadIO(file, head, sizeof head) == sizeof head && SDL_memcmp(head, "ID3", 3) == 0) {
        const bool has_footer = (head[5] & 0x10) != 0;
        for (int i = 6; i < 10; i++) at = at << 7 | (head[i] & 0x7F); // 7 bits per byte
        at += static_cast<Sint64>(has_footer ? 2 * sizeof head : sizeof head);
        SDL_SeekIO(file, at, SDL_IO_SEEK_SET);
        for (Uint8 byte = 0; SDL_ReadU8(file, &byte) && byte == 0;) at++;
    }
    SDL_SeekIO(file, at, SDL_IO_SEEK_SET);
}

// Uses SDL's WAV loader: SDL_mixer's crashes with a division by zero on a header that claims 256 channels.
static MIX_Audio *_audio_load_wav(SDL_IOStream *file) {
    SDL_AudioSpec spec = {};
    Uint8 *samples = nullptr;
    Uint32 length = 0;
    if (!SDL_LoadWAV_IO(file, false, &spec, &samples, &length)) return nullptr;
    MIX_Audio *sound = MIX_LoadRawAudio(_audio_preferred_mixer(), samples, length, &spec);
    SDL_free(samples);
    return sound;
}

// Returns the first decoder that accepts the file and sets its name in `options`; null, with SDL's error set, if none.
static MIX_AudioDecoder *_audio_open_decoder(SDL_IOStream *file, const AudioKind &kind, SDL_PropertiesID options) {
    for (const char *name : kind.decoders) {
        if (!name) break;
        SDL_SetStringProperty(options, MIX_PROP_AUDIO_DECODER_STRING, name);
        SDL_SeekIO(file, 0, SDL_IO_SEEK_SET); // SDL_mixer skips tags itself
        MIX_AudioDecoder *decoder = MIX_CreateAudioDecoder_IO(file, false, options);
        if (decoder) return decoder;
    }
    return nullptr;
}

// Looping a sound of fewer than two frames would block the mixing thread forever, with the mixer locked; rewinding an
// empty one crashes the Vorbis library. Headers are unreliable, so a streamed sound's first frames are decoded.
static bool _audio_has_frames(MIX_AudioDecoder *decoder) {
    SDL_AudioSpec spec = {};
    Uint8 begin[4096];
    if (!MIX_GetAudioDecoderFormat(decoder, &spec)) return false;
    const int decoded = MIX_DecodeAudio(decoder, begin, sizeof begin, &spec); // bytes
    return (decoded > 0 && decoded >= AUDIO_FRAMES_MIN * static_cast<int>(SDL_AUDIO_FRAMESIZE(spec))) ||
           SDL_SetError("%s", AUDIO_TOO_SHORT);
}

static bool _audio_choose_decoder(SDL_IOStream *file, const AudioKind &kind, bool predecode, SDL_PropertiesID options) {
    MIX_AudioDecoder *decoder = _audio_open_decoder(file, kind, options);
    if (!decoder) return false; // destroying null would replace SDL's error
    const bool usable = predecode || _audio_has_frames(decoder);
    MIX_DestroyAudioDecoder(decoder);
    SDL_SeekIO(file, 0, SDL_IO_SEEK_SET);
    return usable;
}

static MIX_Audio *_audio_load_encoded(SDL_IOStream *file, const AudioKind &kind, bool predecode) {
    const SDL_PropertiesID options = SDL_CreateProperties();
    MIX_Audio *sound = nullptr;
    if (_audio_choose_decoder(file, kind, predecode, options)) {
        SDL_SetPointerProperty(options, MIX_PROP_AUDIO_LOAD_IOSTREAM_POINTER, file);
        SDL_SetPointerProperty(options, MIX_PROP_AUDIO_LOAD_PREFERRED_MIXER_POINTER, _audio_preferred_mixer());
        SDL_SetBooleanProperty(options, MIX_PROP_AUDIO_LOAD_PREDECODE_BOOLEAN, predecode);
        // Looping is decided by the caller, not by the file.
        SDL_SetBooleanProperty(options, MIX_PROP_AUDIO_LOAD_IGNORE_LOOPS_BOOLEAN, true);
        sound = MIX_LoadAudioWithProperties(options);
    }
    SDL_DestroyProperties(options);
    return sound;
}

static MIX_Audio *_audio_load_io(SDL_IOStream *file, bool predecode) {
    Uint32 magic = 0;
    _audio_skip_tag(file);
    const Sint64 begin = SDL_TellIO(file);
    if (!SDL_ReadU32BE(file, &magic)) {
        if (SDL_GetIOStatus(file) == SDL_IO_STATUS_EOF) SDL_SetError("%s", AUDIO_TOO_SHORT);
        return nullptr;
    }
    if (SDL_SeekIO(file, begin, SDL_IO_SEEK_SET) != begin) return nullptr;
    if (magic == MAGIC_RIFF) return _audio_load_wav(file);
    for (const AudioKind &kind : AUDIO_KINDS) {
        if ((magic & kind.mask) == kind.magic) return _audio_load_encoded(file, kind, predecode);
    }
    // SDL_mixer's AIFF decoder overflows a buffer on unusual sample sizes.
    SDL_SetError("%s is not supported: save it as WAV, FLAC, Ogg or MP3", magic == MAGIC_FORM ? "AIFF" : "this format");
    return nullptr;
}

static MIX_Audio *_audio_load_file(const char *path, bool predecode) {
    SDL_IOStream *file = SDL_IOFromFile(files_asset(path).text, "rb");
    if (!file) return nullptr;
    MIX_Audio *sound = _audio_load_io(file, predecode);
    SDL_CloseIO(file);
    return sound;
}

// Returns false, with SDL's error set, if looping the sound would block the mixing thread.
static bool _audio_can_be_mixed(MIX_Audio *sound) {
    SDL_AudioSpec spec = {};
    const Sint64 frames = MIX_GetAudioDuration(sound); // negative: unknown until played
    if (frames >= 0 && frames < AUDIO_FRAMES_MIN) return SDL_SetError("%s", AUDIO_TOO_SHORT);
    if (!MIX_GetAudioFormat(sound, &spec) || spec.freq <= AUDIO_RATE_MAX) return true;
    return SDL_SetError("%d Hz is more than the %d supported", spec.freq, AUDIO_RATE_MAX);
}

static MIX_Audio *_audio_if_mixable(MIX_Audio *sound) {
    if (!sound || _audio_can_be_mixed(sound)) return sound;
    MIX_DestroyAudio(sound);
    return nullptr;
}

MIX_Audio *audio_load(const char *path, bool predecode) {
    MIX_Audio *sound = _audio_if_mixable(_audio_load_file(path, predecode));
    if (!sound) engine_error("[AUDIO] Unable to load %s, error: %s", path, SDL_GetError());
    return sound;
}

MIX_Audio *audio_load_samples(const float *frames, int frame_count, int channels, int sample_rate) {
    const SDL_AudioSpec spec = {.format = SDL_AUDIO_F32, .channels = channels, .freq = sample_rate};
    const size_t length =
        static_cast<size_t>(SDL_max(frame_count, 0)) * static_cast<size_t>(SDL_max(channels, 0)) * sizeof *frames;
    MIX_Audio *sound = _audio_if_mixable(MIX_LoadRawAudio(_audio_preferred_mixer(), frames, length, &spec));
    if (!sound) engine_error("[AUDIO] Unable to load %d generated frames, error: %s", frame_count, SDL_GetError());
    return sound;
}

void audio_free(MIX_Audio **sound) {
    if (!*sound) return;
    MIX_DestroyAudio(*sound);
    *sound = nullptr;
}

// --- playing ---

// Locks the mixer while a track's sound changes; otherwise the mixing thread may be reading the old one.
static bool _audio_set_track(MIX_Track *track, MIX_Audio *sound) {
    MIX_LockMixer(audio->mixer);
    MIX_StopTrack(track, 0); // resets the loop count and fade
    const bool ok = MIX_SetTrackAudio(track, sound);
    MIX_UnlockMixer(audio->mixer);
    return ok;
}

static void _audio_set_play(int index, const SfxPlay &how) {
    MIX_Track *track = audio->sfx[index];
    const float pan = how.pan > 0 ? SDL_min(how.pan, 1) : how.pan < 0 ? SDL_max(how.pan, -1) : 0; // maps NaN to 0
    const MIX_StereoGains gains = {.left = SDL_min(1 - pan, 1), .right = SDL_min(1 + pan, 1)};
    audio->sfx_volumes[index] = _audio_clamp(how.volume);
    MIX_SetTrackGain(track, audio->sfx_volumes[index] * audio_volume(AUDIO_BUS_SFX));
    MIX_SetTrackFrequencyRatio(track, how.pitch > 0.01f ? SDL_min(how.pitch, 100) : 0.01f);
    MIX_SetTrackStereo(track, pan == 0 ? nullptr : &gains);
}

bool audio_play_sfx(MIX_Audio *sound) { return audio_play_sfx_with(sound, {}); }

bool audio_play_sfx_with(MIX_Audio *sound, const SfxPlay &how) {
    if (!audio || !sound) return false;
    for (int i = 0; i < AUDIO_SFX_TRACKS; i++) {
        if (MIX_TrackPlaying(audio->sfx[i])) continue;
        if (!_audio_set_track(audio->sfx[i], sound)) return false;
        _audio_set_play(i, how);
        return MIX_PlayTrack(audio->sfx[i], 0);
    }
    return false;
}

static bool _audio_play_music(MIX_Audio *sound, int fade_in_ms, int loops) {
    if (!audio) return false;
    if (!_audio_set_track(audio->music, sound)) {
        return engine_error("[AUDIO] Unable to set the music, error: %s", SDL_GetError());
    }
    const SDL_PropertiesID options = SDL_CreateProperties();
    SDL_SetNumberProperty(options, MIX_PROP_PLAY_LOOPS_NUMBER, loops);
    SDL_SetNumberProperty(options, MIX_PROP_PLAY_FADE_IN_MILLISECONDS_NUMBER, fade_in_ms);
    const bool ok = MIX_PlayTrack(audio->music, options);
    SDL_DestroyProperties(options);
    return ok || engine_error("[AUDIO] Unable to play the music, error: %s", SDL_GetError());
}

bool audio_play_music(MIX_Audio *sound, int fade_in_ms) { return _audio_play_music(sound, fade_in_ms, LOOP_FOREVER); }

bool audio_play_music_once(MIX_Audio *sound, int fade_in_ms) { return _audio_play_music(sound, fade_in_ms, 0); }

void audio_pause_music(bool paused) {
    if (!audio) return;
    paused ? MIX_PauseTrack(audio->music) : MIX_ResumeTrack(audio->music);
}

void audio_stop_music(int fade_out_ms) {
    if (audio && MIX_TrackPaused(audio->music)) MIX_StopTrack(audio->music, 0); // a paused track's fade is inaudible
    if (!audio_music_playing()) return;
    const Sint64 frames = MIX_TrackMSToFrames(audio->music, fade_out_ms); // frames at the sound's own rate
    MIX_StopTrack(audio->music, frames);
}

bool audio_music_playing() { return audio && MIX_TrackPlaying(audio->music); }

// --- volumes ---

float audio_volume(AudioBus bus) { return _audio_is_bus(bus) ? _audio_clamp(cfg_get_audio_volume(bus)) : 0; }

void audio_set_volume(AudioBus bus, float volume) {
    if (!_audio_is_bus(bus)) return;
    cfg_set_audio_volume(bus, _audio_clamp(volume));
    if (audio) audio_apply_volume(bus);
}
