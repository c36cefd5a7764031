// An event-driven screen: setup registers callbacks for keys, buttons and the mouse, cleanup removes them. The entries
// are laid out in as many columns as the window's height requires.

#include "screens/main_menu.h"

#include "lumarind/core/text_array.h"
#include "lumarind/engine/callbacks.h"
#include "lumarind/engine/drawing_space.h"
#include "lumarind/engine/engine.h"
#include "lumarind/engine/menu_layout.h"
#include "lumarind/engine/text.h"
#include "lumarind/engine/transition.h"
#include "lumarind/toolkit/colliders.h"
#include "screens/screen_states.h"

#include <SDL3/SDL_render.h>

#include <iterator>

struct MainMenuItem {
    const char *label = "";
    GameState target = GAME_STATE_NONE;
};
static constexpr MainMenuItem main_menu_items[] = {
    {.label = "Text Demo", .target = GAME_STATE_TEXT_DEMO},
    {.label = "Texture Demo", .target = GAME_STATE_TEXTURE_DEMO},
    {.label = "Tilemap Demo", .target = GAME_STATE_TILEMAP_DEMO},
    {.label = "Sprite Animations Demo", .target = GAME_STATE_SPRITE_DEMO},
    {.label = "Platformer Demo", .target = GAME_STATE_PLATFORMER_DEMO},
    {.label = "Gamepad Demo", .target = GAME_STATE_GAMEPAD_DEMO},
    {.label = "Logical Resolution Demo", .target = GAME_STATE_LOGICAL_DEMO},
    {.label = "Input Actions Demo", .target = GAME_STATE_INPUT_DEMO},
    {.label = "Audio Demo", .target = GAME_STATE_AUDIO_DEMO},
    {.label = "Physics Demo", .target = GAME_STATE_PHYSICS_DEMO},
    {.label = "Exit", .target = GAME_STATE_QUIT},
};
static constexpr int ITEM_COUNT = static_cast<int>(std::size(main_menu_items));

// Layout, UI units.
static constexpr float LEFT = 40;
static constexpr float TITLE_TOP = 50;
static constexpr float ROWS_TOP = 110;
static constexpr float ROW_PITCH = 35;
static constexpr float BOTTOM_MARGIN = 40;
static constexpr float COLUMN_GAP = 60;

static constexpr double FADE_SECONDS = 0.25;

struct MainMenu {
    Sint32 selected;
    SDL_Color title_color, idle_color, selected_color;
    TTF_Text *title;               // owned, as are the labels and rectangles
    TextArray *labels;             // one per entry
    ColliderRects *hit_rects;      // one per entry, for hit tests
    float view_width, view_height; // the view size of the current layout
    Sint32 rows_per_column;
    float column_width; // width of the widest label plus the gap
};
static MainMenu *main_menu;

// --- layout ---

static SDL_FPoint main_menu_item_position(int index) {
    const int column = index / main_menu->rows_per_column;
    const int row = index % main_menu->rows_per_column;
    return {
        LEFT + static_cast<float>(column) * main_menu->column_width, ROWS_TOP + static_cast<float>(row) * ROW_PITCH};
}

static void main_menu_update_layout() {
    float view_width = 0, view_height = 0;
    engine_view_size(&view_width, &view_height);
    if (view_width == main_menu->view_width && view_height == main_menu->view_height) return;
    main_menu->view_width = view_width;
    main_menu->view_height = view_height;
    main_menu->rows_per_column = menu_layout_rows(view_height - BOTTOM_MARGIN - ROWS_TOP, ROW_PITCH);

    colliders_rects_reset(main_menu->hit_rects);
    for (int i = 0; i < ITEM_COUNT; i++) {
        const SDL_FPoint position = main_menu_item_position(i);
        SDL_FRect rect = {position.x, position.y, 0, 0};
        engine_text_size(text_array_get(main_menu->labels, i), &rect.w, &rect.h);
        colliders_rects_add(main_menu->hit_rects, &rect);
    }
}

static int main_menu_item_at(float x, float y) {
    const SDL_FPoint point = {x, y};
    return colliders_point_inside_rect(&point, main_menu->hit_rects);
}

// --- selection ---

static void main_menu_update_menu_colors() {
    for (int i = 0; i < main_menu->labels->count; i++) {
        const bool selected = i == main_menu->selected;
        engine_set_text_color(
            text_array_get(main_menu->labels, i), selected ? main_menu->selected_color : main_menu->idle_color);
    }
}

static void main_menu_select(int index) {
    if (index == main_menu->selected) return;
    main_menu->selected = index;
    main_menu_update_menu_colors();
}

static void main_menu_select_next() { main_menu_select((main_menu->selected + 1) % ITEM_COUNT); }
static void main_menu_select_previous() { main_menu_select((main_menu->selected + ITEM_COUNT - 1) % ITEM_COUNT); }

static void main_menu_select_column(int delta) {
    main_menu_select(menu_layout_step_column(main_menu->selected, ITEM_COUNT, main_menu->rows_per_column, delta));
}

static void main_menu_update_cursor(int hovered) {
    const SDL_SystemCursor cursor = hovered == -1 ? SDL_SYSTEM_CURSOR_DEFAULT : SDL_SYSTEM_CURSOR_POINTER;
    if (cursor != engine_get_system_cursor_type()) engine_set_system_cursor(cursor);
}

static void main_menu_execute_action() {
    engine_set_system_cursor(SDL_SYSTEM_CURSOR_DEFAULT);
    const GameState target = main_menu_items[main_menu->selected].target;
    if (target == GAME_STATE_QUIT) {
        engine_set_state(GAME_STATE_QUIT);
    } else {
        transition_fade_to(target, FADE_SECONDS);
    }
}

