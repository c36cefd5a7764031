// game: what a program tells the engine it is, in one constant record, and the operation that runs it.
//
//     int main(int argc, char *argv[]) { return engine_run(&game, argc, argv); }
//
// Texts and tables are borrowed: they live as long as the program, as constants do.
#pragma once

#include "lumarind/engine/game_state.h"
#include "lumarind/version.h"

#include <SDL3/SDL_stdinc.h>

// One screen. Only one is set up at a time; the engine calls it on the main thread.
struct Screen {
    bool (*setup)() = nullptr;                    // makes all the screen owns; false: reported, cleanup follows
    void (*fixed_update)(double dt) = nullptr;    // one simulation step of dt seconds; may be null
    void (*tick)() = nullptr;                     // draws one frame
    void (*cleanup)() = nullptr;                  // releases it all, also after a partial setup
    Uint32 logical_width = 0, logical_height = 0; // 0 × 0: the screen draws in UI space
};

// The screen at index i runs in state GAME_STATE_FIRST_SCREEN + i.
struct GameScreen {
    const char *name = ""; // for --screen: unique, in the form "main-menu"
    Screen screen = {};
    Uint64 (*state_hash)() = nullptr; // of the screen's simulation; may be null
};

// Name and default bindings of an input action, which input.h explains. The action's number is its index.
struct GameAction {
    const char *name = "";     // its key in the configuration: unique in any letter case
    const char *bindings = ""; // up to 127 characters
};

// A value of the game's own in the configuration, section [game]: config.h reads and sets it.
struct GameSetting {
    const char *name = "";  // its key: unique
    const char *value = ""; // the default, up to 127 characters
};

// A command-line option of the game's own, in addition to the engine's.
struct GameOption {
    const char *name = "";                      // with its dashes: "--level"
    const char *value_name = nullptr;           // of its value in the usage text, "n"; null: it takes none
    const char *help = "";                      // one line of the usage text
    bool (*apply)(const char *value) = nullptr; // false: reported by the game; the start fails. The value may be null
};

// Where a program's files lie.
enum GameFiles : Sint32 {
    // Assets: in the folder that holds "assets", beside the executable, in ../share/<id> from there, or the current
    // one. Settings, saves, log and captures: in the user's folder for organisation and program.
    GAME_FILES_USER_FOLDER,
    // All in the current folder, but for data files read through storage, which lie beside the executable, and saves.
    GAME_FILES_CURRENT_FOLDER,
};

// Keys that the engine itself acts upon.
inline constexpr Uint32 GAME_KEY_ESCAPE = 1u << 0;   // Escape: ends the program on the home screen, else fades to it
inline constexpr Uint32 GAME_KEY_PROFILER = 1u << 1; // F3: profiler panel, F4: freezes it
inline constexpr Uint32 GAME_KEY_CAPTURE = 1u << 2;  // F12: saves a picture of the window
inline constexpr Uint32 GAME_KEY_QUIT = 1u << 3;     // Ctrl+Q
inline constexpr Uint32 GAME_KEYS_ALL = 0xF;

inline constexpr Sint32 GAME_MAX_ACTIONS = 32;
inline constexpr Sint32 GAME_MAX_SETTINGS = 64;

struct Game {
    Uint32 abi = LUMARIND_ABI;        // leave it: tells a library of another version from the headers
    const char *title = "";           // of the window and the box that reports a failed start
    const char *name = "";            // in sentences; empty: the title
    const char *program = "";         // of the executable, in the usage text; of the user's folder; empty: the id
    const char *id = "";              // of files and folders: small letters, digits and dashes
    const char *organisation = "";    // the folder around the user's folder; empty: there is none
    const GameScreen *screens = {};   // the first is home
    Sint32 screen_count = 0;          // at least 1
    const GameAction *actions = {};   // null: the eight of input_actions.h
    Sint32 action_count = 0;          // up to GAME_MAX_ACTIONS
    const GameSetting *settings = {}; // null: none
    Sint32 setting_count = 0;         // up to GAME_MAX_SETTINGS
    const GameOption *options = {};   // null: none
    Sint32 option_count = 0;          //
    const char *ui_font = {};         // path of the two shared fonts' file; null: no shared fonts
    float ui_font_size = 32;          // points
    float heading_font_size = 48;     // points
    Sint32 window_width = 800;        // window units, as are the following: where the configuration is silent
    Sint32 window_height = 450;       //
    bool show_fps = false;            // the default of the configuration's switch
    bool reload = false;              // follow changed files, as LUMARIND_RELOAD=1 does; for debug builds
    GameFiles files = {};             //
    Uint32 hot_keys = GAME_KEYS_ALL;  // GAME_KEY_..., or-ed
    bool (*escape)() = nullptr;       // called once per press of Escape, before the engine acts; true: it is taken
};

// Runs the program from its arguments to its exit code: 0 after a run or the usage text, 1 after a failed start, whose
// reason is in the log. A record that is not usable is reported and fails the start.
int engine_run(const Game *game, int argc, char *argv[]);

const Game *engine_game(); // the one that runs; never null, an empty one before engine_run
