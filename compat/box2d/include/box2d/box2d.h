// Replaces the header of Box2D 3.
#pragma once

#include "version3.h"

using namespace box2d_version3;
