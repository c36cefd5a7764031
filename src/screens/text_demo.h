// text_demo: a line of text with a font of its own.
#pragma once

bool text_demo_setup();
void text_demo_tick();
void text_demo_cleanup();
