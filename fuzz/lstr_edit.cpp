// Fuzz target: the one-character editing routines of the entry fields
// (fk::lstrputc, fk::lstrdelc, fk::lstrinsc). An input is a start text and
// then a run of edits, the way keystrokes arrive; after each edit the text is
// compared with a plain model. Each edit gets a buffer of exactly the room the
// routine needs: one more byte when it may lengthen the text.
#include <algorithm>
#include <string>

#include "strings/lstr.h"
#include "support/input.h"

namespace {

using namespace fuzz;

constexpr size_t kMax = 159;  // characters lstrinsc's work buffer holds

// One edit on an exactly-sized copy of text, then on the model.
void edit(std::string& text, uint8_t op, char c, int32_t i) {
    const size_t len = text.size(), at = static_cast<size_t>(i);
    if (op % 3 == 0) {  // put: overwrites, or appends at the end
        const bool append = i >= 0 && at == len;
        Heap t(text, len + (append ? 2 : 1));
        const char old = fk::lstrputc(t.get(), c, i);
        if (i < 0 || at > len) return check(old == 0 && t.str() == text, "lstrputc beyond the end", text);
        check(old == (append ? 0 : text[at]), "lstrputc returns the old character", text);
        if (append)
            text.push_back(c);
        else
            text[at] = c;
        text.resize(strlen(text.c_str()));  // a 0 written ends the text
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
        if (inserts) {
            text.insert(at, 1, c);
            text.resize(std::min(strlen(text.c_str()), kMax));
        }
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

}  // namespace

FK_FUZZ_ROUTINES(edits)
