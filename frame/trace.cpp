#include "frame/trace.h"

#include <windows.h>

#include <cstdarg>
#include <cstdio>

namespace fk {

void Trace(const char* format, ...) {
    if (GetSystemMetrics(SM_DEBUG) == 0) return;
    char line[512];
    va_list args;
    va_start(args, format);
    std::vsnprintf(line, sizeof line, format, args);
    va_end(args);
    OutputDebugStringA(line);
}

}  // namespace fk
