// Lets a module's own allocations fail, one by one. Own means: SDL_malloc and its relatives (SDL_strdup and
// SDL_asprintf among them) called from this project's code. Allocations the libraries make for themselves stay
// untouched, because the libraries do not survive all of theirs.
#pragma once

#include "support/log_capture.h"

#include <functional>

// For n = 1, 2, 3, ... runs `setup` with its n-th own allocation failing, once alone and once with all that follow,
// until it gets by without reaching the n-th. Each failure has to be logged as an error, `cleanup` has to leave no own
// allocation behind, and a following setup has to succeed. `log` is emptied in between.
void expect_allocation_faults_survived(
    LogCapture *log, const std::function<bool()> &setup, const std::function<void()> &cleanup);

// --- for other uses ---
void allocation_faults_install(); // before the allocations it is to know of; stays for the whole process
void allocation_faults_arm(int nth, bool and_all_after);
int allocation_faults_disarm(); // how many failed
int allocation_faults_live();   // own allocations not freed yet
