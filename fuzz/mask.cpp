// Fuzz target: input masks (twAppToScrMask, fk::ScrToAppMask,
// fk::MaskCapacity). An input is an option byte, two numbers (the application
// position, or the start and end of the deleted range), the mask and the text.
// The screen buffer holds strlen(app) + strlen(mask) + 1 bytes and the
// application buffer strlen(screen) + 1, each in a heap block of its own.
#include <algorithm>
#include <string>

#include "fields/text/mask.h"
#include "support/input.h"

namespace {

using namespace fuzz;

int32_t capacityOf(const std::string& mask) {
    return static_cast<int32_t>(std::count_if(mask.begin(), mask.end(), [](char c) { return strchr("#@?*", c); }));
}

// Merges app into mask; checks the screen text and the returned index.
std::string toScreen(const std::string& app, const std::string& mask, int32_t appPos, int32_t noFill) {
    Heap screen(std::string(), app.size() + mask.size() + 1, 'S'), a(app), m(mask);
    const int32_t index = twAppToScrMask(screen.get(), a.get(), m.get(), appPos, noFill);
    const std::string shown = screen.str(), detail = app + "|" + mask;
    check(screen.terminated(), "twAppToScrMask terminates the screen text", detail);
    check(a.str() == app && m.str() == mask, "twAppToScrMask leaves its inputs alone", detail);
    const int32_t capacity = capacityOf(mask);
    check(fk::MaskCapacity(m.get()) == capacity, "MaskCapacity counts the placeholders", mask);

    // The typed characters, in order, at the placeholders and behind the mask.
    std::string typed;
    size_t i = 0;
    for (; i < shown.size() && i < mask.size(); ++i) {
        const bool place = fk::IsMaskPlaceholder(mask[i]);
        if (place && typed.size() < app.size())
            typed.push_back(shown[i]);
        else
            check(shown[i] == (place ? ' ' : mask[i]), "twAppToScrMask shows literals and blanks", detail);
    }
    typed += shown.substr(i);
    check(typed == app, "twAppToScrMask keeps every character", detail);
    // Filled: the whole mask; not filled: nothing after the last typed character.
    check(noFill == 0 ? shown.size() >= mask.size() : (app.empty() ? shown.empty() : shown.back() == app.back()),
          "twAppToScrMask fills the mask, or ends at the last typed character", detail);

    // The index of application position appPos.
    if (appPos < 0) {
        check(index == -1, "a negative position maps to -1", detail);
    } else if (appPos < capacity) {
        check(index >= 0 && static_cast<size_t>(index) < mask.size() && fk::IsMaskPlaceholder(mask[index]) &&
                  capacityOf(mask.substr(0, index)) == appPos,
              "a position inside the mask maps to its placeholder", detail);
    } else {
        check(index >= -1 && index <= static_cast<int32_t>(mask.size()),
              "a position past the placeholders stays at the mask's end", detail);
    }
    return shown;
}

// Rebuilds the application text; checks the result index and the length.
std::string toApp(const std::string& screen, const std::string& mask, int32_t selStart, int32_t selEnd,
                  int32_t* result) {
    Heap app(std::string(), screen.size() + 1, 'A'), s(screen), m(mask);
    *result = fk::ScrToAppMask(app.get(), s.get(), m.get(), selStart, selEnd);
    const std::string text = app.str(), detail = screen + "|" + mask;
    check(app.terminated(), "ScrToAppMask terminates the application text", detail);
    check(s.str() == screen && m.str() == mask, "ScrToAppMask leaves its inputs alone", detail);
    check(*result >= 0 && static_cast<size_t>(*result) <= text.size(), "ScrToAppMask's index lies in the text", detail);
    check(text.size() <= static_cast<size_t>(capacityOf(mask)), "ScrToAppMask keeps only placeholders", detail);
    return text;
}

void mask(Input& in) {
    const uint8_t options = in.byte();
    const int32_t first = in.signedNumber(), second = in.signedNumber();
    const std::string mask = in.text(), text = in.text();

    // The text as application text, merged both ways.
    const std::string filled = toScreen(text, mask, first, 0), bare = toScreen(text, mask, first, 1);
    check(filled.compare(0, bare.size(), bare) == 0, "noFill only leaves out the tail", text + "|" + mask);
    // The text as screen text, with a deleted range.
    int32_t result = 0;
    toApp(text, mask, first, second, &result);
    // Round trip: typed text without blanks that fits comes back.
    if (text.find(' ') != std::string::npos || text.size() > static_cast<size_t>(capacityOf(mask))) return;
    check(toApp((options & 1) != 0 ? bare : filled, mask, 0, 0, &result) == text && result == 0,
          "ScrToAppMask undoes twAppToScrMask", text + "|" + mask);
}

}  // namespace

FK_FUZZ_ROUTINES(mask)
