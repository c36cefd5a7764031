// fireknight: animation set of the player's character, the fire knight.
#pragma once

#include "lumarind/toolkit/animation.h"

// Clip indices.
enum FireknightClip {
    FIREKNIGHT_IDLE,
    FIREKNIGHT_RUN,
    FIREKNIGHT_J_UP,
    FIREKNIGHT_J_DOWN,
    FIREKNIGHT_JUMP,
    FIREKNIGHT_AIR_ATK,
    FIREKNIGHT_ROLL,
    FIREKNIGHT_1_ATK,
    FIREKNIGHT_2_ATK,
    FIREKNIGHT_3_ATK,
    FIREKNIGHT_SP_ATK,
    FIREKNIGHT_DEFEND,
    FIREKNIGHT_TAKE_HIT,
    FIREKNIGHT_DEATH,
    FIREKNIGHT_CLIP_COUNT,
};

extern const AnimationSet fireknight_animations;
