// ui_scale: selection of the UI scale, the integer number of output pixels per UI unit. Pure functions.
#pragma once

inline constexpr int UI_SCALE_MIN = 1;
inline constexpr int UI_SCALE_MAX = 8;

int ui_scale_clamp(int n);

// Returns the command line's scale or else the configured one, clamped; 0 or less means "not given". Without either,
// the display scale rounded half up; an invalid one or one below 1 counts as 1.
int ui_scale_pick(float display_scale, int configured, int from_args);
