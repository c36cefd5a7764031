#include "audio/audio.h"

bool audio_setup() { return true; }
void audio_cleanup() {}
