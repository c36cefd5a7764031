// menu_layout: layout of menu entries in columns, filled from top to bottom. Pure functions.
#pragma once

int menu_layout_rows(float available_height, float row_height); // entries per column, at least 1

// Returns the entry `delta` columns beside entry `index`, in the same row; `index` if there is no such column, the last
// entry if the last column is too short.
int menu_layout_step_column(int index, int count, int rows, int delta);
