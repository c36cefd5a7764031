// audio: the mixer. Silent yet; the engine already starts and stops it.
#pragma once

bool audio_setup(); // false: reported
void audio_cleanup();
