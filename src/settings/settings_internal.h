// What the settings' menu asks of the settings.
#pragma once

#include "lumarind/settings/settings.h"

int _settings_actions(const SettingsAction **actions); // those of the setup; their number
const char *_settings_label(int action);               // "" for one that is not among them
