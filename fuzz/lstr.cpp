// Fuzz target: the general string utilities (copy, compare, search, blanks,
// counts, removal). The first byte picks the routine; numbers and texts follow
// (see support/input.h). Every text sits in an exactly-sized heap block.
#include <ctype.h>

#include <algorithm>
#include <string>

#include "strings/lstr.h"
#include "support/input.h"

namespace {

using fuzz::check;
using fuzz::Heap;
using fuzz::Input;
using fuzz::upper;

// What a comparison must answer: 1 when s2 ended first, -1 when s1 did, else
// the order of the first differing characters as signed bytes.
int32_t expectedCompare(const std::string& a, const std::string& b, int64_t n) {
    for (int64_t i = 0; i < n; ++i) {
        const char x = i < static_cast<int64_t>(a.size()) ? a[i] : 0;
        const char y = i < static_cast<int64_t>(b.size()) ? b[i] : 0;
        if (x == 0 && y == 0) return 0;
        if (y == 0) return 1;
        if (x == 0) return -1;
        if (x != y) return static_cast<signed char>(y) > static_cast<signed char>(x) ? -1 : 1;
    }
    return 0;
}

void copy(Input& in) {
    const int32_t n = in.number();
    const std::string src = in.rest();
    Heap s(src);
    // The caller's buffer holds what is copied: n characters, or the text
    // and its terminator when it is shorter.
    const size_t need = n <= 0 ? 1 : std::min<size_t>(static_cast<size_t>(n), src.size() + 1);
    Heap d(std::string(), need, 'x');
    check(lstrncpy(d.get(), s.get(), n) == d.get(), "lstrncpy returns dst");
    if (n <= 0) {
        check(d.get()[0] == 0, "lstrncpy copies nothing for n <= 0");
        return;
    }
    const size_t copied = std::min<size_t>(static_cast<size_t>(n), src.size());
    check(memcmp(d.get(), src.data(), copied) == 0, "lstrncpy copies the text", src);
    if (copied < static_cast<size_t>(n)) check(d.get()[copied] == 0, "lstrncpy terminates a short copy", src);
}

void compare(Input& in) {
    const int32_t n = in.number();
    const std::string a = in.text();
    const std::string b = in.rest();
    Heap ha(a);
    Heap hb(b);
    const int32_t ncmp = lstrncmp(ha.get(), hb.get(), n);
    const int32_t nicmp = lstrnicmp(ha.get(), hb.get(), n);
    const int32_t icmp = lstricmp(ha.get(), hb.get());
    check(ncmp == expectedCompare(a, b, n), "lstrncmp order", a + "|" + b);
    check(nicmp == expectedCompare(upper(a), upper(b), n), "lstrnicmp order", a + "|" + b);
    check(icmp == expectedCompare(upper(a), upper(b), INT64_MAX), "lstricmp order", a + "|" + b);
    check(lstrncmp(hb.get(), ha.get(), n) == -ncmp, "lstrncmp antisymmetric", a + "|" + b);
    check(lstricmp(hb.get(), ha.get()) == -icmp, "lstricmp antisymmetric", a + "|" + b);
    check(lstricmp(ha.get(), ha.get()) == 0, "lstricmp reflexive", a);
}

void find(Input& in) {
    const char c = in.ch();
    const std::string text = in.text();
    const std::string pattern = in.rest();
    Heap t(text);
    Heap p(pattern);

    const char* got = lstrchr(t.get(), c);
    const char* want = c == 0 ? nullptr : static_cast<const char*>(memchr(t.get(), c, text.size()));
    check(got == want, "lstrchr finds the first occurrence", text);

    char* at = lstristr(t.get(), p.get());
    const std::string ut = upper(text);
    const size_t pos = text.empty() ? std::string::npos : ut.find(upper(pattern));
    check(at == (pos == std::string::npos ? nullptr : t.get() + pos), "lstristr finds the first match",
          text + "|" + pattern);

    Heap r(text);
    char* removed = lstrremovestr(r.get(), p.get());
    if (pos == std::string::npos) {
        check(removed == nullptr && r.str() == text, "lstrremovestr without a match", text);
    } else {
        check(removed == r.get(), "lstrremovestr returns text");
        check(r.str() == text.substr(0, pos) + text.substr(pos + pattern.size()),
              "lstrremovestr removes the first match", text + "|" + pattern);
    }
}

void blanks(Input& in) {
    int32_t width = in.signedNumber();
    const std::string text = in.rest();
    const int64_t len = static_cast<int64_t>(text.size());
    if (width > len + 4096) width = static_cast<int32_t>(len + 4096);  // the caller's buffer holds width characters
    const size_t padded = static_cast<size_t>(std::max<int64_t>(len, width));
    Heap p(text, padded + 1);
    lstrpad(p.get(), width);
    check(p.str() == text + std::string(padded - text.size(), ' '), "lstrpad fills to width", text);

    Heap c(text);
    check(lstrclip(c.get()) == c.get(), "lstrclip returns text");
    const size_t last = text.find_last_not_of(' ');
    check(c.str() == (last == std::string::npos ? std::string() : text.substr(0, last + 1)),
          "lstrclip removes trailing blanks", text);

    Heap l(text);
    check(lstrpreclip(l.get()) == l.get(), "lstrpreclip returns text");
    const size_t first = text.find_first_not_of(' ');
    check(l.str() == (first == std::string::npos ? std::string() : text.substr(first)),
          "lstrpreclip removes leading blanks", text);
}

void counts(Input& in) {
    const char c = in.ch();
    const std::string set = in.text();
    const std::string text = in.rest();
    Heap t(text);
    check(lstrcount(t.get(), c) == (c == 0 ? 0 : std::count(text.begin(), text.end(), c)), "lstrcount", text);
    check(lstrdigits(t.get()) == std::count_if(text.begin(), text.end(), [](char x) { return x >= '0' && x <= '9'; }),
          "lstrdigits", text);

    Heap s(set);
    check(lstrremove(t.get(), s.get()) == t.get(), "lstrremove returns text");
    std::string want;
    for (char x : text)
        if (set.find(x) == std::string::npos) want.push_back(x);
    check(t.str() == want, "lstrremove removes the set", text + "|" + set);
}

}  // namespace

FK_FUZZ_ROUTINES(copy, compare, find, blanks, counts)
