// game: the record that describes a game to the engine, and engine_run, which runs it.
//
//     int main(int argc, char *argv[]) { return engine_run(&game, argc, argv); }
//
// Strings and tables are borrowed: they must live as long as the program.
#pragma once

#include "lumarind/engine/game_state.h"
#include "lumarind/version.h"

#include <SDL3/SDL_stdinc.h>

// A screen's functions. Only one screen is set up at a time; the engine calls it on the main thread.
struct Screen {
    bool (*setup)() = nullptr;                    // creates all the screen owns; reports errors, cleanup follows
    void (*fixed_update)(double dt) = nullptr;    // one simulation step of dt seconds; may be null
    void (*tick)() = nullptr;                     // draws one frame
    void (*cleanup)() = nullptr;                  // releases everything, also after a partial setup
    Uint32 logical_width = 0, logical_height = 0; // 0 × 0: the screen draws in UI space
};

// The screen at index i runs in state GAME_STATE_FIRST_SCREEN + i.
struct GameScreen {
    const char *name = ""; // for --screen: unique, in the form "main-menu"
    Screen screen = {};
    Uint64 (*state_hash)() = nullptr; // of the screen's simulation state; may be null
};

// Name and default bindings of an input action (see input.h). The action's number is its index in the table.
struct GameAction {
    const char *name = "";     // its configuration key: unique, case-insensitive
    const char *bindings = ""; // up to 127 characters
};

// A setting of the game in section [game] of the configuration, read and set through config.h.
struct GameSetting {
    const char *name = "";  // its configuration key: unique
    const char *value = ""; // the default, up to 127 characters
};

// A command-line option of the game, in addition to the engine's.
struct GameOption {
    const char *name = "";                      // with dashes: "--level"
    const char *value_name = nullptr;           // of its value in the usage text, as in <n>; null: no value
    const char *help = "";                      // one line of the usage text
    bool (*apply)(const char *value) = nullptr; // value: null without value_name. Reports errors; the start then fails
};

// Where a program's files are stored.
enum GameFiles : Sint32 {
    // Assets: the first folder "assets" found beside the executable, in ../share/<id> from there, or in the current
    // folder. Settings, saves, log and captures: in SDL's preferences folder for organisation and program.
    GAME_FILES_USER_FOLDER,
    // Everything in the current folder, except storage: game files beside the executable, user files as above.
    GAME_FILES_CURRENT_FOLDER,
};

// Hot keys that the engine handles.
inline constexpr Uint32 GAME_KEY_ESCAPE = 1u << 0;   // Escape: quits on the home screen, elsewhere fades to it
inline constexpr Uint32 GAME_KEY_PROFILER = 1u << 1; // F3: profiler panel, F4: freezes it
inline constexpr Uint32 GAME_KEY_CAPTURE = 1u << 2;  // F12: captures the frame
inline constexpr Uint32 GAME_KEY_QUIT = 1u << 3;     // Ctrl+Q
inline constexpr Uint32 GAME_KEYS_ALL = 0xF;

inline constexpr Sint32 GAME_CENTERED = 0x2FFF0000; // a window's position: in the middle of the display

inline constexpr Sint32 GAME_MAX_ACTIONS = 32;
inline constexpr Sint32 GAME_MAX_SETTINGS = 64;

struct Game {
    Uint32 abi = LUMARIND_ABI;        // do not set: detects a library of another version than the headers
    const char *title = "";           // of the window and of the error box after a failed start
    const char *name = "";            // used in sentences; empty: the title
    const char *program = "";         // executable in the usage text, and the user's folder; empty: the id
    const char *id = "";              // names files and folders: lower-case letters, digits and dashes
    const char *organisation = "";    // parent of the user's folder; empty: none
    const GameScreen *screens = {};   // the first is the home screen
    Sint32 screen_count = 0;          // at least 1
    const GameAction *actions = {};   // null: the eight defaults of input_actions.h
    Sint32 action_count = 0;          // up to GAME_MAX_ACTIONS
    const GameSetting *settings = {}; // null: none
    Sint32 setting_count = 0;         // up to GAME_MAX_SETTINGS
    const GameOption *options = {};   // null: none
    Sint32 option_count = 0;          //
    const char *ui_font = {};         // path of the font file for both shared fonts; null: no shared fonts
    float ui_font_size = 32;          // points
    float heading_font_size = 48;     // points
    Sint32 window_width = 800;        // default of the configuration, window units; so are the next four
    Sint32 window_height = 450;       //
    Sint32 window_x = GAME_CENTERED;  //
    Sint32 window_y = GAME_CENTERED;  //
    bool show_fps = false;            //
    bool reload = false;              // hot-reload changed files, as LUMARIND_RELOAD=1 does; for debug builds
    GameFiles files = {};             //
    Uint32 hot_keys = GAME_KEYS_ALL;  // GAME_KEY_... flags
    bool (*escape)() = nullptr;       // called once per press of Escape, before the engine; true: handled
};

// Runs the game and returns the exit code: 0 after a run or the usage text, 1 if the start failed; the reason is
// logged. An invalid record is reported and fails the start.
int engine_run(const Game *game, int argc, char *argv[]);

const Game *engine_game(); // the running game; an empty record before engine_run, never null
