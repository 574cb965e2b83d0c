#include "display/text/display_flags.h"

#include "strings/lstr.h"

namespace fk {

namespace {

struct Name {
    uint32_t bit;
    const char* text;
};

const Name kLettering[] = {{0x0001, "TEXT3D_FLAT"},
                           {0x0002, "TEXT3D_LIGHTRAISED"},
                           {0x0004, "TEXT3D_HEAVYRAISED"},
                           {0x0008, "TEXT3D_LIGHTINSET"},
                           {0x0010, "TEXT3D_HEAVYINSET"}};

const Name kFrameNames[] = {{0x0001, "TEXT3D_FLAT"},       {0x0002, "TEXT3D_LIGHTRAISED"},
                            {0x0004, "TEXT3D_HEAVYRAISED"}, {0x0008, "TEXT3D_LIGHTINSET"},
                            {0x0010, "TEXT3D_HEAVYINSET"},  {0x0020, "FRAME3D_DARKGREY"},
                            {0x0040, "FRAME3D_BLACK"},      {0x0080, "FRAME3D_INSET"},
                            {0x0100, "FRAME3D_RAISED"},     {0x0200, "FRAME3D_LEFT"},
                            {0x0400, "FRAME3D_CENTER"},     {0x0800, "FRAME3D_RIGHT"}};

const Name kText3DNames[] = {{0x0001, "TEXT3D_FLAT"},       {0x0002, "TEXT3D_LIGHTRAISED"},
                             {0x0004, "TEXT3D_HEAVYRAISED"}, {0x0008, "TEXT3D_LIGHTINSET"},
                             {0x0010, "TEXT3D_HEAVYINSET"},  {0x0020, "TEXT3D_3D1"},
                             {0x0040, "TEXT3D_3D2"},         {0x0080, "TEXT3D_3D3"},
                             {0x0100, "TEXT3D_3D4"},         {0x1000, "TEXT3D_3D5"},
                             {0x0200, "TEXT3D_LEFT"},        {0x0400, "TEXT3D_CENTER"},
                             {0x0800, "TEXT3D_RIGHT"}};

const Name kTickerNames[] = {{0x0400, "TICK_3D1"}, {0x0800, "TICK_3D2"}, {0x1000, "TICK_3D3"},
                             {0x2000, "TICK_3D4"}, {0x4000, "TICK_3D5"}};

const Name kColorNames[] = {{0x0400, "COLOR_3D1"}, {0x0800, "COLOR_3D2"}, {0x1000, "COLOR_3D3"},
                            {0x2000, "COLOR_3D4"}, {0x4000, "COLOR_3D5"}};

// Appends " | name", cutting at the end of out.
class Writer {
public:
    Writer(char* out, size_t size) : out_(out), size_(out ? size : 0) {
        if (size_ > 0) out_[0] = '\0';
    }
    void Add(const char* name) {
        Put(" | ");
        Put(name);
    }
    size_t length() const { return len_; }

private:
    void Put(const char* s) {
        for (; *s && len_ + 1 < size_; ++s) out_[len_++] = *s;
        if (size_ > 0) out_[len_] = '\0';
    }
    char* out_;
    size_t size_;
    size_t len_ = 0;
};

bool Names(const char* text, const char* name) { return text != nullptr && lstristr(text, name) != nullptr; }

template <size_t N>
size_t EverySetBit(uint32_t style, const Name (&names)[N], char* out, size_t size) {
    Writer text(out, size);
    for (const Name& n : names)
        if (style & n.bit) text.Add(n.text);
    return text.length();
}

template <size_t N>
uint32_t EveryNamedBit(const char* text, const Name (&names)[N]) {
    uint32_t bits = 0;
    for (const Name& n : names)
        if (Names(text, n.text)) bits |= n.bit;
    return bits;
}

}  // namespace

size_t Frame3DFlagsText(uint32_t style, char* out, size_t size) {
    Writer text(out, size);
    const char* lettering = "TEXT3D_FLAT";
    for (const Name& n : kLettering) {
        if (style & n.bit) {
            lettering = n.text;
            break;
        }
    }
    text.Add(lettering);
    text.Add((style & 0x0020) ? "FRAME3D_DARKGREY" : "FRAME3D_BLACK");
    text.Add((style & 0x0080) ? "FRAME3D_INSET" : "FRAME3D_RAISED");
    text.Add((style & 0x0200) ? "FRAME3D_LEFT" : (style & 0x0400) ? "FRAME3D_CENTER" : "FRAME3D_RIGHT");
    return text.length();
}

uint32_t Frame3DFlagsBits(const char* text) { return EveryNamedBit(text, kFrameNames); }

size_t Text3DFlagsText(uint32_t style, char* out, size_t size) { return EverySetBit(style, kText3DNames, out, size); }

uint32_t Text3DFlagsBits(const char* text) { return EveryNamedBit(text, kText3DNames); }

size_t LineFlagsText(uint32_t style, char* out, size_t size) {
    Writer text(out, size);
    if (style & 0x0010) {
        text.Add("GXLINE_VERTICAL");
    } else if (style & 0x0020) {
        text.Add("GXLINE_HORIZONTAL");
    }
    return text.length();
}

uint32_t LineFlagsBits(const char* text) {
    if (Names(text, "GXLINE_VERTICAL")) return 0x0010;
    if (Names(text, "GXLINE_HORIZONTAL")) return 0x0020;
    return 0;
}

size_t TickerFlagsText(uint32_t style, char* out, size_t size) { return EverySetBit(style, kTickerNames, out, size); }

uint32_t TickerFlagsBits(const char* text) { return EveryNamedBit(text, kTickerNames); }

size_t ColorFlagsText(uint32_t style, char* out, size_t size) { return EverySetBit(style, kColorNames, out, size); }

uint32_t ColorFlagsBits(const char* text) { return EveryNamedBit(text, kColorNames); }

}  // namespace fk
