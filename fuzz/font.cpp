// Font files: opened, measured and drawn at two sizes.
#include "fuzz/support.h"
#include "fuzz/targets.h"
#include "lumarind/engine/engine.h"
#include "lumarind/engine/text.h"

#include <SDL3/SDL_render.h>

static constexpr const char *TEXT = "AVA fi 0129 \xC3\x84\xC3\xB6\xE2\x82\xAC .,!\nquick brown";

static void draw_text(TTF_Font *font) {
    TTF_Text *text = engine_prepare_text(font, TEXT, 0, {255, 200, 100, 255});
    fuzz_check(text || fuzz_logged_errors() > 0, "a failure to prepare a text is reported");
    if (!text) return;
    float width = -1, height = -1;
    engine_text_size(text, &width, &height);
    fuzz_check(width >= 0 && height >= 0, "a text size is not negative");
    engine_render_text(text, 3, 5);
    SDL_FlushRenderer(engine_renderer());
    engine_cleanup_text(&text);
}

int fuzz_font(const uint8_t *data, size_t size) {
    fuzz_start_engine();
    TTF_Font *font = font_open(fuzz_memory_file(data, size), 16);
    fuzz_check(font || fuzz_logged_errors() == 1, "a font that does not open is reported once");
    if (!font) return 0;
    draw_text(font);
    if (font_set_size(font, 40)) draw_text(font);
    TTF_Font *copy = font_copy(font);
    if (copy) draw_text(copy);
    font_cleanup(copy);
    font_cleanup(font);
    return 0;
}
