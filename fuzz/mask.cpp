// Fuzz target: input masks (twAppToScrMask, fk::ScrToAppMask,
// fk::MaskCapacity). An input is an option byte, two numbers (the application
// position, or the start and end of the deleted range), the mask and the text.
// The screen buffer holds strlen(app) + strlen(mask) + 1 bytes and the
// application buffer strlen(screen) + 1, each in a heap block of its own.
#include "fields/text/mask.h"
#include "support/input.h"

using namespace fuzz;

void mask(Input& in) {
    const int32_t noFill = in.byte() & 1;
    const int32_t first = in.signedNumber(), second = in.signedNumber();
    const std::string mask = in.text(), text = in.text();
    Heap m(mask), a(text), screen(std::string(), text.size() + mask.size() + 1, 'S');
    Heap app(std::string(), text.size() + 1, 'A'), back(std::string(), text.size() + mask.size() + 1, 'B');
    const int32_t index = twAppToScrMask(screen.get(), a.get(), m.get(), first, noFill);
    const int32_t result = fk::ScrToAppMask(app.get(), a.get(), m.get(), first, second);
    check(screen.terminated() && app.terminated() && index >= -1 && index <= static_cast<int32_t>(mask.size()) &&
              result >= 0 && static_cast<size_t>(result) <= app.str().size(),
          "both ways stay in their buffers, the indexes in their texts", text + "|" + mask);
    check(fk::ScrToAppMask(back.get(), screen.get(), m.get(), 0, 0) == 0 && back.terminated(), "a screen text reads");
}

FK_FUZZ_ROUTINE(mask)
