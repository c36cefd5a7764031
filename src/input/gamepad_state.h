// gamepad_state: the active controller as recordings hold it.
#pragma once

struct ReplayPad;

void _gamepad_record(ReplayPad *pad);
