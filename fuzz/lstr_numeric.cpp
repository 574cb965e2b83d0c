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

using fuzz::check;
using fuzz::Heap;
using fuzz::Input;

constexpr size_t kMax = 159;  // characters the work buffer holds

bool isDigit(char c) { return c >= '0' && c <= '9'; }

std::string clip(std::string s) {
    const size_t last = s.find_last_not_of(' ');
    return last == std::string::npos ? std::string() : s.substr(0, last + 1);
}

std::string preclip(std::string s) {
    const size_t first = s.find_first_not_of(' ');
    return first == std::string::npos ? std::string() : s.substr(first);
}

std::string without(const std::string& s, char c) {
    std::string out;
    for (char x : s)
        if (x != c) out.push_back(x);
    return out;
}

void right(Input& in) {
    int32_t width = in.signedNumber();
    const std::string text = in.rest();
    const size_t room = std::max(text.size(), static_cast<size_t>(std::clamp<int32_t>(width, 0, kMax)));
    Heap t(text, room + 1);
    check(lstrright(t.get(), width) == t.get(), "lstrright returns text");
    const std::string body = clip(text).substr(0, kMax);
    const size_t w = static_cast<size_t>(std::clamp<int32_t>(width, 0, kMax));
    const std::string want = w > body.size() ? std::string(w - body.size(), ' ') + body : body;
    check(t.str() == want, "lstrright aligns to width", text);
}

void dropKeepWidth(Input& in, bool decimal) {
    const char c = in.ch();
    const std::string text = in.rest();
    Heap t(text);
    check((decimal ? lstrnodecp(t.get(), c) : lstrnocomma(t.get(), c)) == t.get(), "returns text");
    const std::string cut = text.substr(0, kMax);
    const std::string kept = c == 0 ? cut : without(cut, c);
    check(t.str() == std::string(cut.size() - kept.size(), ' ') + kept,
          decimal ? "lstrnodecp keeps the length" : "lstrnocomma keeps the length", text);
}

void comma(Input& in) {
    const char sep = in.ch();
    const char dp = in.ch();
    const std::string text = in.rest();
    // lstrcomma first aligns to the length plus three.
    const size_t room = std::max(text.size(), std::min(text.size() + 3, kMax));
    Heap t(text, room + 1);
    check(lstrcomma(t.get(), sep, dp) == t.get(), "lstrcomma returns text");
    check(t.terminated(), "lstrcomma terminates");
    const std::string got = t.str();

    // Up to twelve digits fit in the room of three blanks: grouping then only
    // adds separators between digits and loses nothing.
    const bool plainSep = sep != 0 && sep != ' ' && !isDigit(sep);
    const size_t digits = std::count_if(text.begin(), text.end(), isDigit);
    if (!plainSep || text.size() + 3 > kMax || digits > 12) return;
    check(without(got, sep) == preclip(without(clip(text), sep)), "lstrcomma loses nothing", text);
    for (size_t i = 0; i < got.size(); ++i) {
        if (got[i] == sep) {
            check(i > 0 && i + 1 < got.size() && isDigit(got[i - 1]) && isDigit(got[i + 1]),
                  "lstrcomma puts separators between digits", text + " -> " + got);
        }
    }
    // (A separator removed at the end may leave a blank there, which counts
    // as a fraction character the first time and is clipped the second.)
    if (clip(got) != got) return;
    Heap again(got, std::max(got.size(), std::min(got.size() + 3, kMax)) + 1);
    lstrcomma(again.get(), sep, dp);
    check(again.str() == got, "lstrcomma regroups to the same text", got);
}

void decp(Input& in) {
    const int32_t places = in.signedNumber();
    const char dp = in.ch();
    const std::string text = in.rest();
    const bool hasDp = dp != 0 && text.find(dp) != std::string::npos;
    // Without a decimal character the text is aligned to its length plus one.
    const size_t room = hasDp ? text.size() : std::max(text.size(), std::min(text.size() + 1, kMax));
    Heap t(text, room + 1);
    check(lstrdecp(t.get(), places, dp) == t.get(), "lstrdecp returns text");
    check(t.terminated(), "lstrdecp terminates");
    if (dp == 0) return;
    const std::string got = t.str();
    const size_t width = hasDp ? std::min(text.size(), kMax) : std::min(text.size() + 1, kMax);
    check(got.size() == width, "lstrdecp keeps the width", text);
    // (A blank or "-" as decimal character may take the sign.)
    const bool plainDp = dp != ' ' && dp != '-' && !(dp >= '1' && dp <= '9');
    const int64_t at = static_cast<int64_t>(width) - places - 1;
    if (plainDp && at >= 1 && at < static_cast<int64_t>(width))
        check(got[static_cast<size_t>(at)] == dp, "lstrdecp places the decimal character", text);

    // Without signs the significant digits keep their order and number.
    if (!plainDp || text.find('-') != std::string::npos || text.size() + 1 > kMax) return;
    auto significant = [](const std::string& s) {
        std::string out;
        for (char c : s)
            if (c >= '1' && c <= '9') out.push_back(c);
        return out;
    };
    check(significant(got) == significant(text), "lstrdecp keeps the digits", text + " -> " + got);
}

void minus(Input& in) {
    const std::string text = in.rest();
    Heap t(text);
    lstrminus(t.get());
    const std::string once = t.str();
    check(once.size() == text.size(), "lstrminus keeps the length", text);
    // A right-aligned number (a leading blank, no sign yet) toggles back.
    if (!text.empty() && text[0] == ' ' && text.find('-') == std::string::npos) {
        lstrminus(t.get());
        check(t.str() == text, "lstrminus toggles back", text);
    }
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

}  // namespace

FK_FUZZ_ROUTINES(
    right, [](Input& in) { dropKeepWidth(in, false); }, [](Input& in) { dropKeepWidth(in, true); }, comma, decp, minus,
    field)
