// Fuzz target: reading and editing method strings (twGetMethodParam,
// twAddMethodParam, twRemoveMethodParam). An input is a routine byte, an
// option byte, the keyword or item, and the method string. Buffers are exactly
// as large as the routines' contracts say: the method string and its two spare
// bytes for reading, room for the result when adding, and an argument buffer
// as long as the longest argument the searched text can hold.
#include <algorithm>
#include <string>

#include "frame/method.h"
#include "support/input.h"

namespace {

using namespace fuzz;

// Case-insensitive search the way keywords match: nothing in an empty text.
size_t findKey(const std::string& text, const std::string& key, size_t from = 0) {
    if (text.empty()) return std::string::npos;
    return upper(text).find(upper(key), from);
}

size_t occurrences(const std::string& text, const std::string& key) {
    size_t n = 0;
    for (size_t at = findKey(text, key); at != std::string::npos; at = findKey(text, key, at + 1)) ++n;
    return n;
}

// What twGetMethodParam searches: the text up to the ")" of the first ");".
std::string searched(const std::string& method) {
    const size_t semi = method.find(");");
    return semi == std::string::npos ? method : method.substr(0, semi + 1);
}

// Reads a method string with the two spare bytes behind its terminator filled
// with spare. Checks what holds for any input and returns the result; the
// argument goes to *argument when it is not null.
int32_t get(const std::string& method, const std::string& keyword, char spare, bool withArgument,
            std::string* argument) {
    Heap m(method, method.size() + 3, spare);
    Heap k(keyword);
    const std::string cut = searched(method);
    // The copy starts one character behind the keyword and stays in the text.
    Heap a(std::string(), cut.size() > keyword.size() ? cut.size() - keyword.size() : 1, 'z');
    const int32_t found = twGetMethodParam(m.get(), k.get(), withArgument ? a.get() : nullptr);

    check(found == (findKey(cut, keyword) != std::string::npos ? 1 : 0), "twGetMethodParam finds the keyword",
          method + "|" + keyword);
    check(memcmp(m.get(), method.c_str(), method.size() + 1) == 0, "twGetMethodParam restores the text", method);
    for (size_t i = method.size() + 1; i < method.size() + 3; ++i)
        check(m.get()[i] == spare || m.get()[i] == 0, "twGetMethodParam writes only zeros behind the text", method);
    check(!withArgument || (a.terminated() && (found == 1 || a.str().empty())),
          "twGetMethodParam terminates or empties the argument", method);
    if (argument != nullptr) *argument = a.str();
    return found;
}

// An argument that nests well: no ")" closes more than was opened, all closed.
bool balanced(const std::string& s) {
    int depth = 0;
    for (char c : s)
        if (c == '(')
            ++depth;
        else if (c == ')' && --depth < 0)
            return false;
    return depth == 0;
}

void read(Input& in, uint8_t options) {
    const std::string keyword = in.text(), method = in.text();
    std::string argument;
    const bool withArgument = (options & 1) == 0;
    const int32_t found = get(method, keyword, static_cast<char>(options | 1), withArgument, &argument);

    // @KEY(argument): the argument comes back without its parentheses.
    const std::string cut = searched(method);
    const size_t at = findKey(cut, keyword);
    if (found && withArgument && at + keyword.size() < cut.size() && cut[at + keyword.size()] == '(') {
        const std::string tail = cut.substr(at + keyword.size() + 1);
        std::string want;
        int depth = 0;
        for (char c : tail) {
            if (c == ')' && depth == 0) break;
            depth += c == '(' ? 1 : c == ')' ? -1 : 0;
            want.push_back(c);
        }
        check(argument == want, "twGetMethodParam copies the argument", method + "|" + keyword);
    }
}

// Runs twRemoveMethodParam on an exactly-sized copy.
std::string removed(const std::string& method, const std::string& item, int32_t* result) {
    Heap m(method), i(item);
    *result = twRemoveMethodParam(m.get(), i.get());
    check(i.str() == item, "the item is left as it was", item);
    return m.str();
}

void remove(Input& in, uint8_t options) {
    const std::string item = in.text(), method = in.text();
    int32_t result = 0;
    const std::string after = removed(method, item, &result);

    const std::string key = item.substr(0, item.find('('));
    const size_t at = item.empty() ? std::string::npos : findKey(method, key);
    check(result == (at != std::string::npos ? 1 : 0), "twRemoveMethodParam finds the keyword", method + "|" + item);
    if (result == 0) return check(after == method, "twRemoveMethodParam without a match changes nothing", method);
    check(after.size() < method.size() && method.compare(0, at, after, 0, at) == 0 &&
              method.compare(method.size() - (after.size() - at), std::string::npos, after, at) == 0,
          "twRemoveMethodParam removes one piece at the keyword", method + "|" + item);

    // A keyword that occurred once is gone when the removal ends at the next
    // item or the end of the text.
    const std::string rest = after.substr(at);
    if (!key.empty() && key[0] == '@' && key.find('@', 1) == std::string::npos && occurrences(method, key) == 1 &&
        (rest.empty() || rest[0] == '@')) {
        check(get(after, key, static_cast<char>(options | 1), true, nullptr) == 0,
              "twGetMethodParam finds nothing after the removal", method + "|" + item);
    }
}

void add(Input& in, uint8_t options) {
    const std::string item = in.text(), method = in.text();
    int32_t removedResult = 0;
    const std::string base = removed(method, item, &removedResult);

    // The caller's buffer holds the result, and not a byte more.
    Heap m(method, std::max(method.size(), base.size() + item.size()) + 1), i(item);
    const int32_t result = twAddMethodParam(m.get(), i.get());
    check(i.str() == item, "the item is left as it was", item);
    if (item.empty()) return check(result == 0 && m.str() == method, "an empty item changes nothing", method);
    const std::string after = m.str();
    check(result == 1 && after == base + item, "twAddMethodParam replaces and appends", method + "|" + item);

    // The appended @KEY(argument) is what a read then finds, unless an
    // earlier item still matches the keyword or a ");" hides the end.
    const size_t open = item.find('(');
    const std::string key = item.substr(0, open);
    if (key.empty() || after.find(");") != std::string::npos || findKey(after, key) != base.size()) return;
    std::string want;
    if (open != std::string::npos) {
        if (item.back() != ')' || !balanced(item.substr(open + 1, item.size() - open - 2))) return;
        want = item.substr(open + 1, item.size() - open - 2);
    }
    std::string argument;
    check(get(after, key, static_cast<char>(options | 1), true, &argument) == 1 && argument == want,
          "twGetMethodParam finds the added argument", after + "|" + key);
}

}  // namespace

// After the routine's byte, each reads its options byte.
FK_FUZZ_ROUTINES([](Input& in) { read(in, in.byte()); }, [](Input& in) { remove(in, in.byte()); },
                 [](Input& in) { add(in, in.byte()); })
