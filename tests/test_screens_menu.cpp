// The main menu by keyboard, mouse and gamepad, judged by what it shows.

#include "engine/engine.h"
#include "support/engine_fixture.h"

namespace {

constexpr SDL_Color SELECTED = {248, 255, 255, 255};
constexpr int ROW_PITCH = 35, FIRST_ROW = 110, LEFT = 40;

class MenuTest : public EngineTest {
protected:
    bool start_menu(int width, int height) {
        return start({"--window-size", std::to_string(width) + "x" + std::to_string(height)}) && frame();
    }

    // The row the highlighted label is drawn in, and whether it stands in the first column.
    int selected_row() { return (bounds_of(shown(), SELECTED).top - FIRST_ROW) / ROW_PITCH; }
    bool in_first_column() { return bounds_of(shown(), SELECTED).left < LEFT + 10; }
    GameState chosen() { // where the running fade leads
        for (int i = 0; i < 4; i++) frame(0.1);
        return engine_get_state();
    }
};

TEST_F(MenuTest, KeysMoveThroughOneColumnAndWrap) {
    ASSERT_TRUE(start_menu(800, 600)); // room for 12 rows
    EXPECT_EQ(selected_row(), 0);
    key_down(SDLK_UP);
    EXPECT_EQ(selected_row(), 10);
    key_down(SDLK_DOWN);
    key_down(SDLK_DOWN, SDL_KMOD_NONE, true);
    EXPECT_EQ(selected_row(), 1) << "repeats count";
    for (const SDL_Keycode other : {SDLK_LEFT, SDLK_RIGHT, SDLK_SPACE, SDLK_KP_ENTER}) key_down(other);
    EXPECT_EQ(selected_row(), 1);
    EXPECT_EQ(chosen(), GAME_STATE_MAIN_MENU);
}

TEST_F(MenuTest, ColumnsFollowTheWindowsHeight) {
    ASSERT_TRUE(start_menu(1200, 505)); // 355 units for rows: 10
    for (int i = 0; i < 9; i++) key_down(SDLK_DOWN);
    EXPECT_EQ(selected_row(), 9);
    EXPECT_TRUE(in_first_column());
    key_down(SDLK_RIGHT);
    EXPECT_EQ(selected_row(), 0) << "Exit, alone in the second column";
    EXPECT_FALSE(in_first_column());
    key_down(SDLK_LEFT);
    EXPECT_EQ(selected_row(), 0);
    EXPECT_TRUE(in_first_column());

    resize(1200, 200); // now one row: eleven columns
    frame();
    key_down(SDLK_RIGHT);
    EXPECT_EQ(selected_row(), 0);
    EXPECT_FALSE(in_first_column());
    EXPECT_TRUE(log.errors().empty());
}

TEST_F(MenuTest, ReturnFadesToTheSelectedScreenAndExitQuitsAtOnce) {
    ASSERT_TRUE(start_menu(800, 600));
    key_down(SDLK_DOWN);
    key_down(SDLK_RETURN);
    EXPECT_EQ(chosen(), GAME_STATE_TEXTURE_DEMO);
    ASSERT_TRUE(start_menu(800, 600));
    key_down(SDLK_UP);
    key_down(SDLK_RETURN);
    EXPECT_FALSE(frame());
}

TEST_F(MenuTest, TheMouseSelectsAndChooses) {
    ASSERT_TRUE(start_menu(800, 600));
    const int x = LEFT + 20, y = FIRST_ROW + 15;
    mouse_move(x, y + ROW_PITCH);
    EXPECT_EQ(selected_row(), 1);
    EXPECT_EQ(engine_get_system_cursor_type(), SDL_SYSTEM_CURSOR_POINTER);
    EXPECT_EQ(SDL_GetCursor(), engine->pointer_cursor);
    mouse_move(790, 590);
    EXPECT_EQ(selected_row(), 1) << "empty space keeps the selection";
    EXPECT_EQ(engine_get_system_cursor_type(), SDL_SYSTEM_CURSOR_DEFAULT);
    EXPECT_EQ(SDL_GetCursor(), engine->default_cursor);
    mouse_up(x, y, SDL_BUTTON_RIGHT);
    mouse_up(790, 590);
    EXPECT_EQ(chosen(), GAME_STATE_MAIN_MENU);
    mouse_move(x, y);
    mouse_up(x, y);
    EXPECT_EQ(chosen(), GAME_STATE_TEXT_DEMO);
    EXPECT_EQ(engine_get_system_cursor_type(), SDL_SYSTEM_CURSOR_DEFAULT);
}

TEST_F(MenuTest, AGamepadDrivesItToo) {
    ASSERT_TRUE(start_menu(1200, 505));
    for (const SDL_GamepadButton button :
         {SDL_GAMEPAD_BUTTON_DPAD_DOWN, SDL_GAMEPAD_BUTTON_DPAD_DOWN, SDL_GAMEPAD_BUTTON_DPAD_UP,
          SDL_GAMEPAD_BUTTON_NORTH}) {
        gamepad_down(button);
    }
    EXPECT_EQ(selected_row(), 1);
    gamepad_down(SDL_GAMEPAD_BUTTON_DPAD_RIGHT);
    EXPECT_FALSE(in_first_column());
    gamepad_down(SDL_GAMEPAD_BUTTON_DPAD_LEFT);
    gamepad_down(SDL_GAMEPAD_BUTTON_SOUTH);
    EXPECT_EQ(chosen(), GAME_STATE_TEXT_DEMO);
    ASSERT_TRUE(start_menu(1200, 505));
    gamepad_down(SDL_GAMEPAD_BUTTON_EAST);
    EXPECT_FALSE(frame());
}

} // namespace
