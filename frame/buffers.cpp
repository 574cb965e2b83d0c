#include "frame/buffers.h"

namespace fk {
char g_fieldText[kFieldScratch];
}  // namespace fk
