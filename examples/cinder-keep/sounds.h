// sounds: the game's sound effects, generated from a preset and a seed, and the music of each screen.
#pragma once

enum Sound {
    SOUND_JUMP,
    SOUND_LAND,
    SOUND_ROLL,
    SOUND_SWING,
    SOUND_FLAME,
    SOUND_HIT, // an enemy was hit
    SOUND_DEFEATED,
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

// Called by each screen's setup: generates the effects and starts the music "assets/music/NAME.ogg". Reports errors.
bool sounds_setup(const char *music_name);
void sounds_cleanup();
void sounds_play(Sound sound);
