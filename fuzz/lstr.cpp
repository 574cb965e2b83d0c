// Fuzz target: the general string utilities (copy, compare, search, blanks,
// counts, removal) on exactly-sized heap blocks. An input is a number, a
// character and two texts (see support/input.h); every routine runs on them.
#include "strings/lstr.h"
#include "support/input.h"

using namespace fuzz;

void strings(Input& in) {
    const int32_t n = in.signedNumber(), width = std::min(n, 4096);
    const char c = in.ch();
    const std::string a = in.text(), b = in.text();
    // lstrncpy's buffer holds n characters, or the text and its terminator when it is shorter.
    const size_t copied = n <= 0 ? 0 : std::min<size_t>(static_cast<size_t>(n), a.size());
    Heap ha(a), hb(b), d(std::string(), n <= 0 ? 1 : std::min<size_t>(static_cast<size_t>(n), a.size() + 1), 'x');
    check(lstrncpy(d.get(), ha.get(), n) == d.get() && memcmp(d.get(), a.data(), copied) == 0, "lstrncpy", a);
    check(lstrncmp(ha.get(), hb.get(), n) == -lstrncmp(hb.get(), ha.get(), n) &&
              lstricmp(ha.get(), hb.get()) == -lstricmp(hb.get(), ha.get()) &&
              lstrnicmp(ha.get(), hb.get(), INT32_MAX) == lstricmp(ha.get(), hb.get()),
          "comparisons are antisymmetric, lstrnicmp without a limit is lstricmp", a + "|" + b);
    check(lstrchr(ha.get(), c) == (c == 0 ? nullptr : memchr(ha.get(), c, a.size())), "lstrchr", a);
    check(lstrcount(ha.get(), c) == (c == 0 ? 0 : std::count(a.begin(), a.end(), c)), "lstrcount", a);
    (void)lstrdigits(ha.get());

    Heap removed(a), left(a), clipped(a), preclipped(a), padded(a, std::max<int64_t>(a.size(), width) + 1);
    const char* found = lstristr(ha.get(), hb.get());
    const char* r = lstrremovestr(removed.get(), hb.get());
    check(found == nullptr ? r == nullptr && removed.str() == a
                           : lstrnicmp(found, hb.get(), static_cast<int32_t>(b.size())) == 0 &&
                                 removed.str() == a.substr(0, found - ha.get()) + (found + b.size()),
          "lstrremovestr removes what lstristr finds", a + "|" + b);
    check(lstrremove(left.get(), hb.get()) == left.get() && left.str().find_first_of(b) == std::string::npos,
          "lstrremove removes the set", a + "|" + b);
    lstrpad(padded.get(), width);
    check(padded.str() == a + std::string(std::max<int64_t>(width - static_cast<int64_t>(a.size()), 0), ' '),
          "lstrpad fills to width", a);
    const std::string clip = lstrclip(clipped.get()), rest = lstrpreclip(preclipped.get());
    check(a.compare(0, clip.size(), clip) == 0 && (clip.empty() || clip.back() != ' ') &&
              a.find_first_not_of(' ', clip.size()) == std::string::npos,
          "lstrclip removes trailing blanks", a);
    const size_t cut = a.size() - rest.size();
    check(a.compare(cut, std::string::npos, rest) == 0 && (rest.empty() || rest[0] != ' ') &&
              a.find_first_not_of(' ') >= cut,
          "lstrpreclip removes leading blanks", a);
}

FK_FUZZ_ROUTINES(strings)
