// The table store: lookup tables loaded once and kept by name.
#pragma once

#include <windows.h>

#include <memory>
#include <string>
#include <vector>

namespace fk {

// The lines of a table, loading it first when needed; null when the table
// can be neither found nor read. The pointer stays valid until the table is
// freed.
const std::vector<std::string>* TableLines(const char* name, HINSTANCE instance);

// The same lines, shared: they stay with the caller when the table is freed
// (a control shows them until it loads again).
using SharedLines = std::shared_ptr<const std::vector<std::string>>;
SharedLines SharedTableLines(const char* name, HINSTANCE instance);

// A moveable global copy of line, cut to lineMax - 1 characters (when
// lineMax > 0); null when it cannot be allocated.
HGLOBAL CopyLine(const std::string& line, int lineMax);

}  // namespace fk
