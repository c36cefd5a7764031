// Fault injection: makes calls of library functions in this project's code fail, among them its allocations. Calls
// inside libraries never fail. Leaks after a fault are detected by the leak sanitizer.
#pragma once

#include "support/log_capture.h"

#include <functional>
#include <string>

// Runs `run` again and again, each time with another call failing: the first two of each place in the code that calls.
// Returns a text with, for each, its name, what `run` returned, and the warnings and errors; equal ones once, and those
// without a problem on one line. Clears `log`.
std::string with_failing_calls(LogCapture *log, const std::function<bool()> &run);

// For n = 1, 2, 3, ... runs `setup` with its n-th own allocation failing, once alone and once with all later ones,
// until it makes fewer than n. Each failure must be logged as an error, and after `cleanup` the next setup must
// succeed. Own allocations are calls of SDL_malloc and related functions (including SDL_strdup and SDL_asprintf).
// Clears `log`.
void expect_allocation_faults_survived(
    LogCapture *log, const std::function<bool()> &setup, const std::function<void()> &cleanup);

// --- direct use ---
void allocation_faults_arm(int nth, bool and_all_after);
void call_faults_arm(int nth); // the n-th call of any kind fails
int call_faults_disarm();      // after either; returns the number of failed calls

bool call_fails(const char *name, const void *place); // asked by the wrappers; the place is their return address
