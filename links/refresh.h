// Border refresh lives with the other shared control behaviour.
#pragma once

#include "frame/control.h"
