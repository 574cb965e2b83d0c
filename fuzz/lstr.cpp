// Fuzz target: the general string utilities (copy, compare, search, blanks,
// counts, removal). The first byte picks the routine; numbers and texts follow
// (see support/input.h). Every text sits in an exactly-sized heap block.
#include <algorithm>
#include <string>

#include "strings/lstr.h"
#include "support/input.h"

namespace {

using namespace fuzz;

// What a comparison must answer: 1 when s2 ended first, -1 when s1 did, else
// the order of the first differing characters as signed bytes.
int32_t expectedCompare(const std::string& a, const std::string& b, int64_t n) {
    for (int64_t i = 0; i < n; ++i) {
        const char x = i < static_cast<int64_t>(a.size()) ? a[i] : 0;
        const char y = i < static_cast<int64_t>(b.size()) ? b[i] : 0;
        if (x == y && x != 0) continue;
        if (x == 0 || y == 0) return x == y ? 0 : x == 0 ? -1 : 1;
        return static_cast<signed char>(y) > static_cast<signed char>(x) ? -1 : 1;
    }
    return 0;
}

void copy(Input& in) {
    const int32_t n = in.number();
    const std::string src = in.text();
    Heap s(src);
    // The caller's buffer holds what is copied: n characters, or the text
    // and its terminator when it is shorter.
    const size_t copied = n <= 0 ? 0 : std::min<size_t>(static_cast<size_t>(n), src.size());
    Heap d(std::string(), n <= 0 ? 1 : std::min<size_t>(static_cast<size_t>(n), src.size() + 1), 'x');
    check(lstrncpy(d.get(), s.get(), n) == d.get(), "lstrncpy returns dst");
    check(memcmp(d.get(), src.data(), copied) == 0, "lstrncpy copies the text", src);
    if (copied < static_cast<size_t>(std::max(n, 1))) check(d.get()[copied] == 0, "lstrncpy terminates", src);
}

void compare(Input& in) {
    const int32_t n = in.number();
    const std::string a = in.text(), b = in.text();
    Heap ha(a), hb(b);
    const int32_t ncmp = lstrncmp(ha.get(), hb.get(), n);
    const int32_t icmp = lstricmp(ha.get(), hb.get());
    check(ncmp == expectedCompare(a, b, n), "lstrncmp order", a + "|" + b);
    check(lstrnicmp(ha.get(), hb.get(), n) == expectedCompare(upper(a), upper(b), n), "lstrnicmp order", a + "|" + b);
    check(icmp == expectedCompare(upper(a), upper(b), INT64_MAX), "lstricmp order", a + "|" + b);
    check(lstrncmp(hb.get(), ha.get(), n) == -ncmp && lstricmp(hb.get(), ha.get()) == -icmp, "antisymmetric", a);
    check(lstricmp(ha.get(), ha.get()) == 0, "lstricmp reflexive", a);
}

void find(Input& in) {
    const char c = in.ch();
    const std::string text = in.text(), pattern = in.text();
    Heap t(text), p(pattern), r(text);
    const char* want = c == 0 ? nullptr : static_cast<const char*>(memchr(t.get(), c, text.size()));
    check(lstrchr(t.get(), c) == want, "lstrchr finds the first occurrence", text);

    const size_t pos = text.empty() ? std::string::npos : upper(text).find(upper(pattern));
    check(lstristr(t.get(), p.get()) == (pos == std::string::npos ? nullptr : t.get() + pos),
          "lstristr finds the first match", text + "|" + pattern);
    char* removed = lstrremovestr(r.get(), p.get());
    const std::string left = pos == std::string::npos ? text : text.substr(0, pos) + text.substr(pos + pattern.size());
    check(removed == (pos == std::string::npos ? nullptr : r.get()) && r.str() == left,
          "lstrremovestr removes the first match", text + "|" + pattern);
}

void blanks(Input& in) {
    int32_t width = in.signedNumber();
    const std::string text = in.text();
    const int64_t len = static_cast<int64_t>(text.size());
    if (width > len + 4096) width = static_cast<int32_t>(len + 4096);  // the caller's buffer holds width characters
    const size_t padded = static_cast<size_t>(std::max<int64_t>(len, width));
    Heap p(text, padded + 1), c(text), l(text);
    lstrpad(p.get(), width);
    check(p.str() == text + std::string(padded - text.size(), ' '), "lstrpad fills to width", text);
    check(lstrclip(c.get()) == c.get() && c.str() == clip(text), "lstrclip removes trailing blanks", text);
    check(lstrpreclip(l.get()) == l.get() && l.str() == preclip(text), "lstrpreclip removes leading blanks", text);
}

void counts(Input& in) {
    const char c = in.ch();
    const std::string set = in.text(), text = in.text();
    Heap t(text), s(set);
    check(lstrcount(t.get(), c) == (c == 0 ? 0 : std::count(text.begin(), text.end(), c)), "lstrcount", text);
    check(lstrdigits(t.get()) == std::count_if(text.begin(), text.end(), isDigit), "lstrdigits", text);
    std::string want;
    for (char x : text)
        if (set.find(x) == std::string::npos) want.push_back(x);
    check(lstrremove(t.get(), s.get()) == t.get() && t.str() == want, "lstrremove removes the set", text + "|" + set);
}

}  // namespace

FK_FUZZ_ROUTINES(copy, compare, find, blanks, counts)
