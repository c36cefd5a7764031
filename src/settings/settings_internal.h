// settings_internal: the rebindable actions, for the settings menu.
#pragma once

#include "lumarind/settings/settings.h"

int _settings_actions(const SettingsAction **actions); // as passed to settings_setup; returns their number
const char *_settings_label(int action);               // "" for other actions
