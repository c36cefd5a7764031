// text_demo: a centred line of text in a font of its own.
#pragma once

bool text_demo_setup();
void text_demo_tick();
void text_demo_cleanup();
