// Tile worlds: collision shapes, drawing, where baked chunks and single tiles must give the same pixels, and reloading.
// What the loader reads and refuses is covered by the digests of the fuzz seeds.

#include "lumarind/engine/engine.h"
#include "lumarind/toolkit/render_grid.h"
#include "lumarind/toolkit/tilemap.h"
#include "support/engine_fixture.h"
#include "toolkit/tile_world_internal.h"

#include <SDL3/SDL_events.h>
#include <SDL3/SDL_render.h>
#include <SDL3_image/SDL_image.h>

#include <algorithm>
#include <format>
#include <random>

namespace {

constexpr int TILE = 8;
constexpr SDL_Color GREEN = {0, 255, 0, 255};

using Cells = std::vector<Uint32>;

struct Random {
    std::mt19937 engine;
    Uint32 operator()() { return static_cast<Uint32>(engine()); }
};

std::string csv_of(const Cells &cells) {
    std::string csv;
    for (const Uint32 cell : cells) csv += (csv.empty() ? "" : ",") + std::to_string(cell);
    return csv;
}

std::string layer_of(int cols, int rows, const Cells &cells, const std::string &more = "") {
    return "<layer id='1' name='ground' width='" + std::to_string(cols) + "' height='" + std::to_string(rows) + "' " +
           more + "><data encoding='csv'>" + csv_of(cells) + "</data></layer>";
}

// With tiles of 8 px.
std::string map_of(int cols, int rows, const std::string &content, const std::string &more = "") {
    return "<?xml version='1.0' encoding='UTF-8'?><map version='1.10' orientation='orthogonal' width='" +
           std::to_string(cols) + "' height='" + std::to_string(rows) + "' tilewidth='8' tileheight='8' " + more + ">" +
           content + "</map>";
}

const std::string SHEET = "<image source='tiles.png' width='32' height='8'/>";
const std::string TILES = "<tileset firstgid='1' name='t' tilewidth='8' tileheight='8'>" + SHEET + "</tileset>";

class TileWorldTest : public EngineTest {
protected:
    void SetUp() override {
        EngineTest::SetUp();
        ASSERT_TRUE(start({"--screen", "text-demo", "--window-size", "200x150"}));
        directory.use_as_game_files("game"); // images are below the current folder
        std::filesystem::create_directory("maps");
        save_noise("tiles.png", 4 * TILE, TILE, [](int, int) { return 255; });
        log.lines.clear();
    }
    void TearDown() override {
        reload_set(false);
        tile_world_cleanup(&world);
        EngineTest::TearDown();
    }

    // An image in which nearly all pixels differ, with the given alpha.
    template <typename Alpha> static void save_noise(const char *path, int w, int h, Alpha alpha) {
        Random random = {std::mt19937(7)};
        const Picture picture(SDL_CreateSurface(w, h, SDL_PIXELFORMAT_RGBA32));
        for (int y = 0; y < h; y++) {
            for (int x = 0; x < w; x++) {
                SDL_WriteSurfacePixel(
                    picture.get(), x, y, static_cast<Uint8>(32 + random() % 200), static_cast<Uint8>(random()),
                    static_cast<Uint8>(random()), static_cast<Uint8>(alpha(x, y)));
            }
        }
        const auto folder = std::filesystem::path(path).parent_path();
        if (!folder.empty()) std::filesystem::create_directories(folder);
        ASSERT_TRUE(IMG_SavePNG(picture.get(), path));
    }
    bool load(const std::string &map) {
        tile_world_cleanup(&world);
        write_file("game/maps/a.tmx", map);
        std::filesystem::copy_file("tiles.png", "maps/tiles.png", std::filesystem::copy_options::overwrite_existing);
        world = tile_world_load(engine_renderer(), "maps/a.tmx");
        return world != nullptr;
    }
    Cells cells(int layer = 0) const {
        Cells found;
        for (int row = 0; row < world->rows; row++) {
            for (int col = 0; col < world->cols; col++) {
                found.push_back(tile_world_gid(world, layer, world->left + col, world->top + row));
            }
        }
        return found;
    }
    Picture drawn(const TileWorldView &view) const {
        SDL_SetRenderDrawColor(engine_renderer(), 0, 255, 0, 255);
        SDL_RenderClear(engine_renderer());
        EXPECT_TRUE(tile_world_draw(engine_renderer(), world, &view));
        return picture();
    }

