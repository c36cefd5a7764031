#include "lumarind/engine/ui_scale.h"

int ui_scale_clamp(int n) {
    if (n < UI_SCALE_MIN) return UI_SCALE_MIN;
    return n > UI_SCALE_MAX ? UI_SCALE_MAX : n;
}

int ui_scale_pick(float display_scale, int configured, int from_args) {
    if (from_args > 0) return ui_scale_clamp(from_args);
    if (configured > 0) return ui_scale_clamp(configured);
    if (!(display_scale >= 1.0f)) return UI_SCALE_MIN; // also true for NaN
    if (display_scale >= static_cast<float>(UI_SCALE_MAX)) return UI_SCALE_MAX;
    return ui_scale_clamp(static_cast<int>(display_scale + 0.5f));
}
