// Fuzz target: the string utilities. The first byte picks one of three
// groups, each as many runs as the others:
// - plain: copy, compare, search, blanks, counts and removal (the next byte
//   picks the routine; numbers and texts follow);
// - edits: the one-character editing routines of the entry fields
//   (fk::lstrputc, fk::lstrdelc, fk::lstrinsc), a start text and then a run
//   of edits the way keystrokes arrive, each compared with a plain model;
// - numeric: the routines that work through the shared 160-byte work buffer
//   (lstrright, lstrnocomma, lstrnodecp, lstrcomma, lstrdecp, lstrminus), one
//   at a time and in runs on one field buffer. Texts may be longer than the
//   159 characters those routines take: they are cut, never overrun.
// Every text sits in a heap block of exactly the room the routine documents
// it needs: one more byte when it may lengthen the text.
#include <algorithm>
#include <string>

#include "strings/lstr.h"
#include "support/input.h"

namespace {

using namespace fuzz;

constexpr size_t kMax = 159;  // characters the work buffer holds

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

void plain(Input& in) { pick(in, {copy, compare, find, blanks, counts}); }

// One edit on an exactly-sized copy of text, then on the model.
void edit(std::string& text, uint8_t op, char c, int32_t i) {
    const size_t len = text.size(), at = static_cast<size_t>(i);
    if (op % 3 == 0) {  // put: overwrites, or appends at the end
        const bool append = i >= 0 && at == len;
        Heap t(text, len + (append ? 2 : 1));
        const char old = fk::lstrputc(t.get(), c, i);
        if (i < 0 || at > len) return check(old == 0 && t.str() == text, "lstrputc beyond the end", text);
        check(old == (append ? 0 : text[at]), "lstrputc returns the old character", text);
        text = (text.substr(0, at) + c + (append ? "" : text.substr(at + 1))).c_str();
        check(t.str() == text, "lstrputc overwrites or appends", text);
    } else if (op % 3 == 1) {  // delete
        Heap t(text);
        const char old = fk::lstrdelc(t.get(), i);
        if (i < 0 || at >= len) return check(old == 0 && t.str() == text, "lstrdelc beyond the end", text);
        check(old == text[at], "lstrdelc returns the removed character", text);
        text.erase(at, 1);
        check(t.str() == text, "lstrdelc removes one character", text);
    } else {  // insert: longer texts are cut to what the work buffer holds
        const size_t cut = std::min(len, kMax);
        const bool inserts = i >= 0 && at <= cut && at < kMax;
        Heap t(text, std::max(len, inserts ? std::min(cut + 1, kMax) : 0) + 1);
        check(fk::lstrinsc(t.get(), c, i) == t.get(), "lstrinsc returns text");
        if (i >= 0) text.resize(cut);
        if (inserts) text = text.insert(at, 1, c).substr(0, kMax).c_str();
        check(t.str() == text, "lstrinsc inserts", text);
    }
}

void edits(Input& in) {
    std::string text = in.text(400);
    // Runs of a few dozen keystrokes reach every state; longer ones only slow
    // the fuzzer down.
    for (int n = 0; n < 64 && !in.empty(); ++n) {
        const uint8_t op = in.byte();
        const char c = in.ch();
        edit(text, op, c, in.signedNumber());
    }
}

void right(Input& in) {
    const int32_t width = in.signedNumber();
    const std::string text = in.text();
    const size_t w = static_cast<size_t>(std::clamp<int32_t>(width, 0, kMax));
    Heap t(text, std::max(text.size(), w) + 1);
    check(lstrright(t.get(), width) == t.get(), "lstrright returns text");
    const std::string body = clip(text).substr(0, kMax);
    check(t.str() == std::string(w > body.size() ? w - body.size() : 0, ' ') + body, "lstrright aligns", text);
}

template <bool decimal>
void dropKeepWidth(Input& in) {
    const char c = in.ch();
    const std::string text = in.text();
    Heap t(text);
    check((decimal ? lstrnodecp(t.get(), c) : lstrnocomma(t.get(), c)) == t.get(), "returns text");
    const std::string cut = text.substr(0, kMax), kept = c == 0 ? cut : without(cut, c);
    check(t.str() == std::string(cut.size() - kept.size(), ' ') + kept, "lstrnocomma/lstrnodecp keep the length", text);
}

// lstrcomma first aligns to the length plus three.
std::string grouped(const std::string& text, char sep, char dp) {
    Heap t(text, std::max(text.size(), std::min(text.size() + 3, kMax)) + 1);
    check(lstrcomma(t.get(), sep, dp) == t.get() && t.terminated(), "lstrcomma returns its terminated text");
    return t.str();
}

void comma(Input& in) {
    const char sep = in.ch(), dp = in.ch();
    const std::string text = in.text();
    const std::string got = grouped(text, sep, dp);
    // Up to twelve digits fit in the room of three blanks: grouping then only
    // adds separators between digits and loses nothing.
    const bool plainSep = sep != 0 && sep != ' ' && !isDigit(sep);
    if (!plainSep || text.size() + 3 > kMax || std::count_if(text.begin(), text.end(), isDigit) > 12) return;
    check(without(got, sep) == preclip(without(clip(text), sep)), "lstrcomma loses nothing", text);
    for (size_t i = 0; i < got.size(); ++i)
        check(got[i] != sep || (i > 0 && i + 1 < got.size() && isDigit(got[i - 1]) && isDigit(got[i + 1])),
              "lstrcomma puts separators between digits", text + " -> " + got);
    // (A separator removed at the end may leave a blank there, which counts
    // as a fraction character the first time and is clipped the second.)
    if (clip(got) == got) check(grouped(got, sep, dp) == got, "lstrcomma regroups to the same text", got);
}

void decp(Input& in) {
    const int32_t places = in.signedNumber();
    const char dp = in.ch();
    const std::string text = in.text();
    const bool hasDp = dp != 0 && text.find(dp) != std::string::npos;
    // Without a decimal character the text is aligned to its length plus one.
    const size_t width = std::min(text.size() + (hasDp ? 0 : 1), kMax);
    Heap t(text, std::max(text.size(), width) + 1);
    check(lstrdecp(t.get(), places, dp) == t.get() && t.terminated(), "lstrdecp returns its terminated text");
    if (dp == 0) return;
    const std::string got = t.str();
    check(got.size() == width, "lstrdecp keeps the width", text);
    // (A blank or "-" as decimal character may take the sign.)
    const bool plainDp = dp != ' ' && dp != '-' && !(dp >= '1' && dp <= '9');
    const int64_t at = static_cast<int64_t>(width) - places - 1;
    if (plainDp && at >= 1 && at < static_cast<int64_t>(width))
        check(got[static_cast<size_t>(at)] == dp, "lstrdecp places the decimal character", text);
    // Without signs the significant digits keep their order and number.
    if (!plainDp || text.find('-') != std::string::npos || text.size() + 1 > kMax) return;
    auto significant = [](std::string s) {
        s.erase(std::remove_if(s.begin(), s.end(), [](char c) { return c < '1' || c > '9'; }), s.end());
        return s;
    };
    check(significant(got) == significant(text), "lstrdecp keeps the digits", text + " -> " + got);
}

void minus(Input& in) {
    const std::string text = in.text();
    Heap t(text);
    lstrminus(t.get());
    check(t.str().size() == text.size(), "lstrminus keeps the length", text);
    // A right-aligned number (a leading blank, no sign yet) toggles back.
    if (text.empty() || text[0] != ' ' || text.find('-') != std::string::npos) return;
    lstrminus(t.get());
    check(t.str() == text, "lstrminus toggles back", text);
}

// A field's value buffer: 160 bytes hold any text these routines take, so a
// run of them on one buffer never needs more, whatever the characters.
void field(Input& in) {
    Heap t(in.text(kMax), kMax + 1);
    for (int steps = 0; steps < 16 && !in.empty(); ++steps) {
        const uint8_t op = in.byte();
        const char c = in.ch();
        const int32_t n = in.signedNumber();
        switch (op % 7) {
        case 0: lstrright(t.get(), n); break;
        case 1: lstrnocomma(t.get(), c); break;
        case 2: lstrnodecp(t.get(), c); break;
        case 3: lstrcomma(t.get(), c, static_cast<char>(n)); break;
        case 4: lstrdecp(t.get(), n, c); break;
        case 5: lstrminus(t.get()); break;
        default: fk::lstrinsc(t.get(), c, n); break;
        }
        check(t.terminated(), "a field's value stays in its 160 bytes", t.str());
    }
}

void numeric(Input& in) { pick(in, {right, dropKeepWidth<false>, dropKeepWidth<true>, comma, decp, minus, field}); }

}  // namespace

FK_FUZZ_ROUTINES(plain, edits, numeric)
