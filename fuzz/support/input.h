// Helpers shared by the fuzz targets: reading an input and exactly-sized texts.
//
// An input is read from the front: single bytes pick routines and characters,
// numbers come as one byte (0-253), or 0xFE and two bytes (0-65535), or 0xFF
// and four bytes (any 32-bit value, little-endian); texts run to the next 0
// byte or to the end. Seed files stay readable that way.
#pragma once

#include <stddef.h>
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace fuzz {

class Input {
public:
    Input(const uint8_t* data, size_t size) : p_(data), n_(size) {}

    bool empty() const { return n_ == 0; }

    uint8_t byte() {
        if (n_ == 0) return 0;
        --n_;
        return *p_++;
    }

    char ch() { return static_cast<char>(byte()); }

    int32_t number() {
        const uint8_t b = byte();
        if (b == 0xFE) return static_cast<int32_t>(byte() | (byte() << 8));
        if (b != 0xFF) return b;
        uint32_t v = 0;
        for (int i = 0; i < 4; ++i) v |= static_cast<uint32_t>(byte()) << (8 * i);
        return static_cast<int32_t>(v);
    }

    // A number and then a byte whose low bit negates it (wrapping, so that
    // INT32_MIN stays itself).
    int32_t signedNumber() {
        const uint32_t v = static_cast<uint32_t>(number());
        return static_cast<int32_t>((byte() & 1) != 0 ? 0u - v : v);
    }

    // Year, month and day, the other fields of the record filled with 0x5A.
    struct tm date() {
        struct tm d;
        memset(&d, 0x5A, sizeof d);
        d.tm_year = signedNumber();
        d.tm_mon = signedNumber();
        d.tm_mday = signedNumber();
        return d;
    }

    // Up to the next 0 byte (which is used up) or the end, at most max bytes.
    std::string text(size_t max = SIZE_MAX) {
        std::string s;
        while (n_ > 0 && *p_ != 0 && s.size() < max) {
            s.push_back(static_cast<char>(*p_++));
            --n_;
        }
        if (n_ > 0 && *p_ == 0) byte();
        return s;
    }

private:
    const uint8_t* p_;
    size_t n_;
};

// A text in a heap block of exactly size bytes, so that the address
// sanitizer reports a write or read one byte past the caller's buffer.
// Bytes behind the terminator are filled with fill.
class Heap {
public:
    Heap(const std::string& s, size_t size, char fill = 'Q') : size_(size), b_(new char[size]) {
        if (size < s.size() + 1) abort();  // a harness mistake, not a finding
        memset(b_.get(), fill, size);
        memcpy(b_.get(), s.c_str(), s.size() + 1);
    }
    explicit Heap(const std::string& s) : Heap(s, s.size() + 1) {}

    char* get() { return b_.get(); }
    std::string str() const { return std::string(b_.get(), strnlen(b_.get(), size_)); }
    bool terminated() const { return memchr(b_.get(), 0, size_) != nullptr; }

private:
    size_t size_;
    std::unique_ptr<char[]> b_;
};

// Reports a broken property and stops the run (libFuzzer keeps the input).
inline void check(bool ok, const char* what, const std::string& detail = std::string()) {
    if (ok) return;
    fprintf(stderr, "property broken: %s\n  text: \"%s\"\n", what, detail.c_str());
    abort();
}

}  // namespace fuzz

// The entry point of a target: routine reads the whole input.
#define FK_FUZZ_ROUTINE(routine)                                              \
    extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) { \
        fuzz::Input in(data, size);                                           \
        routine(in);                                                          \
        return 0;                                                             \
    }