    TileWorld *world = nullptr;
};

// --- the castle, compared with its CSV files ---

using TileWorldCastle = EngineTest;

TEST_F(TileWorldCastle, CellsAndCollidersMatchCsv) {
    const std::string path = "assets/fireknight/tilemaps/castle-tilemap";
    ASSERT_TRUE(start({"--screen", "text-demo"}));
    TileWorld *world = tile_world_load(engine_renderer(), (path + ".tmx").c_str());
    Tilemap *map = tilemap_new();
    ASSERT_TRUE(world && tilemap_load_csv(map, (path + ".csv").c_str()));
    ASSERT_TRUE(world->cols == map->layer->cols && world->rows == map->layer->rows && world->tile_w == 16);
    for (int i = 0; i < world->rows * world->cols; i++) {
        const int col = i % world->cols, row = i / world->cols;
        ASSERT_EQ(tile_world_gid(world, 0, col, row), tile_grid_gid(map->layer, row, col)) << row << ", " << col;
    }
    ColliderRects rects = {}, expected_rects = {};
    ColliderTris tris = {}, expected_tris = {};
    EXPECT_TRUE(tile_world_colliders(world, "collisions", &rects, &tris));
    const std::string csv = path + "-collisions.csv";
    EXPECT_TRUE(colliders_load_csv(&expected_rects, &expected_tris, nullptr, nullptr, csv.c_str(), 1));
    ASSERT_TRUE(rects.count == expected_rects.count && tris.count == expected_tris.count && tris.count > 0);
    EXPECT_EQ(SDL_memcmp(rects.items, expected_rects.items, sizeof(SDL_FRect) * static_cast<size_t>(rects.count)), 0);
    EXPECT_EQ(SDL_memcmp(tris.items, expected_tris.items, sizeof(Tri) * static_cast<size_t>(tris.count)), 0);
    for (ColliderRects *set : {&rects, &expected_rects}) colliders_rects_cleanup(set);
    for (ColliderTris *set : {&tris, &expected_tris}) colliders_tris_cleanup(set);
    EXPECT_STREQ(tile_world_tile_type(world, 1), "floor");
    tile_world_cleanup(&world);
    tilemap_cleanup(&map);
}

// --- errors ---

TEST_F(TileWorldTest, MissingAndDamagedFilesAreReported) {
    write_file("maps/cut.png", read_file("tiles.png").substr(0, 60));
    const std::pair<std::string, const char *> cases[] = {
        {"<tileset firstgid='1' source='none.tsx'/>", "[STORAGE] Error reading file: maps/none.tsx"},
        {"<objectgroup><object template='none.tx'/></objectgroup>", "[STORAGE] Error reading file: maps/none.tx"},
        {"<tileset firstgid='1' name='t' tilewidth='8' tileheight='8'><image source='cut.png'/></tileset>",
         "'t': cannot load maps/cut.png, error: "}};
    for (const auto &[content, message] : cases) {
        log.lines.clear();
        EXPECT_FALSE(load(map_of(1, 1, content)));
        EXPECT_TRUE(log.errors().size() == 1 && log.has(message)) << message;
    }
    EXPECT_EQ(tile_world_load(nullptr, "maps/a.tmx"), nullptr);
    ASSERT_TRUE(load("<map width='1' height='1' tilewidth='1' tileheight='1'/>")) << "the smallest map";
    EXPECT_FALSE(tile_world_colliders(world, "none", nullptr, nullptr));
    EXPECT_TRUE(tile_world_find_object(world, "nobody") == nullptr && tile_world_tile_properties(world, 9)->count == 0);
    ASSERT_TRUE(load(map_of(1, 1, "<imagelayer><image source='tiles.png'/></imagelayer>")));
    const TileWorldView view = {{0, 0, 9, 9}, 1};
    EXPECT_FALSE(tile_world_draw_layer(engine_renderer(), world, 1, &view));
    for (const SDL_FPoint size : {SDL_FPoint{0, 9}, {9, 0}, {0, 0}}) {
        EXPECT_EQ(count_pixels(drawn({{0, 0, size.x, size.y}, 1}), GREEN), 200 * 150);
    }
}

// --- collision ---

// One tile per kind of shape; its opaque pixels are those covered by the shape.
TEST_F(TileWorldTest, TileShapesMatchOpaquePixelsWithEveryFlip) {
    save_noise("shapes.png", 4 * TILE, TILE, [](int x, int y) {
        const int at = x % TILE;
        const bool solid = x < TILE       ? true
                           : x < 2 * TILE ? at >= 2 && y >= 5
                           : x < 3 * TILE ? at < 4
                                          : y >= TILE - 1 - at;
        return solid ? 255 : 0;
    });
    std::filesystem::rename("shapes.png", "maps/shapes.png");
    const std::string tiles =
        "<tileset firstgid='1' name='t' tilewidth='8' tileheight='8'><image source='shapes.png'/>"
        "<tile id='0'><objectgroup><object id='1' width='8' height='8'/></objectgroup></tile>"
        "<tile id='1'><objectgroup><object id='1' x='2' y='5' width='6' height='3'/></objectgroup></tile>"
        "<tile id='2'><objectgroup><object id='1' x='0' y='0' width='4' height='8'/></objectgroup></tile>"
        "<tile id='3'><objectgroup><object id='1' x='0' y='8'><polygon points='0,0 8,0 "
        "8,-8'/></object></objectgroup></tile>"
        "</tileset>";
    Random random = {std::mt19937(11)};
    Cells expected(20 * 14);
    for (Uint32 &cell : expected) cell = random() % 3 == 0 ? 0 : (random() & 0xE0000000u) | (1 + random() % 3);
    // Slopes in both directions, on the lower edge of the map.
    expected.resize(20 * 16, 0);
    for (size_t col = 0; col < 20; col += 2) expected[15 * 20 + col] = col % 4 == 0 ? 4 : TILE_FLIP_H | 4;
    ASSERT_TRUE(load(map_of(20, 16, tiles + layer_of(20, 16, expected))));
    ColliderRects rects = {};
    ColliderTris tris = {};
    ASSERT_TRUE(tile_world_colliders(world, nullptr, &rects, &tris));
    EXPECT_EQ(tris.count, 10);
    const Picture shown = drawn({{0, 0, 200, 150}, 1});
    for (int y = 0; y < 16 * TILE; y++) {
        for (int x = 0; x < 20 * TILE; x++) {
            const SDL_FPoint p = {static_cast<float>(x) + 0.5f, static_cast<float>(y) + 0.5f};
            const bool solid =
                colliders_point_inside_rect(&p, &rects) != -1 || colliders_point_inside_tri(&p, &tris) != -1;
            ASSERT_EQ(solid, !same_color(pixel_at(shown, x, y), GREEN)) << x << ", " << y;
        }
    }
    // A room with walls of solid tiles is merged into four rectangles.
    Cells hall;
    for (int i = 0; i < 20 * 16; i++) hall.push_back(i < 20 || i >= 300 || i % 20 == 0 || i % 20 == 19 ? 1 : 0);
    ASSERT_TRUE(load(map_of(20, 16, tiles + layer_of(20, 16, hall))));
    const int before = rects.count;
    ASSERT_TRUE(tile_world_colliders(world, "ground", &rects, nullptr));
    EXPECT_EQ(rects.count, before + 4);
    colliders_rects_cleanup(&rects);
    colliders_tris_cleanup(&tris);
}

// --- drawing, compared with a reference painter that implements the editor's rules directly ---

struct PaintedSet {
    Uint32 first, count, columns;
    int w, h, margin, spacing, align, fit; // align: as in ALIGNMENTS; fit: as in FITS
    SDL_Point offset;
    Picture picture;
    std::string trans; // the transparent colour
};
constexpr const char *ALIGNMENTS[] = {"topleft", "top",        "topright", "left",        "center",
                                      "right",   "bottomleft", "bottom",   "bottomright", "unspecified"};
constexpr const char *FITS[] = {"", "tilerendersize='grid'", "tilerendersize='grid' fillmode='preserve-aspect-fit'"};
constexpr const char *ORDERS[] = {"right-down", "right-up", "left-down", "left-up"};
constexpr Uint32 ANIMATED = 20; // in the last tileset: shows the next tile for 7 s, then the one after it for 3 s
constexpr auto real = [](auto number) { return static_cast<float>(number); };

struct Painter {
    const TileWorld *world;
    const std::vector<PaintedSet> &sets;
    TileWorldView view;
    int ms, order; // order: as in ORDERS
    bool by_index; // objects are drawn in file order
    bool repeat_x, repeat_y;
    Picture onto{SDL_CreateSurface(200, 150, SDL_PIXELFORMAT_RGB24)};

