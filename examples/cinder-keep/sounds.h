// sounds: every effect of the game, made of a preset and a seed, and the music of the screens.
#pragma once

enum Sound {
    SOUND_JUMP,
    SOUND_LAND,
    SOUND_ROLL,
    SOUND_SWING,
    SOUND_FLAME,
    SOUND_STRUCK, // a foe
    SOUND_FELLED,
    SOUND_HURT,
    SOUND_DIE,
    SOUND_EMBER,
    SOUND_HEART,
    SOUND_KEY,
    SOUND_DOOR,
    SOUND_LOCKED,
    SOUND_CHECKPOINT,
    SOUND_SPIT,
    SOUND_HOP,
    SOUND_WON,
    SOUND_MENU_MOVE,
    SOUND_MENU_TAKE,
    SOUND_MENU_BACK,
    SOUND_COUNT,
};

bool sounds_setup();                          // makes what is not made yet. False: reported
void sounds_play(Sound sound, float pan = 0); // -1 left to 1 right
bool sounds_music(const char *name);          // goes on when it plays already; null or "": silence. False: reported
