// menu_layout: where the entries of a menu go that fills columns from top to bottom. Pure functions.
#pragma once

int menu_layout_rows(float available_height, float row_height); // entries to a column, at least 1

// The entry `delta` columns to the side of entry `index`, in the same row. Stays where it is beyond the first and
// last column; lands on the last entry where a short last column has no such row.
int menu_layout_step_column(int index, int count, int rows, int delta);
