// Takes the place of version 3's header.
#pragma once

#include "version3.h"

using namespace box2d_version3;
