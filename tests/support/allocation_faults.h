// Fault injection: makes a module's own allocations fail one by one. Own allocations are calls of SDL_malloc and
// related functions (including SDL_strdup and SDL_asprintf) in this project's code. Allocations inside libraries never
// fail, because the libraries do not handle that.
#pragma once

#include "support/log_capture.h"

#include <functional>

// For n = 1, 2, 3, ... runs `setup` with its n-th own allocation failing, once alone and once with all later ones,
// until it makes fewer than n. Each failure must be logged as an error, `cleanup` must free all own allocations, and
// the next setup must succeed. `log` is cleared in between.
void expect_allocation_faults_survived(
    LogCapture *log, const std::function<bool()> &setup, const std::function<void()> &cleanup);

// --- direct use ---
void allocation_faults_install(); // before the allocations to track; never uninstalled
void allocation_faults_arm(int nth, bool and_all_after);
int allocation_faults_disarm(); // returns the number of failed allocations
int allocation_faults_live();   // own allocations not yet freed
