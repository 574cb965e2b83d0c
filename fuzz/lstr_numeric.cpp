// Fuzz target: the numeric string utilities that work through the shared
// 160-byte work buffer (lstrright, lstrnocomma, lstrnodecp, lstrcomma,
// lstrdecp, lstrminus), in runs on one text. Texts may be longer than the 159
// characters those routines take: they are cut, never overrun. Each step gets
// a buffer exactly as large as its routine documents it needs.

#include "strings/lstr.h"
#include "support/input.h"

using namespace fuzz;

constexpr size_t kMax = 159;  // characters the work buffer holds

void steps(Input& in) {
    std::string text = in.text(400);
    for (int step = 0; step < 4 && !in.empty(); ++step) {
        const uint8_t op = in.byte() % 6;
        const char c = in.ch();
        const int32_t n = in.signedNumber();
        const size_t len = text.size(), cut = std::min(len, kMax);
        // lstrright aligns to the width, lstrcomma to three more, lstrdecp to one more without c.
        size_t room = op == 0 ? std::clamp<int32_t>(n, 0, kMax) : op == 3 ? std::min(len + 3, kMax) : 0;
        if (op == 4) room = std::min(len + (c != 0 && text.find(c) != std::string::npos ? 0 : 1), kMax);
        Heap t(text, std::max(len, room) + 1);
        if (op == 0) lstrright(t.get(), n);
        if (op == 1) lstrnocomma(t.get(), c);
        if (op == 2) lstrnodecp(t.get(), c);
        if (op == 3) lstrcomma(t.get(), c, static_cast<char>(n));
        if (op == 4) lstrdecp(t.get(), n, c);
        if (op == 5) lstrminus(t.get());
        const std::string got = t.str();
        const bool dropped = got.size() == cut && (c == 0 || c == ' ' || got.find(c) == std::string::npos);
        check(t.terminated() && (op < 1 || op > 2 || dropped),
              "the result stays in its buffer; lstrnocomma and lstrnodecp remove c and keep the length", text);
        text = got;
    }
}

FK_FUZZ_ROUTINE(steps)
