// drawing_space: the two coordinate spaces for drawing. A screen with a logical size draws in logical space: that fixed
// size, presented with integer scaling and letterbox. All other screens, and all overlays, draw in UI space, where one
// unit is engine_ui_scale output pixels.
#pragma once

bool engine_in_logical_space();

// Switches the renderer to UI space (true) or back to the screen's own space. Reports errors.
bool engine_apply_space(bool ui);
void engine_use_ui_space();
bool engine_set_logical_size(int width, int height); // the screen's; 0 × 0 for none. Reports errors

void engine_view_size(float *width, float *height); // of the current space, in its units; either may be null
void engine_mouse_position(float *x, float *y);     // in the current space; either may be null
int engine_ui_scale();                              // 1 to 8

// Takes effect at once, also for existing texts, and is stored in the configuration. 0 or less: the display's scale.
// Fonts opened with font_open beyond the first eight keep their size. Reports errors and then changes nothing.
bool engine_set_ui_scale(int scale);
