// Debug traces: OutputDebugStringA, only on a debugging system
// (GetSystemMetrics(SM_DEBUG) non-zero). Callers write the "FLDKIT" prefix
// into the format where the trace text has it.
#pragma once

namespace fk {
void Trace(const char* format, ...);
}
