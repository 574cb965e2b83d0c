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

using fuzz::check;
using fuzz::Heap;
using fuzz::Input;

constexpr size_t kMax = 159;  // characters lstrinsc's work buffer holds

// The text as C code sees it: up to the first 0 byte.
std::string cText(const std::string& s) { return s.substr(0, s.find('\0')); }

void put(std::string& text, char c, int32_t i) {
    const size_t len = text.size();
    const bool append = i >= 0 && static_cast<size_t>(i) == len;
    Heap t(text, len + (append ? 2 : 1));
    const char old = fk::lstrputc(t.get(), c, i);
    if (i < 0 || static_cast<size_t>(i) > len) {
        check(old == 0 && t.str() == text, "lstrputc beyond the end changes nothing", text);
        return;
    }
    check(old == (append ? 0 : text[i]), "lstrputc returns the old character", text);
    if (append)
        text.push_back(c);
    else
        text[i] = c;
    text = cText(text);
    check(t.str() == text, "lstrputc overwrites or appends", text);
}

void del(std::string& text, int32_t i) {
    Heap t(text);
    const char old = fk::lstrdelc(t.get(), i);
    if (i < 0 || static_cast<size_t>(i) >= text.size()) {
        check(old == 0 && t.str() == text, "lstrdelc beyond the end changes nothing", text);
        return;
    }
    check(old == text[i], "lstrdelc returns the removed character", text);
    text.erase(static_cast<size_t>(i), 1);
    check(t.str() == text, "lstrdelc removes one character", text);
}

void ins(std::string& text, char c, int32_t i) {
    const size_t cut = std::min(text.size(), kMax);
    const bool inserts = i >= 0 && static_cast<size_t>(i) <= cut && static_cast<size_t>(i) < kMax;
    Heap t(text, std::max(text.size(), inserts ? std::min(cut + 1, kMax) : 0) + 1);
    check(fk::lstrinsc(t.get(), c, i) == t.get(), "lstrinsc returns text");
    if (i >= 0) text.resize(cut);  // longer texts are cut to what the work buffer holds
    if (inserts) {
        text.insert(static_cast<size_t>(i), 1, c);
        text = cText(text.substr(0, kMax));
    }
    check(t.str() == text, "lstrinsc inserts", text);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Input in(data, size);
    std::string text = in.text(400);
    // Runs of a few dozen keystrokes reach every state; longer ones only slow
    // the fuzzer down.
    for (int edits = 0; edits < 64 && !in.empty(); ++edits) {
        const uint8_t op = in.byte();
        const char c = in.ch();
        const int32_t i = in.signedNumber();
        switch (op % 3) {
        case 0: put(text, c, i); break;
        case 1: del(text, i); break;
        default: ins(text, c, i); break;
        }
    }
    return 0;
}