// --- events: all callbacks return true, so that later ones are called too ---

static bool main_menu_event_key_down(SDL_Event *event) {
    switch (event->key.key) {
    case SDLK_DOWN:
        main_menu_select_next();
        break;
    case SDLK_UP:
        main_menu_select_previous();
        break;
    case SDLK_LEFT:
        main_menu_select_column(-1);
        break;
    case SDLK_RIGHT:
        main_menu_select_column(1);
        break;
    case SDLK_RETURN:
        main_menu_execute_action();
        break;
    default:
        break;
    }
    return true;
}

static bool main_menu_mouse_motion(SDL_Event *event) {
    const int hovered = main_menu_item_at(event->motion.x, event->motion.y);
    if (hovered != -1) main_menu_select(hovered);
    main_menu_update_cursor(hovered);
    return true;
}

static bool main_menu_mouse_button_up(SDL_Event *event) {
    if (event->button.button != SDL_BUTTON_LEFT) return true;
    const int clicked = main_menu_item_at(event->button.x, event->button.y);
    if (clicked == -1) return true;
    main_menu_select(clicked);
    main_menu_execute_action();
    return true;
}

static bool main_menu_gamepad_button_down(SDL_Event *event) {
    switch (event->gbutton.button) {
    case SDL_GAMEPAD_BUTTON_SOUTH:
        main_menu_execute_action();
        break;
    case SDL_GAMEPAD_BUTTON_EAST:
        engine_set_state(GAME_STATE_QUIT);
        break;
    case SDL_GAMEPAD_BUTTON_DPAD_UP:
        main_menu_select_previous();
        break;
    case SDL_GAMEPAD_BUTTON_DPAD_DOWN:
        main_menu_select_next();
        break;
    case SDL_GAMEPAD_BUTTON_DPAD_LEFT:
        main_menu_select_column(-1);
        break;
    case SDL_GAMEPAD_BUTTON_DPAD_RIGHT:
        main_menu_select_column(1);
        break;
    default:
        break;
    }
    return true;
}

// --- lifetime ---

static bool _main_menu_make_labels() {
    TTF_Font *font = engine_get_font_by_index(SHARED_FONT_UI);
    for (const MainMenuItem &item : main_menu_items) {
        if (!text_array_add(main_menu->labels, engine_text_engine(), font, item.label, main_menu->idle_color)) {
            return false;
        }
        float width = 0;
        engine_text_size(text_array_get(main_menu->labels, main_menu->labels->count - 1), &width, nullptr);
        main_menu->column_width = SDL_max(main_menu->column_width, width);
    }
    main_menu->column_width += COLUMN_GAP;
    return true;
}

bool main_menu_setup() {
    if (main_menu) return true;
    main_menu = static_cast<MainMenu *>(SDL_calloc(1, sizeof *main_menu));
    if (!main_menu) return engine_error("[MAIN_MENU] Memory allocation failed, error: %s", SDL_GetError());
    main_menu->hit_rects = colliders_new_rects();
    if (!main_menu->hit_rects) return false;
    main_menu->labels = text_array_new(ITEM_COUNT, 5);
    if (!main_menu->labels) return false;

    main_menu->title_color = {120, 216, 254, 255};
    main_menu->idle_color = {167, 202, 230, 255};
    main_menu->selected_color = {248, 255, 255, 255};
    main_menu->title =
        engine_prepare_text(engine_get_font_by_index(SHARED_FONT_UI_HEADING), "Main Menu", 0, main_menu->title_color);
    if (!main_menu->title) return false;
    if (!_main_menu_make_labels()) return false;
    main_menu_update_layout();
    main_menu->selected = 0;
    main_menu_update_menu_colors();

    return engine_add_callback(SDL_EVENT_KEY_DOWN, main_menu_event_key_down) &&
           engine_add_callback(SDL_EVENT_MOUSE_MOTION, main_menu_mouse_motion) &&
           engine_add_callback(SDL_EVENT_MOUSE_BUTTON_UP, main_menu_mouse_button_up) &&
           engine_add_callback(SDL_EVENT_GAMEPAD_BUTTON_DOWN, main_menu_gamepad_button_down);
}

void main_menu_tick() {
    SDL_Renderer *renderer = engine_renderer();
    SDL_SetRenderDrawColor(renderer, 0, 0, 0, 255);
    SDL_RenderClear(renderer);
    main_menu_update_layout(); // the window may have been resized
    engine_render_text(main_menu->title, LEFT, TITLE_TOP);
    for (int i = 0; i < main_menu->labels->count; i++) {
        const SDL_FPoint position = main_menu_item_position(i);
        engine_render_text(text_array_get(main_menu->labels, i), position.x, position.y);
    }
}

void main_menu_cleanup() {
    if (!main_menu) return;
    engine_remove_callback(SDL_EVENT_GAMEPAD_BUTTON_DOWN, main_menu_gamepad_button_down);
    engine_remove_callback(SDL_EVENT_MOUSE_BUTTON_UP, main_menu_mouse_button_up);
    engine_remove_callback(SDL_EVENT_MOUSE_MOTION, main_menu_mouse_motion);
    engine_remove_callback(SDL_EVENT_KEY_DOWN, main_menu_event_key_down);
    if (main_menu->hit_rects) colliders_rects_cleanup(main_menu->hit_rects);
    SDL_free(main_menu->hit_rects);
    if (main_menu->labels) text_array_cleanup(main_menu->labels);
    SDL_free(main_menu->labels);
    engine_cleanup_text(&main_menu->title);
    SDL_free(main_menu);
    main_menu = nullptr;
}
