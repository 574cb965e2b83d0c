#include "frame/buffers.h"

namespace fk {
char g_methodWork[kMethodMax + 1 + 2];
char g_fieldText[kFieldScratch];
}  // namespace fk
