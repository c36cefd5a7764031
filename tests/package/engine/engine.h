// A game's own.
#pragma once

inline constexpr int OWN_ENGINE = 1;
