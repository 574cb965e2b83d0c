// Fuzz target: input masks (twAppToScrMask, fk::ScrToAppMask,
// fk::MaskCapacity). An input is an option byte, two numbers (the application
// position, or the start and end of the deleted range), the mask and the text.
// The screen buffer holds strlen(app) + strlen(mask) + 1 bytes and the
// application buffer strlen(screen) + 1, each in a heap block of its own.

#include "fields/text/mask.h"
#include "support/input.h"

using namespace fuzz;

// The application text a screen text holds, and the index ScrToAppMask returns.
std::string toApp(const std::string& screen, Heap& mask, int32_t selStart, int32_t selEnd, int32_t* result) {
    Heap app(std::string(), screen.size() + 1, 'A'), s(screen);
    *result = fk::ScrToAppMask(app.get(), s.get(), mask.get(), selStart, selEnd);
    check(app.terminated() && s.str() == screen, "ScrToAppMask terminates and leaves the screen alone", screen);
    check(*result >= 0 && static_cast<size_t>(*result) <= app.str().size() &&
              app.str().size() <= static_cast<size_t>(fk::MaskCapacity(mask.get())),
          "ScrToAppMask keeps only placeholders and its index lies in the text", screen);
    return app.str();
}

void mask(Input& in) {
    const uint8_t options = in.byte();
    const int32_t first = in.signedNumber(), second = in.signedNumber();
    const std::string mask = in.text(), text = in.text();
    Heap m(mask), a(text), screen(std::string(), text.size() + mask.size() + 1, 'S');
    const int32_t noFill = options & 1;
    const int32_t index = twAppToScrMask(screen.get(), a.get(), m.get(), first, noFill);
    const std::string shown = screen.str();
    const size_t capacity = static_cast<size_t>(fk::MaskCapacity(m.get()));
    // Filled, the screen text is the mask and what is typed beyond its placeholders.
    check(screen.terminated() && a.str() == text && m.str() == mask && index >= -1 &&
              index <= static_cast<int32_t>(mask.size()) &&
              (noFill != 0 || shown.size() == mask.size() + (text.size() > capacity ? text.size() - capacity : 0)),
          "twAppToScrMask fills the mask and leaves its inputs alone", text + "|" + mask);
    int32_t result = 0;
    toApp(text, m, first, second, &result);
    // Round trip: typed text without blanks comes back as far as the placeholders hold it.
    if (text.find(' ') != std::string::npos) return;
    check(toApp(shown, m, 0, 0, &result) == text.substr(0, capacity) && result == 0,
          "ScrToAppMask undoes twAppToScrMask", text + "|" + mask);
}

FK_FUZZ_ROUTINES(mask)
