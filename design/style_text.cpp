#include "design/style_text.h"

#include <string.h>

#include "strings/lstr.h"

namespace fk {

namespace {

const StyleGroupRule* RuleOf(const StyleTable& table, uint8_t group) {
    for (uint8_t i = 0; i < table.ruleCount; ++i)
        if (table.rules[i].group == group) return &table.rules[i];
    return nullptr;
}

bool FirstOfGroup(const StyleTable& table, size_t index) {
    for (size_t i = 0; i < index; ++i)
        if (table.names[i].group == table.names[index].group) return false;
    return true;
}

// Collects the text's pieces, counting all of them; writes into out only
// while everything so far fits.
class Writer {
public:
    Writer(char* out, size_t size) : out_(out), size_(out ? size : 0) {}
    void Add(const char* name) {
        Put(" | ");
        Put(name);
    }
    size_t Finish() {
        if (size_ == 0) return length_;
        out_[length_ < size_ ? length_ : 0] = '\0';
        return length_;
    }

private:
    void Put(const char* s) {
        for (; *s; ++s, ++length_)
            if (length_ + 1 < size_) out_[length_] = *s;
    }
    char* out_;
    size_t size_;
    size_t length_ = 0;
};

}  // namespace

bool StyleNamed(const StyleName& entry, uint32_t style) {
    return entry.value != 0 && (style & entry.mask) == entry.value;
}

size_t StyleText(const StyleTable& table, uint32_t style, char* out, size_t size) {
    Writer text(out, size);
    for (size_t i = 0; i < table.count; ++i) {
        const StyleName& entry = table.names[i];
        const StyleGroupRule* rule = RuleOf(table, entry.group);
        if (rule == nullptr || !rule->firstOnly) {
            if (StyleNamed(entry, style)) text.Add(entry.name);
        } else if (FirstOfGroup(table, i)) {
            const int chosen = ChosenEntry(table, style, entry.group);
            const int named = chosen >= 0 ? chosen : rule->fallback;
            if (named >= 0) text.Add(table.names[named].name);
        }
    }
    return text.Finish();
}

uint32_t StyleBits(const StyleTable& table, const char* text) {
    if (text == nullptr) return 0;
    uint32_t bits = 0;
    uint32_t closedGroups = 0;  // bit g: group g already found its name
    for (size_t i = 0; i < table.count; ++i) {
        const StyleName& entry = table.names[i];
        if (closedGroups & (1u << entry.group)) continue;
        if (lstristr(text, entry.name) == nullptr) continue;
        bits |= entry.value;
        const StyleGroupRule* rule = RuleOf(table, entry.group);
        if (rule != nullptr && rule->textFirstOnly) closedGroups |= 1u << entry.group;
    }
    return bits;
}

uint32_t GroupMask(const StyleTable& table, uint8_t group) {
    uint32_t mask = 0;
    for (size_t i = 0; i < table.count; ++i)
        if (table.names[i].group == group) mask |= table.names[i].mask;
    return mask;
}

uint32_t ApplyChoice(const StyleTable& table, uint32_t style, size_t index, bool on) {
    if (index >= table.count) return style;
    const StyleName& entry = table.names[index];
    if (entry.group == kOwnBox) return on ? (style & ~entry.mask) | entry.value : style & ~entry.mask;
    const uint32_t cleared = style & ~GroupMask(table, entry.group);
    return on ? cleared | entry.value : cleared;
}

int ChosenEntry(const StyleTable& table, uint32_t style, uint8_t group) {
    for (size_t i = 0; i < table.count; ++i)
        if (table.names[i].group == group && StyleNamed(table.names[i], style)) return static_cast<int>(i);
    return -1;
}

}  // namespace fk
