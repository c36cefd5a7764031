// ui_scale: the choice of the UI scale, the whole number of output pixels to one UI unit. Pure functions.
#pragma once

inline constexpr int UI_SCALE_MIN = 1;
inline constexpr int UI_SCALE_MAX = 8;

int ui_scale_clamp(int n);

// The command line's scale, else the configured one, each clamped and 0 or less meaning "not given"; else the
// display scale rounded half up (an invalid or small one counts as 1).
int ui_scale_pick(float display_scale, int configured, int from_args);
