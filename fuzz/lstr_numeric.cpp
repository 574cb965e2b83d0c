// Fuzz target: the numeric string utilities that work through the shared
// 160-byte work buffer (lstrright, lstrnocomma, lstrnodecp, lstrcomma,
// lstrdecp, lstrminus), one at a time and in runs on one field buffer. Texts
// may be longer than the 159 characters those routines take: they are cut,
// never overrun. Caller buffers are exactly as large as each routine
// documents it needs.
#include <algorithm>
#include <string>

#include "strings/lstr.h"
#include "support/input.h"

namespace {

using namespace fuzz;

constexpr size_t kMax = 159;  // characters the work buffer holds
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
        if (got[i] == sep)
            check(i > 0 && i + 1 < got.size() && isDigit(got[i - 1]) && isDigit(got[i + 1]),
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

FK_FUZZ_ROUTINES(right, dropKeepWidth<false>, dropKeepWidth<true>, comma, decp, minus, field)