    // Draws part of a set's image into a rectangle, flipped as in the GID, then rotated about a point.
    void stamp(
        const PaintedSet &set, SDL_Rect src, SDL_FRect dst, Uint32 gid, SDL_FColor tint, SDL_FPoint about = {},
        float degrees = 0) const {
        const float sine = SDL_sinf(degrees * SDL_PI_F / 180), cosine = SDL_cosf(degrees * SDL_PI_F / 180);
        const float reach = degrees == 0 ? 0 : dst.w + dst.h;
        const auto within = [](float at, int end) { return SDL_clamp(static_cast<int>(at), 0, end); };
        for (int y = within(dst.y - reach, 150); y < within(dst.y + dst.h + reach, 150); y++) {
            for (int x = within(dst.x - reach, 200); x < within(dst.x + dst.w + reach, 200); x++) {
                const float dx = real(x) + 0.5f - about.x, dy = real(y) + 0.5f - about.y;
                float u = (dx * cosine + dy * sine + about.x - dst.x) / dst.w;
                float v = (dy * cosine - dx * sine + about.y - dst.y) / dst.h;
                if (u < 0 || u >= 1 || v < 0 || v >= 1) continue;
                if (gid & TILE_FLIP_H) u = 1 - u;
                if (gid & TILE_FLIP_V) v = 1 - v;
                if (gid & TILE_FLIP_D) std::swap(u, v);
                const int px = static_cast<int>(u * real(src.w)), py = static_cast<int>(v * real(src.h));
                const Uint8 *over = row_of(set.picture, src.y + py) + static_cast<ptrdiff_t>(src.x + px) * 4;
                auto *under = const_cast<Uint8 *>(row_of(onto, y)) + static_cast<ptrdiff_t>(x) * 3;
                const float alpha = tint.a * real(over[3]) / 255, shades[] = {tint.r, tint.g, tint.b};
                for (int i = 0; i < 3; i++) {
                    under[i] =
                        static_cast<Uint8>(0.5f + real(over[i]) * shades[i] * alpha + real(under[i]) * (1 - alpha));
                }
            }
        }
    }
    const PaintedSet &set_of(Uint32 gid) const {
        return sets[(gid & TILE_ID_MASK) >= ANIMATED ? 2 : (gid & TILE_ID_MASK) >= sets[1].first ? 1 : 0];
    }
    // Draws a tile at a given size; `align` selects the point of the tile that is placed at `foot`.
    void tile(Uint32 gid, float w, float h, int align, SDL_FPoint foot, SDL_FColor tint, float degrees = 0) const {
        const Uint32 all = gid & TILE_ID_MASK, shown = all != ANIMATED ? all : ms % 10000 < 7000 ? all + 1 : all + 2;
        const PaintedSet &set = set_of(gid);
        const int id = static_cast<int>(shown - set.first), columns = static_cast<int>(set.columns);
        const SDL_Rect src = {
            set.margin + id % columns * (set.w + set.spacing), set.margin + id / columns * (set.h + set.spacing), set.w,
            set.h};
        w *= view.scale, h *= view.scale;
        foot.x += real(set.offset.x) * view.scale, foot.y += real(set.offset.y) * view.scale;
        const SDL_FRect dst = {foot.x - w * real(align % 3) / 2, foot.y - h * real(align / 3) / 2, w, h};
        stamp(set, src, dst, gid, tint, foot, degrees);
    }
    void cell(Uint32 gid, int col, int row, SDL_FPoint at, SDL_FColor tint) const {
        const PaintedSet &set = set_of(gid);
        float w = real(gid & TILE_FLIP_D ? set.h : set.w), h = real(gid & TILE_FLIP_D ? set.w : set.h);
        const float fitted = SDL_min(TILE / w, TILE / h), more = set.fit == 0 ? 0.0f : 0.5f;
        w = set.fit == 0 ? w : set.fit == 1 ? TILE : w * fitted;
        h = set.fit == 0 ? h : set.fit == 1 ? TILE : h * fitted;
        const SDL_FPoint foot = {real(col * TILE) + more * (TILE - w), real((row + 1) * TILE) - more * (TILE - h)};
        tile(gid, w, h, 6, {at.x + foot.x * view.scale, at.y + foot.y * view.scale}, tint);
    }
    void object(const TileObject &o, SDL_FPoint at, SDL_FColor tint) const {
        const PaintedSet &set = set_of(o.gid);
        tint.a *= o.visible ? o.opacity : 0;
        tile(
            o.gid & ~TILE_FLIP_D, o.width > 0 ? o.width : real(set.w), o.height > 0 ? o.height : real(set.h),
            set.align == 9 ? 6 : set.align, {at.x + o.x * view.scale, at.y + o.y * view.scale}, tint, o.rotation);
    }
    void image(SDL_FPoint at, SDL_FColor tint) const { // the first set's image
        const SDL_Rect all = {0, 0, sets[0].picture->w, sets[0].picture->h};
        const float w = real(all.w) * view.scale, h = real(all.h) * view.scale;
        while (repeat_x && at.x > 0) at.x -= w;
        while (repeat_y && at.y > 0) at.y -= h;
        for (float y = at.y; y == at.y || (repeat_y && y < 150); y += h) {
            for (float x = at.x; x == at.x || (repeat_x && x < 200); x += w) stamp(sets[0], all, {x, y, w, h}, 0, tint);
        }
    }
    void layer(Sint32 index) const {
        const TileLayer *layer = &world->layers[index];
        SDL_FColor tint = layer->tint;
        tint.a *= layer->visible ? layer->opacity : 0;
        const SDL_FPoint middle = {view.area.x + view.area.w / 2, view.area.y + view.area.h / 2};
        const SDL_FPoint at = {
            SDL_roundf((layer->offset.x + (1 - layer->parallax.x) * (middle.x - 5) - view.area.x) * view.scale),
            SDL_roundf((layer->offset.y + (1 - layer->parallax.y) * (middle.y + 3) - view.area.y) * view.scale)};
        if (layer->kind == TILE_LAYER_IMAGE) image(at, tint);
        std::vector<TileObject> objects(layer->objects, layer->objects + layer->object_count);
        const auto above = [](const TileObject &a, const TileObject &b) { return a.y < b.y; };
        if (!by_index) std::stable_sort(objects.begin(), objects.end(), above);
        for (const TileObject &o : objects) object(o, at, tint);
        const int cells = layer->kind == TILE_LAYER_TILES ? world->cols * world->rows : 0;
        for (int i = 0; i < 2 * cells; i++) { // animated tiles above the others
            const int x = i % world->cols, y = i % cells / world->cols;
            const int col = world->left + (order / 2 ? world->cols - 1 - x : x);
            const int row = world->top + (order % 2 ? world->rows - 1 - y : y);
            const Uint32 gid = tile_world_gid(world, index, col, row);
            if (gid != 0 && ((gid & TILE_ID_MASK) == ANIMATED) == (i >= cells)) cell(gid, col, row, at, tint);
        }
    }
};

TEST_F(TileWorldTest, RandomWorldsMatchReferencePainter) {
    Random random = {std::mt19937(21)};
    const auto pick = [&](const std::vector<int> &of) { return of[random() % of.size()]; };
    for (int round = 0; round < 32; round++) {
        SCOPED_TRACE(round);
        const Uint8 blue = round % 2 ? 255 : 0;                   // a background instead of what is drawn before
        const bool fits = round % 3 == 0, large = round % 8 == 7; // tile size equals cell size; a giant object
        const float scale = real(pick({1, 2, 3})), left = real(pick({-40, 0, 31, 197, 412}));
        const TileWorldView view = {{left, real(pick({-25, 0, 45, 150, 260})), 200 / scale, 150 / scale}, scale};
        std::vector<PaintedSet> sets;
        std::string content;
        for (int i = 0; i < 3; i++) {
            PaintedSet set = {};
            const bool odd = i > 0 && !fits, alone = i == 1 && odd && random() % 2;
            set.first = i == 2 ? ANIMATED : i == 1 ? 10 : 1;
            set.columns = alone ? 1 : 4;
            set.count = alone ? 1 : 8;
            set.fit = odd ? pick({0, 0, 1, 2}) : 0;
            set.w = odd ? set.fit ? 4 : pick({4, 8, 12}) : TILE;
            set.h = odd ? set.fit ? pick({8, 4}) : pick({4, 8, 20}) : TILE;
            set.margin = alone ? 0 : pick({0, 3});
            set.spacing = alone ? 0 : pick({0, 2});
            set.align = large ? 4 : pick({0, 1, 2, 3, 4, 5, 6, 7, 8, 9});
            if (odd) set.offset = {pick({0, -3, 1}), pick({0, 1, -4})};
            // The first or last column of pixels may be transparent, or such a row translucent.
            const int tiles = alone ? 1 : 4, kind = pick({0, 1, 2, 3, 4});
            const int w = set.margin + tiles * (set.w + set.spacing) - set.spacing;
            const int h = set.margin + (tiles + 1) / 2 * (set.h + set.spacing) - set.spacing;
            const std::string name = std::format("s{}.png", i);
            save_noise(("maps/" + name).c_str(), w, h, [&](int x, int y) {
                return kind / 2 == 0 && x == kind * (w - 1)         ? 0
                       : kind / 2 == 1 && y == (kind - 2) * (h - 1) ? 100
                                                                    : 255;
            });
            const Picture loaded(IMG_Load(("maps/" + name).c_str()));
            set.picture.reset(SDL_ConvertSurface(loaded.get(), SDL_PIXELFORMAT_RGBA32));
            const int at = set.margin + 2; // this pixel's colour may be the transparent one
            const SDL_Color key = pixel_at(set.picture, at, at);
            if (random() % 3 == 0) set.trans = std::format("{:02x}{:02x}{:02x}", key.r, key.g, key.b);
            if (!set.trans.empty()) SDL_WriteSurfacePixel(set.picture.get(), at, at, 0, 0, 0, 0);
            const char *more = i == 2 ? "<tile id='0'><animation><frame tileid='1' duration='7000'/>"
                                        "<frame tileid='2' duration='3000'/></animation></tile>"
                                      : "";
            content += std::format(
                "<tileset name='s' firstgid='{}' tilewidth='{}' tileheight='{}' margin='{}' spacing='{}' "
                "objectalignment='{}' {}><tileoffset x='{}' y='{}'/>{}<image source='{}' trans='{}'/>{}{}</tileset>",
                set.first, set.w, set.h, set.margin, set.spacing, ALIGNMENTS[set.align], FITS[set.fit], set.offset.x,
                set.offset.y, alone ? "<tile id='0'>" : "", name, set.trans, alone ? "</tile>" : "", more);
            sets.push_back(std::move(set));
        }
        const auto attributes = [&] {
            return std::format(
                " offsetx='{}' offsety='{}' parallaxx='{}' parallaxy='{}' opacity='{}' {} {}", pick({0, 0, -13}),
                pick({0, 0, 21}), pick({1, 1, 2}) / 2.0, pick({2, 2, 1}) / 2.0, pick({10, 10, 6}) / 10.0,
                random() % 3 ? "" : "tintcolor='#ffc080'", random() % 8 ? "mode='normal'" : "visible='0'");
        };
        const bool full = random() % 2, infinite = random() % 3 == 0;
        for (const bool details : {false, true}) {
            Cells cells(64 * 64);
            for (Uint32 &cell : cells) {
                const PaintedSet &set = sets[details ? 1 + random() % 2 : 0];
                const bool empty = (details || !full) && random() % 4 == 0;
                cell = empty ? 0 : (random() & 0xE0000000u) | (set.first + random() % set.count);
            }
            std::string layer = layer_of(64, 64, cells, attributes());
            if (infinite) {
                layer.replace(layer.find("csv'>") + 5, 0, "<chunk x='-7' y='-4' width='64' height='64'>");
                layer.replace(layer.find("</data>"), 0, "</chunk>");
            }
            content += layer;
        }
        const bool by_index = random() % 2, repeat_x = random() % 2, repeat_y = random() % 2;
        content += std::format("<objectgroup draworder='{}' {}>", by_index ? "index" : "topdown", attributes());
        for (int i = 0; i < (large ? 1 : 40); i++) {
            const PaintedSet &set = sets[random() % 3];
            const bool thin = scale == 2 && random() % 8 == 0; // one pixel wide: otherwise sampling is ambiguous
            content += std::format(
                "<object gid='{}' x='{}' y='{}' width='{}' height='{}' rotation='{}' opacity='{}' visible='{}'/>",
                (thin ? 0 : random() & 0xC0000000u) | (set.first + random() % set.count),
                view.area.x + (large ? 90 / scale : real(random() % 250) - 30),
                view.area.y + (large ? 70 / scale : real(8 * (random() % 25)) - 30),
                large ? 5000 / scale : real(thin ? 1 : pick({0, set.w, 2 * set.w})),
                large ? 4800 / scale : real(thin ? 1 : pick({0, set.h, 3 * set.h})),
                large  ? 71 * round % 360
                : thin ? 0
                       : pick({0, 0, 90, 180, 270}),
                pick({2, 2, 1}) / 2.0, random() % 8 ? 1 : 0);
        }
        content += std::format(
            "</objectgroup><imagelayer {} repeatx='{:d}' repeaty='{:d}'><image source='s0.png' "
            "trans='{}'/></imagelayer>",
            attributes(), repeat_x, repeat_y, sets[0].trans);
        const int order = pick({0, 1, 2, 3}), ms = pick({1, 6999, 7001, 9999, 10001, 16900, 17100});
        ASSERT_TRUE(load(map_of(
            64, 64, content,
            std::format(
                "parallaxoriginx='5' parallaxoriginy='-3' renderorder='{}' infinite='{:d}' {}", ORDERS[order], infinite,
                blue ? "backgroundcolor='#0000ff'" : ""))));
        tile_world_advance(world, ms / 1000.0);
        const Painter painter = {world, sets, view, ms, order, by_index, repeat_x, repeat_y};
        SDL_FillSurfaceRect(painter.onto.get(), nullptr, SDL_MapSurfaceRGB(painter.onto.get(), 0, 255 - blue, blue));
        for (int i = 0; i < world->layer_count; i++) painter.layer(i);
        for (const int bakes : {-1, 0, 1, 1000}) { // no budget, no bakes, one per frame, all
            tile_world_set_chunk_budget(world, bakes < 0 ? 0 : TILE_WORLD_CHUNK_BYTES, bakes);
            const Picture is = as_rgb(drawn(view));
            int differing = 0;
            for (int i = 0; i < 150 * 600; i++) {
                differing += SDL_abs(row_of(is, i / 600)[i % 600] - row_of(painter.onto, i / 600)[i % 600]) > 4 ? 1 : 0;
            }
            EXPECT_LE(differing, large ? 2000 : 0) << bakes << " bakes";
        }
    }
}

TEST_F(TileWorldTest, ChunksStayWithinBudgetAndAreBakedAgainWhenLost) {
    Cells all(32 * 400, 1);
    all.resize(33 * 400); // the chunks below are empty and need no memory
    ASSERT_TRUE(load(map_of(400, 33, TILES + layer_of(400, 33, all))));
    constexpr size_t CHUNK = 256 * 256 * 4;
    tile_world_set_chunk_budget(world, 0, 0);
    const auto at = [](float x) { return TileWorldView{{x, 120, 200, 150}, 1}; };
    const Picture expected = drawn(at(0));
    tile_world_set_chunk_budget(world, 5 * CHUNK, 1);
    for (int step = 0; step < 40; step++) {
        tile_world_advance(world, 0.01);
        const size_t before = tile_world_chunk_bytes(world);
        EXPECT_TRUE(same_pixels(drawn(at(static_cast<float>(step) * 72)), expected)) << step;
        EXPECT_LE(tile_world_chunk_bytes(world), SDL_min(5 * CHUNK, before + CHUNK)) << "one bake per frame";
    }
    EXPECT_EQ(tile_world_chunk_bytes(world), 5 * CHUNK);
    SDL_Event event = {};
    event.type = SDL_EVENT_RENDER_TARGETS_RESET;
    SDL_PushEvent(&event);
    tile_world_set_chunk_budget(world, 5 * CHUNK, 0);
    EXPECT_TRUE(same_pixels(drawn(at(0)), expected));
    EXPECT_EQ(tile_world_chunk_bytes(world), 0u) << "lost chunks are freed";
    EXPECT_EQ(SDL_GetRenderTarget(engine_renderer()), nullptr);
    // More chunks are visible than slots exist, nearly all of them empty.
    ASSERT_TRUE(load(map_of(
        1, 1,
        TILES + "<layer name='l'><data encoding='csv'><chunk width='1' height='1'>1</chunk>"
                "<chunk x='1300' y='1300' width='1' height='1'>1</chunk></data></layer>",
        "infinite='1'")));
    for (int frame = 0; frame < 3; frame++, tile_world_advance(world, 0.01)) drawn({{0, 0, 11000, 11000}, 1 / 64.0f});
    EXPECT_EQ(count_pixels(drawn({{10300, 10300, 200, 150}, 1}), GREEN), 200 * 150 - TILE * TILE);
}

// --- hot reload ---

TEST_F(TileWorldTest, HotReloadReplacesWorldAndIgnoresInvalidFiles) {
    const TileWorldView view = {{0, 0, 200, 150}, 1};
    const auto map = [](int cols, const std::string &more = "") {
        return map_of(
            cols, 1,
            "<tileset firstgid='1' source='set.tsx'/>" + layer_of(cols, 1, Cells(static_cast<size_t>(cols), 2)) + more);
    };
    const auto set = [](const std::string &more = "") {
        return "<tileset name='s' tilewidth='8' tileheight='8'>" + SHEET + more + "</tileset>";
    };
    write_file("game/maps/set.tsx", set());
    reload_set(true, 0);
    ASSERT_TRUE(load(map(1)));
    const TileWorld *before = world;
    const auto reloads = [&] {
        const Uint32 generation = world->generation;
        tile_world_advance(world, 0.01);
        EXPECT_EQ(world, before);
        return world->generation - generation;
    };
    EXPECT_EQ(reloads(), 0u) << "nothing has changed";
    const Picture first = drawn(view);
    write_file("game/maps/a.tmx", map(3));
    EXPECT_EQ(reloads(), 1u);
    EXPECT_EQ(cells(), (Cells{2, 2, 2}));
    const Picture three = drawn(view);
    EXPECT_FALSE(same_pixels(three, first));
    for (const std::string &broken :
         {std::string(), map(4).substr(0, 200), map(5, "<layer name='x' width='1' height='1'/>")}) {
        log.lines.clear();
        write_file("game/maps/a.tmx", broken);
        for (int i = 0; i < 3; i++) EXPECT_EQ(reloads(), 0u);
        EXPECT_EQ(log.errors().size(), 1u) << "reported once";
        EXPECT_TRUE(same_pixels(drawn(view), three)) << "the old content is kept";
    }
    std::filesystem::remove("game/maps/a.tmx");
    EXPECT_EQ(reloads(), 0u);
    write_file("game/maps/new.tmx", map(1));
    std::filesystem::rename("game/maps/new.tmx", "game/maps/a.tmx"); // as editors do
    EXPECT_EQ(reloads(), 1u);
    EXPECT_TRUE(same_pixels(drawn(view), first));
    write_file("game/maps/set.tsx", set("<tile id='1' type='wood'/>"));
    EXPECT_EQ(reloads(), 1u);
    EXPECT_STREQ(tile_world_tile_type(world, 2), "wood");
    save_noise("maps/tiles.png", 4 * TILE, TILE, [](int x, int) { return x % 3 ? 255 : 0; });
    EXPECT_EQ(reloads(), 1u);
    EXPECT_FALSE(same_pixels(drawn(view), first)) << "the image has changed";
    write_file("game/maps/a.tmx", map(2));
    reloads();
    for (int i = 0; i < 100; i++) {
        write_file("game/maps/a.tmx", map(1 + i % 2, i % 10 ? "" : "<broken"));
        reloads();
        drawn(view);
    }
    write_file("game/maps/a.tmx", map(2) + "\n");
    EXPECT_EQ(reloads(), 1u);
    reload_set(false);
    write_file("game/maps/a.tmx", map(9));
    EXPECT_EQ(reloads(), 0u) << "hot reload is disabled";
}

TEST_F(TileWorldTest, TexturesAreSharedAndReferenceCounted) {
    ASSERT_TRUE(load(map_of(1, 1, TILES + layer_of(1, 1, {1}))));
    TileWorld *other = tile_world_load(engine_renderer(), "maps/a.tmx");
    ASSERT_NE(other, nullptr);
    const SharedTexture *shared = world->parts->content.tilesets[0]->texture;
    EXPECT_EQ(shared, other->parts->content.tilesets[0]->texture);
    EXPECT_EQ(shared->holders, 2);
    tile_world_cleanup(&other);
    tile_world_cleanup(&other);
    EXPECT_EQ(shared->holders, 1);
    EXPECT_FALSE(same_color(pixel_at(drawn({{0, 0, 200, 150}, 1}), 1, 1), GREEN))
        << "the other world's reference remains";
}

} // namespace
