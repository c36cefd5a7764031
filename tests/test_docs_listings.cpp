// The listings of docs/maps-and-sprites.md: each is copied here verbatim between a pair of markers, and is run. Those
// of docs/first-game.md are in the template, except the screen at its end, which the package test adds to the template
// and runs.

#include "lumarind/engine/engine.h"
#include "lumarind/input/input.h"
#include "lumarind/player/player_body.h"
#include "lumarind/toolkit/animation_set.h"
#include "lumarind/toolkit/sprite_batch.h"
#include "lumarind/toolkit/sprite_sheet.h"
#include "lumarind/toolkit/tile_world.h"
#include "support/engine_fixture.h"

#include <SDL3/SDL_render.h>

#include <cmath>

namespace {

// [level]
struct Level {
    TileWorld *world;
    ColliderRects rects;
    ColliderTris slopes;
    PlayerBody body;
};

bool level_load(Level *level) {
    level->world = tile_world_load(engine_renderer(), "assets/fireknight/tilemaps/castle-tilemap.tmx");
    if (!level->world) return false; // logged, with the file, the element and a remedy
    player_body_init(&level->body, {100, 416}, 20, 40);
    return tile_world_colliders(level->world, "collisions", &level->rects, &level->slopes);
}

void level_fixed_update(Level *level, double dt) {
    PlayerBody *body = &level->body;
    const int walk = (input_held(INPUT_ACTION_RIGHT) ? 1 : 0) - (input_held(INPUT_ACTION_LEFT) ? 1 : 0);
    body->vel.x = 120.0f * static_cast<float>(walk);
    body->vel.y += 900 * static_cast<float>(dt);
    player_body_step(body, dt, &level->rects, &level->slopes);
}

void level_draw(Level *level, float view_w, float view_h, float scale) {
    SDL_Renderer *renderer = engine_renderer();
    const float w = view_w / scale, h = view_h / scale;
    const SDL_FPoint feet = level->body.pos;
    const TileWorldView view = {{feet.x - w / 2, feet.y - h / 2, w, h}, scale};
    tile_world_advance(level->world, engine_fps_delta()); // once per frame
    for (int layer = 0; layer < level->world->layer_count; layer++) {
        tile_world_draw_layer(renderer, level->world, layer, &view);
        if (layer != tile_world_find_layer(level->world, "castle")) continue;
        const SDL_FPoint origin = tile_world_origin(level->world, layer, &view);
        const SDL_FRect box = player_body_rect(&level->body); // here the hero is a box, in front of this layer
        const SDL_FRect hero = {origin.x + box.x * scale, origin.y + box.y * scale, box.w * scale, box.h * scale};
        SDL_SetRenderDrawColor(renderer, 255, 160, 0, 255);
        SDL_RenderFillRect(renderer, &hero);
    }
}

void level_cleanup(Level *level) {
    tile_world_cleanup(&level->world);
    colliders_rects_cleanup(&level->rects);
    colliders_tris_cleanup(&level->slopes);
}
// [end]

// [sprite]
struct Hero {
    AnimationSet *set;
    SpriteSheet *sheet;
    Animation animation;
};

bool hero_load(Hero *hero) {
    hero->set = animation_set_load("assets/fireknight/sprites/fireknight.json");
    hero->sheet = hero->set ? sprite_sheet_new(engine_renderer(), hero->set) : nullptr;
    return hero->sheet && animation_init(&hero->animation, hero->set, animation_find_clip(hero->set, "run"));
}

void hero_draw(Hero *hero, SDL_FPoint feet, double seconds) {
    animation_advance(&hero->animation, seconds);
    const AnimationSlice *slice = animation_set_find_slice(hero->set, "feet");
    const AnimationSliceKey *key = animation_slice_at(slice, animation_sheet_frame(&hero->animation));
    const SDL_Point pivot = key ? key->pivot : SDL_Point{0, 0};
    const SDL_FPoint corner = {feet.x - static_cast<float>(pivot.x), feet.y - static_cast<float>(pivot.y)};
    sprite_sheet_draw(engine_renderer(), hero->sheet, &hero->animation, corner, 1, SDL_FLIP_NONE);
}

void hero_cleanup(Hero *hero) {
    sprite_sheet_cleanup(&hero->sheet); // before its set
    animation_set_cleanup(&hero->set);
}
// [end]

// [batch]
void crowd_draw(SpriteBatch *batch, const SpriteSheet *sheet, const Animation *crowd, const SDL_FPoint *at, int count) {
    sprite_batch_begin(batch, sheet);
    for (int i = 0; i < count; i++) sprite_batch_add(batch, &crowd[i], at[i], 1, SDL_FLIP_NONE);
    sprite_batch_draw(engine_renderer(), batch); // one render call for all sprites
}
// [end]

class DocsListings : public EngineTest {
protected:
    void SetUp() override {
        EngineTest::SetUp();
        ASSERT_TRUE(start({"--screen", "text-demo", "--window-size", "400x300"}));
        clear();
    }
    static void clear() {
        SDL_SetRenderDrawColor(engine_renderer(), 0, 0, 255, 255);
        SDL_RenderClear(engine_renderer());
    }
};

TEST_F(DocsListings, LevelListingDrawsAndWalks) {
    Level level = {};
    ASSERT_TRUE(level_load(&level));
    for (int step = 0; step < 60; step++) level_fixed_update(&level, 1 / 60.0);
    EXPECT_TRUE(level.body.grounded) << "falls onto the floor";
    const float x = level.body.pos.x;
    hold({SDL_SCANCODE_RIGHT});
    for (int step = 0; step < 60; step++) {
        frame(1 / 60.0);
        level_fixed_update(&level, 1 / 60.0);
    }
    EXPECT_NEAR(level.body.pos.x, x + 120, 2) << "walks while the key is held";
    clear();
    level_draw(&level, 400, 300, 2);
    const Picture drawn = picture();
    EXPECT_EQ(count_pixels(drawn, {255, 160, 0, 255}), 40 * 80) << "the hero is in front";
    EXPECT_EQ(count_pixels(drawn, {0, 0, 255, 255}), 0) << "the castle fills the view";
    level_cleanup(&level);
}

TEST_F(DocsListings, SpriteListingsDrawAtPivotAndInBatch) {
    Hero hero = {};
    ASSERT_TRUE(hero_load(&hero));
    hero_draw(&hero, {200, 250}, 0);
    const Picture drawn = picture();
    const SDL_Rect above = {150, 200, 100, 50}, below = {0, 250, 400, 50};
    EXPECT_LT(count_pixels(drawn, {0, 0, 255, 255}, above), 100 * 50);
    EXPECT_EQ(count_pixels(drawn, {0, 0, 255, 255}, below), 400 * 50) << "nothing is below the feet";
    SpriteBatch *batch = sprite_batch_new(1);
    const Animation crowd[] = {hero.animation};
    const SDL_FPoint at[] = {{200 - 144, 250 - 128}};
    clear();
    crowd_draw(batch, hero.sheet, crowd, at, 1);
    EXPECT_TRUE(same_pixels(picture(), drawn));
    sprite_batch_cleanup(&batch);
    hero_cleanup(&hero);
}

TEST_F(DocsListings, PageContainsListingsVerbatim) {
    const std::string source = read_file(LISTINGS_SOURCE), page = read_file(LISTINGS_PAGE);
    for (const char *name : {"level", "sprite", "batch"}) {
        const std::string mark = std::string("// [") + name + "]\n";
        const size_t begin = source.find(mark) + mark.size(), end = source.find("// [end]", begin);
        ASSERT_NE(end, source.npos) << name;
        EXPECT_NE(page.find("```cpp\n" + source.substr(begin, end - begin) + "```"), page.npos) << name;
    }
}

TEST_F(DocsListings, FirstGameListingsMatchTemplate) {
    const std::string page = read_file(FIRST_GAME_PAGE), folder = FIRST_GAME_TEMPLATE;
    const std::string code = read_file(folder + "/main.cpp") + read_file(folder + "/CMakeLists.txt");
    int listings = 0;
    for (size_t at = 0; (at = page.find("\n```c", at)) < page.find("\n## A screen of your own"); listings++) {
        const size_t begin = page.find('\n', at + 1) + 1, end = page.find("```\n", begin);
        const std::string listing = page.substr(begin, end - begin);
        EXPECT_NE(code.find(listing), code.npos) << listing;
        at = end;
    }
    EXPECT_EQ(listings, 6);
}

} // namespace
