// The main menu by keyboard, mouse and gamepad.

#include "lumarind/engine/engine.h"
#include "screens/screen_states.h"
#include "support/engine_fixture.h"

namespace {

class MenuTest : public EngineTest {};

TEST_F(MenuTest, KeyboardMouseAndGamepadOpenSelectedScreen) {
    const std::pair<const char *, GameState> cases[] = {
        {"Down Return", GAME_STATE_TEXTURE_DEMO},
        {"Up Up ~Up Down Return", GAME_STATE_PHYSICS_DEMO}, // auto-repeat counts
        {"Right Right Left Right Return", GAME_STATE_AUDIO_DEMO},
        {"size:1200x200 1 Right Right Right Return", GAME_STATE_SPRITE_DEMO}, // one column per entry
        {"Space Keypad_Enter A D", GAME_STATE_MAIN_MENU},
        {"Up Return", GAME_STATE_QUIT},
        {"click:60,160", GAME_STATE_TEXTURE_DEMO},
        {"move:60,160 1 move:790,440 1 Return", GAME_STATE_TEXTURE_DEMO}, // empty space keeps the selection
        {"rclick:60,160 click:790,440", GAME_STATE_MAIN_MENU},
        {"pad:dpdown pad:dpdown pad:dpup pad:a", GAME_STATE_TEXTURE_DEMO},
        {"pad:dpright pad:dpdown pad:dpleft pad:y pad:a", GAME_STATE_TEXTURE_DEMO},
        {"pad:b", GAME_STATE_QUIT},
    };
    for (const auto &[script, state] : cases) {
        ASSERT_TRUE(start({"--window-size", "800x450"}) && frame());
        play(std::string(script) + " 1");
        if (state != GAME_STATE_QUIT) play("0.5s 1");
        EXPECT_EQ(engine_get_state(), state) << script;
    }
    EXPECT_TRUE(log.errors().empty());
}

TEST_F(MenuTest, CursorIsPointerOverEntries) {
    ASSERT_TRUE(start({"--window-size", "800x450"}) && frame());
    const auto shows_hand = [] {
        const bool hand = SDL_GetCursor() == engine->pointer_cursor;
        EXPECT_EQ(engine_get_system_cursor_type(), hand ? SDL_SYSTEM_CURSOR_POINTER : SDL_SYSTEM_CURSOR_DEFAULT);
        return hand;
    };
    ASSERT_NE(engine->pointer_cursor, nullptr);
    SDL_Cursor *own = SDL_CreateColorCursor(Picture(SDL_CreateSurface(8, 8, SDL_PIXELFORMAT_RGBA32)).get(), 0, 0);
    std::swap(own, engine->pointer_cursor); // the headless driver has only one cursor
    play("move:60,160 1");
    EXPECT_TRUE(shows_hand());
    play("move:790,440 1");
    EXPECT_FALSE(shows_hand());
    play("move:60,160 1 click:60,160 1");
    EXPECT_FALSE(shows_hand()) << "the next screen starts with the default cursor";
    std::swap(own, engine->pointer_cursor);
    SDL_DestroyCursor(own);
}

} // namespace
