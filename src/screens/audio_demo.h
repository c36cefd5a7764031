// audio_demo: every kind of sound the audio module plays, in a list to walk through: music, volumes, generated effects
// and effect files.
#pragma once

bool audio_demo_setup();                 // loads and generates every sound and starts the music
void audio_demo_fixed_update(double dt); // dt in seconds
void audio_demo_tick();
void audio_demo_cleanup(); // the music fades out
