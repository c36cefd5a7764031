// drawing_space: the two coordinate spaces everything is drawn in. A screen with a logical size draws in logical
// space, that fixed size presented with whole-number scaling. Every other screen, and every overlay, draws in UI
// space, where one unit is engine_ui_scale output pixels.
#pragma once

bool engine_in_logical_space();

// Forces UI space (true) or goes back to the screen's own space, and sets the renderer up for it. False: reported.
bool engine_apply_space(bool ui);
void engine_use_ui_space();
bool engine_set_logical_size(int width, int height); // the screen's; 0 × 0 for none. False: reported

void engine_view_size(float *width, float *height); // of the current space, in its units; either may be null
void engine_mouse_position(float *x, float *y);     // in the current space; either may be null
int engine_ui_scale();                              // 1 to 8

// Takes effect at once, also in texts that are there already, and is kept in the configuration. 0 or less: by the
// display's scale. Fonts that were opened with font_open beyond the first eight keep their size. Returns false and
// reports the error, without changing anything, when a font cannot be made anew.
bool engine_set_ui_scale(int scale);
