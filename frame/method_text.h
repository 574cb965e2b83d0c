// A private, writable copy of a method string, the form every reader of a
// method string works on: twGetMethodParam needs a writable text with two
// spare bytes behind its terminator.
#pragma once

#include <stdint.h>

#include "fields/text/number_text.h"
#include "frame/buffers.h"
#include "frame/method.h"
#include "strings/lstr.h"

namespace fk {

// Capacity: how many characters of the method string are copied (a null
// method reads as empty). Room: how long the text may grow by add() (at
// least Capacity).
template <int Capacity, int Room = Capacity>
class MethodCopy {
    static_assert(Capacity > 0 && Room >= Capacity);

public:
    // Bytes of the text buffer: the room, the terminator, the spare bytes.
    static constexpr int kSize = Room + 1 + 2;

    explicit MethodCopy(const char* method) {
        if (method != nullptr) lstrncpy(text_, method, Capacity);
    }

    char* get() { return text_; }
    const char* get() const { return text_; }

    // A plain word anywhere in the text, in any case.
    bool has(const char* word) const { return lstristr(text_, word) != nullptr; }

    // The keyword's argument ("" when absent, or without one); found()
    // tells whether the keyword occurred. The argument stays until the next
    // param().
    const char* param(const char* keyword) {
        found_ = twGetMethodParam(text_, keyword, arg_) != 0;
        if (!found_) arg_[0] = 0;
        return arg_;
    }
    bool found() const { return found_; }

    // The keyword's argument as a decimal number, or absent without the
    // keyword.
    int32_t intParam(const char* keyword, int32_t absent) {
        const char* arg = param(keyword);
        return found_ ? NumberTextToInt32(arg) : absent;
    }

    // twAddMethodParam and twRemoveMethodParam on the copy.
    void add(const char* item) { twAddMethodParam(text_, item); }
    void remove(const char* item) { twRemoveMethodParam(text_, item); }

private:
    char text_[kSize] = {};
    char arg_[kSize] = {};
    bool found_ = false;
};

// What a control hands out and validates with: at most 256 characters.
using MethodShort = MethodCopy<kMethodCopy>;
// The whole method string a control keeps.
using MethodFull = MethodCopy<kMethodMax>;

}  // namespace fk
