#include "diagnostics/capture.h"

void capture_request() {}
bool capture_tick() { return true; }
