// Fuzz target: reading and editing method strings (twGetMethodParam,
// twAddMethodParam, twRemoveMethodParam). An input is a routine byte (unused:
// every routine runs), an option byte, the keyword or item, and the method
// string. Buffers are exactly as large as the routines' contracts say: the
// method string and its two spare bytes for reading, an argument buffer as
// long as the longest argument the searched text can hold, room for the
// result when adding.

#include "frame/method.h"
#include "support/input.h"

using namespace fuzz;

void method(Input& in) {
    in.byte();  // the routine byte of the seeds: every routine runs
    const uint8_t options = in.byte();
    const std::string item = in.text(), method = in.text();
    // Only the text up to the ")" of the first ");" is searched; the copy starts one behind the keyword.
    const size_t semi = method.find(");"), searched = semi == std::string::npos ? method.size() : semi + 1;
    Heap m(method, method.size() + 3, static_cast<char>(options | 1)), i(item);
    Heap a(std::string(), searched > item.size() ? searched - item.size() : 1, 'z');
    const int32_t found = twGetMethodParam(m.get(), i.get(), (options & 2) != 0 ? nullptr : a.get());
    check(memcmp(m.get(), method.c_str(), method.size() + 1) == 0 && (found == 0 || found == 1),
          "twGetMethodParam restores the text", method);
    check(a.terminated() && (found == 1 || a.str().empty()), "the argument is terminated, or empty", method);

    Heap r(method);
    const int32_t removed = twRemoveMethodParam(r.get(), i.get());
    const std::string base = r.str();
    check(removed == 1 ? base.size() < method.size() : removed == 0 && base == method, "a removal shortens", method);
    // The caller's buffer holds the result, and not a byte more.
    Heap added(method, std::max(method.size(), base.size() + item.size()) + 1);
    const int32_t result = twAddMethodParam(added.get(), i.get());
    check(item.empty() ? result == 0 && added.str() == method : result == 1 && added.str() == base + item,
          "twAddMethodParam replaces and appends", method + "|" + item);
    check(i.str() == item, "the item is left as it was", item);
}

FK_FUZZ_ROUTINE(method)
