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
    SOUND_CHECKPOINT,
    SOUND_SPIT,
    SOUND_HOP,
    SOUND_WON,
    SOUND_MENU_MOVE,
    SOUND_MENU_TAKE,
    SOUND_MENU_BACK,
    SOUND_COUNT,
};

// Makes the effects and begins the music, "assets/music/NAME.ogg", for as long as a screen lasts. False: reported.
bool sounds_setup(const char *music_name);
void sounds_cleanup();
void sounds_play(Sound sound);
