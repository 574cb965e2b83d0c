// Class registration hooks that live with their control modules.
#pragma once

#include <windows.h>

namespace fk {
// gxColor32: the three channel brushes, created before the class registers.
void CreateColorBrushes();
// gxCurrency32: the [intl] currency defaults, read after the class registers.
void ReadCurrencyDefaults();
}  // namespace fk
