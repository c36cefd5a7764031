#include "lumarind/engine/menu_layout.h"

int menu_layout_rows(float available_height, float row_height) {
    const int rows = static_cast<int>(available_height / row_height);
    return rows < 1 ? 1 : rows;
}

int menu_layout_step_column(int index, int count, int rows, int delta) {
    const int column = index / rows + delta;
    const int last_column = (count - 1) / rows;
    if (column < 0 || column > last_column) return index;
    const int target = column * rows + index % rows;
    return target < count ? target : count - 1;
}
