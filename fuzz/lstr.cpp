// Fuzz target: the general string utilities (copy, compare, search, blanks,
// counts, removal) on exactly-sized heap blocks. An input is a byte that picks
// a group of routines, a number, a character and two texts (see
// support/input.h).
#include "strings/lstr.h"
#include "support/input.h"

using namespace fuzz;

void strings(Input& in) {
    const uint8_t group = in.byte() % 3;
    const int32_t n = in.signedNumber(), width = std::min(n, 4096);
    const char c = in.ch();
    const std::string a = in.text(), b = in.text();
    Heap ha(a), hb(b);
    if (group == 0) {
        // lstrncpy's buffer holds n characters, or the text and its terminator when it is shorter.
        const size_t copied = n <= 0 ? 0 : std::min<size_t>(static_cast<size_t>(n), a.size());
        Heap d(std::string(), n <= 0 ? 1 : std::min<size_t>(static_cast<size_t>(n), a.size() + 1), 'x');
        check(lstrncpy(d.get(), ha.get(), n) == d.get() && memcmp(d.get(), a.data(), copied) == 0, "lstrncpy", a);
        check(lstrncmp(ha.get(), hb.get(), n) == -lstrncmp(hb.get(), ha.get(), n) &&
                  lstricmp(ha.get(), hb.get()) == -lstricmp(hb.get(), ha.get()) &&
                  lstrnicmp(ha.get(), hb.get(), INT32_MAX) == lstricmp(ha.get(), hb.get()),
              "comparisons are antisymmetric, lstrnicmp without a limit is lstricmp", a + "|" + b);
        const auto digit = [](char x) { return x >= '0' && x <= '9'; };
        check(lstrchr(ha.get(), c) == (c == 0 ? nullptr : memchr(ha.get(), c, a.size())) &&
                  lstrcount(ha.get(), c) == (c == 0 ? 0 : std::count(a.begin(), a.end(), c)) &&
                  lstrdigits(ha.get()) == std::count_if(a.begin(), a.end(), digit),
              "lstrchr, lstrcount and lstrdigits", a);
        return;
    }
    if (group == 1) {
        Heap padded(a, std::max<int64_t>(a.size(), width) + 1);
        lstrpad(padded.get(), width);
        check(padded.str() == a + std::string(std::max<int64_t>(width - static_cast<int64_t>(a.size()), 0), ' '),
              "lstrpad fills to width", a);
        // Clipped both ways, the text is what lies between its first and last non-blank.
        const size_t first = std::min(a.find_first_not_of(' '), a.size()), last = a.find_last_not_of(' ') + 1;
        check(std::string(lstrpreclip(lstrclip(ha.get()))) == a.substr(first, last - std::min(first, last)),
              "lstrclip and lstrpreclip remove the blanks", a);
        return;
    }
    Heap removed(a);
    const char* found = lstristr(ha.get(), hb.get());
    const char* r = lstrremovestr(removed.get(), hb.get());
    check((found == nullptr) == (r == nullptr) && removed.str().size() == a.size() - (found ? b.size() : 0),
          "lstrremovestr removes what lstristr finds", a + "|" + b);
    check(lstrremove(removed.get(), hb.get()) == removed.get() && removed.str().find_first_of(b) == std::string::npos,
          "lstrremove removes the set", a + "|" + b);
}

FK_FUZZ_ROUTINE(strings)
