// audio_demo: a list of all kinds of sound in the audio module: music, volumes, generated effects and effect files.
#pragma once

bool audio_demo_setup();                 // loads or generates all sounds and starts the music
void audio_demo_fixed_update(double dt); // dt in seconds
void audio_demo_tick();
void audio_demo_cleanup(); // fades the music out
