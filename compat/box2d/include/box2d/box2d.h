// Stands where version 3's header would, for code that is written against that.
#pragma once

#include "version3.h"

using namespace box2d_version3;
