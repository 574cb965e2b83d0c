// Fuzz target: the one-character editing routines of the entry fields
// (fk::lstrputc, fk::lstrdelc, fk::lstrinsc). An input is a start text and
// then a run of edits, the way keystrokes arrive; after each edit the text is
// compared with the same edit on a std::string. Each edit gets a buffer of
// exactly the room the routine needs: one more byte when it lengthens the text.

#include "strings/lstr.h"
#include "support/input.h"

using namespace fuzz;

constexpr size_t kMax = 159;  // characters lstrinsc's work buffer holds

void edits(Input& in) {
    std::string text = in.text(400);
    for (int n = 0; n < 64 && !in.empty(); ++n) {
        const uint8_t op = in.byte() % 3;
        const char c = in.ch();
        const int32_t i = in.signedNumber();
        const size_t len = text.size(), at = static_cast<size_t>(i);
        const bool grows = i >= 0 && (op == 0 ? at == len : op == 2 && at <= len && len < kMax);
        Heap t(text, len + (grows ? 2 : 1));
        if (op == 0 && i >= 0 && at <= len) {
            check(fk::lstrputc(t.get(), c, i) == text[at], "lstrputc returns the old character", text);
            text.resize(std::max(len, at + 1));
            text[at] = c;
        } else if (op == 1 && i >= 0 && at < len) {
            check(fk::lstrdelc(t.get(), i) == text[at], "lstrdelc returns the removed character", text);
            text.erase(at, 1);
        } else if (op == 2 && i >= 0) {  // longer texts are cut to what the work buffer holds
            fk::lstrinsc(t.get(), c, i);
            text.resize(std::min(len, kMax));
            if (at <= text.size() && at < kMax) text.insert(at, 1, c);
            text.resize(std::min(text.size(), kMax));
        } else {
            check((op == 0 ? fk::lstrputc(t.get(), c, i) : fk::lstrdelc(t.get(), i)) == 0, "beyond the end", text);
        }
        text.resize(strlen(text.c_str()));  // a 0 written ends the text
        check(t.terminated() && t.str() == text, "an edit changes the text as a string's edit does", text);
    }
}

FK_FUZZ_ROUTINE(edits)
