// Tile worlds: supported features, error messages, collision shapes, and drawing, where baked chunks and single tiles
// must give the same pixels.

#include "lumarind/core/error.h"
#include "lumarind/engine/engine.h"
#include "lumarind/toolkit/render_grid.h"
#include "lumarind/toolkit/tilemap.h"
#include "support/allocation_faults.h"
#include "support/engine_fixture.h"
#include "toolkit/tile_world_internal.h"

#include <SDL3/SDL_events.h>
#include <SDL3/SDL_render.h>
#include <SDL3_image/SDL_image.h>

#include <algorithm>
#include <format>
#include <random>
#include <zlib.h>

namespace {

constexpr int TILE = 8;
constexpr SDL_Color GREEN = {0, 255, 0, 255};

std::string base64(const std::string &bytes) {
    constexpr char DIGITS[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    for (size_t i = 0; i < bytes.size(); i += 3) {
        unsigned group = 0;
        for (size_t k = 0; k < 3; k++) {
            group = group << 8 | (i + k < bytes.size() ? static_cast<unsigned char>(bytes[i + k]) : 0u);
        }
        for (size_t k = 0; k < 4; k++) text += i + k > bytes.size() ? '=' : DIGITS[group >> (18 - 6 * k) & 63];
    }
    return text;
}

std::string packed(const std::string &bytes, bool gzip) {
    z_stream stream = {};
    deflateInit2(&stream, 9, Z_DEFLATED, gzip ? 15 + 16 : 15, 8, Z_DEFAULT_STRATEGY);
    std::string out(bytes.size() + 1000, '\0');
    stream.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(bytes.data()));
    stream.avail_in = static_cast<uInt>(bytes.size());
    stream.next_out = reinterpret_cast<Bytef *>(out.data());
    stream.avail_out = static_cast<uInt>(out.size());
    deflate(&stream, Z_FINISH);
    out.resize(stream.total_out);
    deflateEnd(&stream);
    return out;
}

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

std::string bytes_of(const Cells &cells) {
    std::string bytes;
    for (const Uint32 cell : cells) {
        for (int i = 0; i < 4; i++) bytes += static_cast<char>(cell >> (8 * i) & 255);
    }
    return bytes;
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
        allocation_faults_install();
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

// --- all elements of a map ---

TEST_F(TileWorldTest, ParsesEveryElement) {
    save_noise("pictures/tall.png", 12, 24, [](int, int) { return 255; });
    write_file(
        "game/s/pictures.tsx", R"(<tileset name="pictures" tilewidth="12" tileheight="24" tilecount="2" columns="0"
        objectalignment="top"><tileoffset x="3" y="-2"/><grid orientation="orthogonal" width="1" height="1"/>
        <properties><property name="set" value="yes"/></properties>
        <tile id="2" class="tree"><image source="../pictures/tall.png" width="12" height="24"/></tile>
        <tile id="5" x="2" y="4" width="6" height="7"><image source="../pictures/tall.png"/></tile></tileset>)");
    write_file("game/maps/crate.tx", R"(<template><tileset firstgid="1" source="../s/pictures.tsx"/>
        <object name="crate" type="box" gid="2147483651" width="20" height="30"><properties>
        <property name="worth" type="int" value="5"/><property name="kind" value="oak"/></properties></object></template>)");
    write_file("game/maps/post.tx", "<template><object name='post' width='2' height='9'/></template>");
    ASSERT_TRUE(load(map_of(
        2, 2, R"(
        <editorsettings><chunksize width="32" height="32"/></editorsettings>
        <properties><property name="music" type="file" value="../a.ogg"/><property name="gravity" type="float" value="9.5"/>
          <property name="lives" type="int" value="-3"/><property name="dark" type="bool" value="true"/>
          <property name="sky" type="color" value="#80102030"/><property name="no colour" type="color" value=""/>
          <property name="boss" type="object" value="7"/><property name="later" type="of-another-version" value="v"/>
          <property name="story">two
lines &amp; more</property>
          <property name="hero" type="class" propertytype="Hero"><properties><property name="hp" type="int" value="12"/>
            <property name="bag" type="list"><item type="int" value="4"/><item type="string" value="key"/></property>
          </properties></property></properties>
        <tileset firstgid="1" name="sheet" tilewidth="8" tileheight="8" tilecount="4" columns="4"><image source="tiles.png"/>
          <tile id="1" type="water"><properties><property name="deep" type="bool" value="true"/></properties>
            <animation><frame tileid="1" duration="100"/><frame tileid="0" duration="50"/></animation></tile>
          <wangsets><wangset name="w"/></wangsets></tileset>
        <tileset firstgid="5" source=".././/s/pictures.tsx"/>
        <group name="g" offsetx="10" offsety="1" parallaxx="0.5" opacity="0.5" tintcolor="#ff8000"><group visible="0">
          <imagelayer id="3" name="sky" offsetx="-4" parallaxx="0.5" opacity="0.5" tintcolor="#80ff00" repeatx="1">
            <image source="tiles.png"/></imagelayer></group>
          <layer id="1" name="ground" class="solid" width="2" height="2"><properties><property name="friction" value="1"/>
            </properties><data encoding="csv">1,2147483650,
            7,0</data></layer></group>
        <unknown/>
        <objectgroup id="4" name="things" draworder="index"><object id="1" name="p" x="3.5" y="40"><point/></object>
          <object id="2" x="0" y="30" width="4" height="5" rotation="45" visible="0" type="door"/>
          <object id="3" x="0" y="20" width="4" height="5"><ellipse/></object>
          <object id="4" x="1" y="10" opacity="0.5"><polygon points="0,0 16,8.5 -4,2e1"/></object>
          <object id="5"><polyline points=" 1,2
            3,4 "/></object><object id="6"><text wrap="1">Hi &lt;you&gt;</text></object>
          <object id="7" name="boss" gid="1073741825" x="9" y="8" width="16" height="8"/><object id="9"><capsule/></object>
          <object id="8" template="crate.tx" x="1" y="2" width="40"><properties>
            <property name="kind" value="elm"/></properties></object><object id="10" template="post.tx"/></objectgroup>
        <objectgroup name="sorted"><object id="21" y="9"/><object id="20" y="9"/><object id="22" y="-1"/></objectgroup>)",
        "backgroundcolor='#102030' renderorder='left-up' parallaxoriginx='5' class='level'")));

    const TileProperties *properties = &world->properties;
    EXPECT_STREQ(tile_property_string(properties, "music", ""), "../a.ogg");
    EXPECT_STREQ(tile_property_string(properties, "story", ""), "two\nlines & more");
    EXPECT_STREQ(tile_property_string(properties, "later", ""), "v") << "an unknown type is a string";
    EXPECT_EQ(tile_property_int(properties, "lives", 0), -3);
    EXPECT_EQ(tile_property_int(properties, "gravity", 0), 9);
    EXPECT_EQ(tile_property_float(properties, "gravity", 0), 9.5);
    EXPECT_TRUE(tile_property_bool(properties, "dark", false));
    const SDL_Color sky = tile_property_color(properties, "sky", {}),
                    none = tile_property_color(properties, "no colour", GREEN);
    EXPECT_TRUE(sky.r == 0x10 && sky.b == 0x30 && sky.a == 0x80 && none.a == 0);
    EXPECT_EQ(tile_property_int(properties, "boss", 0), 7);
    EXPECT_EQ(tile_property_int(properties, "hero.hp", 0), 12);
    EXPECT_EQ(tile_property_int(properties, "hero.bag", 0), 2) << "the length of a list";
    EXPECT_STREQ(tile_property_string(properties, "hero.bag.1", ""), "key");
    EXPECT_EQ(tile_property_int(properties, "music", 4), 4) << "the default if the type differs";
    EXPECT_TRUE(tile_property_bool(properties, "lives", true) && tile_property_find(properties, "nothing") == nullptr);

    ASSERT_EQ(world->layer_count, 4);
    const TileLayer *image = &world->layers[0], *ground = &world->layers[1], *things = &world->layers[2];
    EXPECT_TRUE(world->background.r == 0x10 && world->background.a == 255);
    EXPECT_TRUE(image->kind == TILE_LAYER_IMAGE && !image->visible && image->opacity == 0.25f && image->offset.x == 6);
    EXPECT_TRUE(image->parallax.x == 0.25f && image->parallax.y == 1 && image->offset.y == 1 && image->tint.b == 0);
    EXPECT_NEAR(image->tint.r, 128 / 255.0, 1e-6);
    EXPECT_TRUE(ground->visible && ground->opacity == 0.5f && tile_world_find_layer(world, "ground") == 1);
    EXPECT_STREQ(ground->type, "solid");
    EXPECT_STREQ(tile_property_string(&ground->properties, "friction", ""), "1");
    EXPECT_EQ(cells(1), (Cells{1, 2147483650u, 7, 0}));
    EXPECT_EQ(tile_world_gid(world, 1, -1, 0) + tile_world_gid(world, 1, 0, 2) + tile_world_gid(world, 9, 0, 0), 0u);
    EXPECT_STREQ(tile_world_tile_type(world, 2147483650u), "water");
    EXPECT_TRUE(tile_property_bool(tile_world_tile_properties(world, 2), "deep", false));
    EXPECT_STREQ(tile_world_tile_type(world, 7), "tree");
    EXPECT_EQ(tile_world_tile_properties(world, 999)->count, 0);

    const TileObjectShape shapes[] = {TILE_OBJECT_POINT,    TILE_OBJECT_RECT, TILE_OBJECT_ELLIPSE, TILE_OBJECT_POLYGON,
                                      TILE_OBJECT_POLYLINE, TILE_OBJECT_TEXT, TILE_OBJECT_TILE,    TILE_OBJECT_CAPSULE,
                                      TILE_OBJECT_TILE,     TILE_OBJECT_RECT};
    ASSERT_EQ(things->object_count, static_cast<int>(std::size(shapes)));
    for (int i = 0; i < things->object_count; i++) EXPECT_EQ(things->objects[i].shape, shapes[i]) << i;
    const TileObject *door = tile_world_object(world, 2), *slope = tile_world_object(world, 4);
    EXPECT_TRUE(door->rotation == 45 && !door->visible && door->width == 4 && SDL_strcmp(door->type, "door") == 0);
    EXPECT_TRUE(slope->opacity == 0.5f && slope->point_count == 3 && slope->points[1].y == 8.5f);
    EXPECT_TRUE(slope->points[2].x == -4 && slope->points[2].y == 20);
    EXPECT_TRUE(slope->width == 0 && slope->height == 0 && tile_world_object(world, 5)->point_count == 2);
    EXPECT_STREQ(tile_world_object(world, 6)->text, "Hi <you>");
    EXPECT_EQ(tile_world_find_object(world, "boss")->id, 7);
    EXPECT_EQ(tile_world_find_object(world, "nobody"), nullptr);
    const TileObject *crate = tile_world_object(world, 8);
    EXPECT_TRUE(crate->width == 40 && crate->height == 30 && crate->x == 1) << "the template's values are defaults";
    EXPECT_EQ(crate->gid, 2147483648u | 7u) << "the template's tileset is the map's";
    EXPECT_STREQ(crate->name, "crate");
    EXPECT_STREQ(tile_property_string(&crate->properties, "kind", ""), "elm");
    EXPECT_EQ(tile_property_int(&crate->properties, "worth", 0), 5);
    const TileObject *sorted = world->layers[3].objects;
    EXPECT_TRUE(sorted[0].id == 21 && sorted[1].id == 20 && sorted[2].id == 22) << "file order";
    EXPECT_TRUE(log.errors().empty()) << log.errors().front();
    const TileSet *pictures = world->parts->content.tilesets[1];
    EXPECT_EQ(_tile_set_info(pictures, 2)->texture, _tile_set_info(pictures, 5)->texture) << "loaded once";
}

TEST_F(TileWorldTest, EveryEncodingDecodesToSameCells) {
    Random random = {std::mt19937(5)};
    Cells expected(13 * 9);
    for (Uint32 &cell : expected) cell = random() % 5 == 0 ? 0 : (random() & 0xE0000000u) | (1 + random() % 4);
    std::string elements;
    for (const Uint32 cell : expected) elements += cell ? "<tile gid='" + std::to_string(cell) + "'/>" : "<tile/>";
    const std::string bytes = bytes_of(expected);
    std::string wrapped = base64(bytes);
    for (size_t i = 70; i < wrapped.size(); i += 71) wrapped.insert(i, "\n");
    const std::string datas[] = {
        "<data encoding='csv'>" + csv_of(expected) + "</data>",
        "<data encoding='csv'>\r\n " + csv_of(expected) + " ,\n</data>",
        "<data>" + elements + "</data>",
        "<data encoding='base64'>\n  " + wrapped + "\n</data>",
        "<data encoding='base64' compression='zlib'>" + base64(packed(bytes, false)) + "</data>",
        "<data encoding='base64' compression='gzip'>" + base64(packed(bytes, true)) + "</data>"};
    for (const std::string &data : datas) {
        ASSERT_TRUE(load(map_of(13, 9, TILES + "<layer name='l' width='13' height='9'>" + data + "</layer>"))) << data;
        EXPECT_EQ(cells(), expected) << data;
    }
    // An infinite map stores the same cells in chunks at any position.
    std::string chunks;
    for (int row = 0; row < 9; row += 3) {
        for (int col = 0; col < 13; col += 13 - row) {
            const int width = col == 0 ? 13 - row : row;
            Cells piece;
            for (int y = row; y < row + 3; y++) {
                for (int x = col; x < col + width; x++) piece.push_back(expected[static_cast<size_t>(y * 13 + x)]);
            }
            chunks.insert(
                0, "<chunk x='" + std::to_string(col - 40) + "' y='" + std::to_string(row - 5) + "' width='" +
                       std::to_string(width) + "' height='3'>" + base64(packed(bytes_of(piece), false)) + "</chunk>");
        }
    }
    ASSERT_TRUE(load(map_of(
        1, 1,
        TILES + "<layer name='l' width='1' height='1'><data encoding='base64' compression='zlib'>" + chunks +
            "</data></layer><layer name='empty'><data encoding='csv'/></layer>",
        "infinite='1'")));
    EXPECT_TRUE(world->left == -40 && world->top == -5 && world->cols == 13 && world->rows == 9);
    EXPECT_EQ(cells(), expected);
}

// --- errors ---

TEST_F(TileWorldTest, ReportsErrorsByName) {
    const std::string bomb = base64(packed(std::string(1 << 20, '\0'), false));
    const auto data = [](const std::string &attributes, const std::string &text) {
        return map_of(
            2, 1, TILES + "<layer name='l' width='2' height='1'><data " + attributes + ">" + text + "</data></layer>");
    };
    const auto object = [](const std::string &content) {
        return map_of(1, 1, TILES + "<objectgroup name='o'>" + content + "</objectgroup>");
    };
    const auto tileset = [](const std::string &attributes, const std::string &content) {
        return map_of(
            1, 1,
            "<tileset firstgid='1' name='t' tilewidth='8' tileheight='8' " + attributes + ">" + content + "</tileset>");
    };
    std::string nested = "<layer name='l'/>";
    for (int i = 0; i < 40; i++) nested = "<group name='g'>" + nested + "</group>";
    write_file("game/maps/set.tsx", "<tileset name='s' source='other.tsx'/>");
    write_file("game/maps/loop.tx", "<template><object template='loop.tx'/></template>");
    write_file("game/maps/map.tsx", map_of(1, 1, ""));
    write_file("game/maps/four.tsx", "<tileset name='s' tilewidth='8' tileheight='8'>" + SHEET + "</tileset>");
    write_file("game/maps/fifth.tx", "<template><tileset firstgid='1' source='four.tsx'/><object gid='5'/></template>");
    write_file("maps/cut.png", read_file("tiles.png").substr(0, 60));
    const struct {
        std::string map;
        const char *message;
    } cases[] = {
        {"<map", "invalid XML at byte "},
        {"<tileset/>", "its root element is 'tileset', but 'map' was expected"},
        {map_of(1, 1, "", "infinite='1'").replace(65, 10, "hexagonal '"), "invalid XML"},
        {"<map orientation='isometric' width='1' height='1'/>", "map: its orientation is isometric: only orthogonal"},
        {"<map width='1' height='1' tilewidth='8'/>", "map: 1x1 tiles of 8x0 px"},
        {"<map width='0' height='1' tilewidth='8' tileheight='8'/>", "map: 0x1 tiles of 8x8 px"},
        {data("encoding='csv'", "1"), "layer 'l' has at most 1 cells, but its size requires 2"},
        {data("encoding='csv'", "1,   "), "layer 'l' has 1 cells, but its size requires 2"},
        {data("encoding='csv'", "1,2,3"), "layer 'l' has more than 2 cells, but its size requires 2"},
        {data("encoding='csv'", "1 2"), "a comma is missing in its CSV"},
        {data("encoding='csv'", "1,x"), "its CSV contains an invalid tile number"},
        {data("encoding='csv'", "1,4294967296"), "its CSV contains an invalid tile number"},
        {data("encoding='csv'", "1,5"),
         "layer 'l' has tile 5 at column 1, row 0, which is in none of the map's tilesets"},
        {data("", "<tile gid='1'/>"), "layer 'l' has 1 cells"},
        {data("encoding='json'", "[]"), "layer 'l' is encoded as json: choose CSV or base64"},
        {data("encoding='base64' compression='zstd'", ""), "layer 'l' is compressed with zstd: choose zlib"},
        {data("encoding='base64'", "AA*A"), "its base64 text is invalid"},
        {data("encoding='base64'", "AAAA=A"), "its base64 text is invalid"},
        {data("encoding='base64'", base64("1234")), "layer 'l' has 1 cells, but its size requires 2"},
        {data("encoding='base64'", base64(std::string(12, '\0'))), "layer 'l' has 3 cells, but its size requires 2"},
        {data("encoding='base64' compression='zlib'", base64("12345678")), "its compressed data is corrupt"},
        {data("encoding='base64' compression='zlib'", base64(packed(std::string(9, '\0'), false))), "has more than 2"},
        {data("encoding='base64' compression='zlib'", bomb),
         "layer 'l' has more than 2 cells, but its size requires 2"},
        {data("encoding='base64' compression='zlib'", base64(packed(std::string(4, '\0'), true))), "has 1 cells"},
        {map_of(
             1, 1, "<layer name='l'><data encoding='csv'><chunk width='1' height='1'>x</chunk></data></layer>",
             "infinite='1'"),
         "its CSV contains an invalid tile number"},
        {map_of(9000, 9000, TILES + layer_of(9000, 9000, {1})), "layer 'ground' has 9000x9000 cells from 0, 0 on"},
        {map_of(4000, 4000, TILES + layer_of(4000, 4000, {1})), "has at most 1 cells, but its size requires 16000000"},
        {map_of(1, 1, nested), "is nested more than 32 levels deep"},
        {map_of(1, 1, "<layer name='l' mode='multiply'/>"), "layer 'l' has the blend mode multiply: only normal"},
        {map_of(1, 1, TILES + TILES), "tileset: its firstgid '1' is not in ascending order"},
        {map_of(1, 1, "<tileset firstgid='1' source='none.tsx'/>"), "[STORAGE] Error reading file: maps/none.tsx"},
        {map_of(1, 1, "<tileset firstgid='1' source='../../a.tsx'/>"), "'../../a.tsx' is outside the game's files"},
        {map_of(1, 1, "<tileset firstgid='1' source='C:/a.tsx'/>"), "'C:/a.tsx' is not a relative path"},
        {map_of(1, 1, "<tileset firstgid='1' source='set.tsx'/>"),
         "maps/set.tsx: an external tileset refers to another one"},
        {map_of(1, 1, "<tileset firstgid='1' source='map.tsx'/>"), "maps/map.tsx: its root element is 'map'"},
        {tileset("", "<image source='none.png'/>"), "'t': cannot load maps/none.png, error: "},
        {tileset("", "<image source='cut.png'/>"), "'t': cannot load maps/cut.png, error: "},
        {tileset("", "<image format='png'><data/></image>"), "'t' has an embedded image"},
        {tileset("columns='5'", SHEET), "tileset 't' has 5 columns, but its image, 32 px wide, has 4"},
        {tileset("margin='30'", SHEET), "its image is smaller than one tile"},
        {tileset("", ""), "it has neither an image nor tiles"},
        {tileset("", "<tile id='1'/>"), "a tile has no image"},
        {tileset("", "<tile id='99999999'>" + SHEET + "</tile>"), "has a tile with the id '99999999'"},
        {tileset("", "<tile id='0' x='50' width='3' height='3'>" + SHEET + "</tile>"), "a tile is outside its image"},
        {tileset("", SHEET + "<tile id='4'/>"), "refers to a tile with the id '4', but has 4 tiles"},
        {tileset("", SHEET + "<tile id='0'><animation><frame tileid='7' duration='1'/></animation></tile>"),
         "of tile 0 shows tile 7"},
        {map_of(1, 1, "<tileset firstgid='1' name='t' tilewidth='0' tileheight='8'>" + SHEET + "</tileset>"),
         "tiles of 0x8 px"},
        {object("<object id='3' name='n'><polygon points='0,0 1'/></object>"),
         "object 3 'n': its points are not a list"},
        {object("<object id='3'><polygon points='0,0 nan,1'/></object>"), "object 3 '': its points are not a list"},
        {object("<object id='3' gid='9'/>"), "object 3 '': its tile is in none of the map's tilesets"},
        {object("<object template='loop.tx'/>"), "maps/loop.tx: a template cannot use another template"},
        {object("<object template='fifth.tx'/>"), "its tile is not in the template's tileset"},
        {object("<object template='none.tx'/>"), "[STORAGE] Error reading file: maps/none.tx"},
    };
    for (const auto &c : cases) {
        log.lines.clear();
        EXPECT_FALSE(load(c.map)) << c.map;
        ASSERT_EQ(log.errors().size(), 1u) << c.map;
        EXPECT_NE(log.errors().front().find(c.message), std::string::npos) << log.errors().front() << "\n" << c.map;
    }
    EXPECT_EQ(tile_world_load(nullptr, "maps/a.tmx"), nullptr);
    ASSERT_TRUE(load("<map width='1' height='1' tilewidth='1' tileheight='1'/>")) << "the smallest map";
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

TEST_F(TileWorldTest, PolygonsBecomeSlopesAndUnsupportedShapesAreReported) {
    ColliderRects rects = {};
    ColliderTris tris = {};
    const auto collide = [&](const std::string &objects) {
        colliders_rects_reset(&rects);
        colliders_tris_reset(&tris);
        const std::string layer = "<objectgroup name='solid' offsetx='100'>" + objects + "</objectgroup>";
        return load(map_of(100, 20, layer)) && tile_world_colliders(world, "solid", &rects, &tris);
    };
    const std::string floor = "<object id='1' x='0' y='100' width='200' height='20'/>";
    // A hill with a dent on the floor, in both winding orders: the triangles have the same area.
    for (const char *points : {"0,0 20,-30 40,-10 60,-30 80,0", "80,0 60,-30 50,-20 40,-10 20,-30 0,0"}) {
        ASSERT_TRUE(collide(floor + "<object id='2' x='10' y='100'><polygon points='" + points + "'/></object>"));
        float area = 0;
        for (int i = 0; i < tris.count; i++) {
            const Tri t = tris.items[i];
            const float one = SDL_fabsf((t.b.x - t.a.x) * (t.c.y - t.a.y) - (t.b.y - t.a.y) * (t.c.x - t.a.x)) / 2;
            EXPECT_GT(one, 0);
            area += one;
        }
        const SDL_FPoint dent = {150, 85}, hill = {130, 75};
        EXPECT_EQ(area, 300 + 400 + 400 + 300);
        EXPECT_TRUE(colliders_point_inside_tri(&dent, &tris) == -1 && colliders_point_inside_tri(&hill, &tris) != -1);
        EXPECT_TRUE(rects.count == 1 && rects.items[0].x == 100) << "the layer's offset is applied";
    }
    // A rotated polygon on the map's lower edge.
    ASSERT_TRUE(collide("<object x='50' y='160' rotation='-90'><polygon points='0,0 30,0 0,10'/></object>"));
    EXPECT_NEAR(colliders_tri_top_point(&tris.items[0]).y, 130, 0.01);
    const SDL_FPoint within = {153, 150};
    EXPECT_EQ(colliders_point_inside_tri(&within, &tris), 0);
    const auto named = [&](const std::string &message) {
        return log.has("[TILE_WORLD] maps/a.tmx: layer 'solid': object 7 'n' " + message);
    };
    const struct {
        const char *object, *message;
    } cases[] = {
        {"x='0' y='0'><polygon points='0,0 40,0 20,20'/>", "is a polygon with open space below it. A slope lifts"},
        {"x='0' y='80'><polygon points='0,0 40,0 40,-20'/>", "is a polygon with open space below it"},
        {"x='180' y='100'><polygon points='0,0 40,0 40,-20'/>", "is a polygon with open space below it"},
        {"x='-200' y='100'><polygon points='0,0 200,0 99,-9'/></object><object x='-120' y='100' width='40' height='9'>",
         "is a polygon with open space below it"},
        {"x='0' y='100'><polygon points='0,0 40,-20 40,0 0,-10'/>", "crosses itself"},
        {"><polygon points='0,0 9,9'/>", "is a polygon without an area"},
        {"><polygon points='0,0 4,4 9,9'/>", "is a polygon without an area"},
        {"width='4' height='4'><ellipse/>", "is an ellipse: only rectangles and polygons are solid"},
        {"width='4' height='4' rotation='1'>", "is a rotated rectangle: set its rotation to 0"},
        {"><polyline points='0,0 9,9'/>", "is a polyline"},
    };
    for (const auto &c : cases) {
        log.lines.clear();
        EXPECT_FALSE(collide(floor + "<object id='7' name='n' " + c.object + "</object>")) << c.object;
        EXPECT_TRUE(named(c.message)) << c.object << (log.errors().empty() ? "" : log.errors().front());
        EXPECT_TRUE(rects.count == 0 && tris.count == 0) << "nothing is added";
    }
    EXPECT_TRUE(collide(floor + "<object x='4'><point/></object><object><text>x</text></object>"))
        << "points and text have no collision shape";
    EXPECT_FALSE(tile_world_colliders(world, "none", &rects, &tris));
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
constexpr Uint32 ANIMATED = 20; // in the last tileset: shows the next tile for 70 ms, then the one after it for 30 ms
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
        const Uint32 all = gid & TILE_ID_MASK, shown = all != ANIMATED ? all : ms % 100 < 70 ? all + 1 : all + 2;
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
        const bool fits = round % 3 == 0, large = round % 8 == 7; // tile size equals cell size; a giant object
        const float scale = real(pick({1, 2, 3})), left = real(pick({-40, 0, 31, 197, 412}));
        const TileWorldView view = {{left, real(pick({-25, 0, 45, 150, 260})), 200 / scale, 150 / scale}, scale};
        std::vector<PaintedSet> sets;
        std::string content;
        for (int i = 0; i < 3; i++) {
            PaintedSet set = {};
            const bool odd = i == 1 && !fits, alone = odd && random() % 2;
            set.first = i == 2 ? ANIMATED : i == 1 ? 10 : 1;
            set.columns = alone ? 1 : 4;
            set.count = alone ? 1 : 8;
            set.fit = odd ? pick({0, 0, 1, 2}) : 0;
            set.w = odd ? set.fit ? 4 : pick({4, 8, 12}) : TILE;
            set.h = odd ? set.fit ? 8 : pick({4, 8, 20}) : TILE;
            set.margin = alone ? 0 : pick({0, 3});
            set.spacing = alone ? 0 : pick({0, 2});
            set.align = large ? 4 : pick({0, 1, 2, 3, 4, 5, 6, 7, 8, 9});
            if (odd) set.offset = {pick({0, -3, 5}), pick({0, 2, -4})};
            // The last column of pixels may be transparent, or the last row translucent.
            const int tiles = alone ? 1 : 4, kind = pick({0, 1, 2});
            const int w = set.margin + tiles * (set.w + set.spacing) - set.spacing;
            const int h = set.margin + (tiles + 1) / 2 * (set.h + set.spacing) - set.spacing;
            const std::string name = std::format("s{}.png", i);
            save_noise(("maps/" + name).c_str(), w, h, [&](int x, int y) {
                return kind == 1 && x == w - 1 ? 0 : kind == 2 && y == h - 1 ? 100 : 255;
            });
            const Picture loaded(IMG_Load(("maps/" + name).c_str()));
            set.picture.reset(SDL_ConvertSurface(loaded.get(), SDL_PIXELFORMAT_RGBA32));
            const int at = set.margin + 2; // this pixel's colour may be the transparent one
            const SDL_Color key = pixel_at(set.picture, at, at);
            if (random() % 3 == 0) set.trans = std::format("{:02x}{:02x}{:02x}", key.r, key.g, key.b);
            if (!set.trans.empty()) SDL_WriteSurfacePixel(set.picture.get(), at, at, 0, 0, 0, 0);
            const char *more = i == 2 ? "<tile id='0'><animation><frame tileid='1' duration='70'/>"
                                        "<frame tileid='2' duration='30'/></animation></tile>"
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
            Cells cells(70 * 50);
            for (Uint32 &cell : cells) {
                const PaintedSet &set = sets[details ? 1 + random() % 2 : 0];
                const bool empty = (details || !full) && random() % 4 == 0;
                cell = empty ? 0 : (random() & 0xE0000000u) | (set.first + random() % set.count);
            }
            std::string layer = layer_of(70, 50, cells, attributes());
            if (infinite) {
                layer.replace(layer.find("csv'>") + 5, 0, "<chunk x='-7' y='-4' width='70' height='50'>");
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
        const int order = pick({0, 1, 2, 3}), ms = pick({1, 69, 71, 99, 101, 168, 171});
        ASSERT_TRUE(load(map_of(
            70, 50, content,
            std::format(
                "parallaxoriginx='5' parallaxoriginy='-3' renderorder='{}' infinite='{:d}'", ORDERS[order],
                infinite))));
        tile_world_advance(world, ms / 1000.0);
        const Painter painter = {world, sets, view, ms, order, by_index, repeat_x, repeat_y};
        SDL_FillSurfaceRect(painter.onto.get(), nullptr, SDL_MapSurfaceRGB(painter.onto.get(), 0, 255, 0));
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
    engine_clear_error();
    const int live = allocation_faults_live();
    for (int i = 0; i < 100; i++) {
        write_file("game/maps/a.tmx", map(1 + i % 2, i % 10 ? "" : "<broken"));
        reloads();
        drawn(view);
    }
    write_file("game/maps/a.tmx", map(2) + "\n");
    EXPECT_EQ(reloads(), 1u);
    engine_clear_error();
    EXPECT_EQ(allocation_faults_live(), live) << "no leak";
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

TEST_F(TileWorldTest, LoadingDrawingAndCollidersSurviveAllocationFaults) {
    save_noise("maps/tall.png", 12, 20, [](int, int) { return 255; });
    write_file(
        "game/maps/box.tx",
        "<template><tileset firstgid='1' source='set.tsx'/><object gid='1' width='9' height='9'/></template>");
    write_file(
        "game/maps/set.tsx",
        "<tileset name='s' tilewidth='12' tileheight='20'><tile id='0'><image source='tall.png'/></tile></tileset>");
    const Cells cells = {1, 2};
    const std::string part(1 << 20, 'c'); // large enough for an arena block of its own
    ASSERT_TRUE(load(map_of(
        2, 1,
        "<properties><property name='a' type='class'><properties><property name='b' value='" + part +
            "'/></properties></property></properties><tileset firstgid='1' name='t' tilewidth='8' tileheight='8'>" +
            SHEET +
            "<tile id='1'><objectgroup><object><polygon points='0,8 8,8 8,0'/></object></objectgroup><animation>"
            "<frame tileid='0' duration='9'/></animation></tile></tileset>"
            "<layer name='l' width='2' height='1'><data encoding='base64' compression='zlib'>" +
            base64(packed(bytes_of(cells), false)) +
            "</data></layer><objectgroup><object template='box.tx'><properties>"
            "<property name='p' value='q'/></properties></object></objectgroup>")));
    tile_world_cleanup(&world);
    ColliderRects rects = {};
    ColliderTris tris = {};
    expect_allocation_faults_survived(
        &log,
        [&] {
            world = tile_world_load(engine_renderer(), "maps/a.tmx");
            if (!world || !tile_world_colliders(world, nullptr, &rects, &tris)) return false;
            EXPECT_EQ(tile_property_string(&world->properties, "a.b", ""), part) << "no partial load";
            const TileWorldView view = {{0, 0, 200, 150}, 1};
            return tile_world_draw(engine_renderer(), world, &view);
        },
        [&] {
            tile_world_cleanup(&world);
            colliders_rects_cleanup(&rects);
            colliders_tris_cleanup(&tris);
        });
}

} // namespace
