// Fuzz target: the display controls' style bits as text and back
// (fk::Frame3DFlagsText/Bits, Text3D, Line, Ticker, Color). An input is a
// control byte, the style bits, an output size (0-100) and a text to read.
// The text forms write into a heap block of exactly the given size, so a
// write past it, or a missing terminator, is reported.
#include <ctype.h>
#include <string.h>

#include <algorithm>
#include <memory>
#include <string>

#include "display/text/display_flags.h"
#include "support/input.h"

namespace {

using fuzz::check;
using fuzz::Heap;
using fuzz::Input;

using TextFn = size_t (*)(uint32_t, char*, size_t);
using BitsFn = uint32_t (*)(const char*);

struct Control {
    const char* name;
    TextFn text;
    BitsFn bits;
};

const Control kControls[] = {
    {"frame", fk::Frame3DFlagsText, fk::Frame3DFlagsBits},
    {"text3d", fk::Text3DFlagsText, fk::Text3DFlagsBits},
    {"line", fk::LineFlagsText, fk::LineFlagsBits},
    {"ticker", fk::TickerFlagsText, fk::TickerFlagsBits},
    {"colour", fk::ColorFlagsText, fk::ColorFlagsBits},
};

std::string full(const Control& c, uint32_t style) {
    char buffer[512];
    const size_t n = c.text(style, buffer, sizeof buffer);
    check(n < sizeof buffer && strlen(buffer) == n, "the text form returns its length", c.name);
    return buffer;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Input in(data, size);
    const Control& c = kControls[in.byte() % 5];
    const uint32_t style = static_cast<uint32_t>(in.number());
    const size_t outSize = in.byte() % 101;
    const std::string text = in.rest(300);  // design-time texts are short

    // A short buffer gets the front of the whole text, terminated.
    const std::string whole = full(c, style);
    std::unique_ptr<char[]> out(new char[outSize]);
    memset(out.get(), 'O', outSize);
    const size_t n = c.text(style, out.get(), outSize);
    if (outSize == 0) {
        check(n == 0, "no room, nothing written", c.name);
    } else {
        check(memchr(out.get(), 0, outSize) != nullptr, "the text form always terminates", c.name);
        check(n == strlen(out.get()) && n == std::min(whole.size(), outSize - 1) &&
                  whole.compare(0, n, out.get()) == 0,
              "a short buffer holds the front of the text", c.name);
    }
    check(c.text(style, nullptr, outSize) == 0, "no buffer, nothing written", c.name);

    // Reading the text back gives the same text again.
    const uint32_t back = c.bits(whole.c_str());
    check(full(c, back) == whole, "the text form reads back", whole);

    // Arbitrary text: every bit whose name occurs, and only those; the
    // bits' text names only bits that were read.
    Heap t(text);
    const uint32_t bits = c.bits(t.get());
    check(t.str() == text, "the bits form leaves the text alone", text);
    check(c.bits(nullptr) == 0, "a null text has no bits", c.name);
    const std::string up = fuzz::upper(text);
    if (c.text != fk::LineFlagsText && c.text != fk::Frame3DFlagsText) {
        // The name of each single bit, as the text form writes it.
        static std::string names[5][32];
        std::string* own = names[&c - kControls];
        if (own[0].empty()) {
            for (int i = 0; i < 32; ++i) {
                own[i] = full(c, 1u << i) + "#";
            }
        }
        for (int i = 0; i < 32; ++i) {
            const std::string& name = own[i];
            const uint32_t bit = 1u << i;
            if (name == "#") {
                check((bits & bit) == 0, "an unnamed bit is never read", text);
                continue;
            }
            // Behind " | ", without the "#".
            const bool named = up.find(name.substr(3, name.size() - 4)) != std::string::npos;
            check(((bits & bit) != 0) == named, "a bit is read when its name occurs", text);
        }
    }
    if (c.text == fk::LineFlagsText) {
        const bool vertical = up.find("GXLINE_VERTICAL") != std::string::npos;
        const bool horizontal = up.find("GXLINE_HORIZONTAL") != std::string::npos;
        check(bits == (vertical ? 0x10u : horizontal ? 0x20u : 0u), "a line is vertical or horizontal", text);
    }
    return 0;
}
