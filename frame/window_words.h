// Typed access to a window's extra bytes at fixed positions. A set that
// would not change the word writes nothing: reading a word is cheap, a
// write can cost a round trip to the window manager. Each class
// describes its layout once with these (for example
// `using Method = LongWord<26>;`) instead of scattering raw offsets, and
// asserts that its last word ends at the extra-byte count its class
// registers (frame/extra_bytes.h).
#pragma once

#include <windows.h>

namespace fk {

template <int Offset>
struct LongWord {
    static constexpr int kOffset = Offset;
    static constexpr int kEnd = Offset + 4;
    static LONG get(HWND h) { return GetWindowLongA(h, Offset); }
    static void set(HWND h, LONG v) {
        if (get(h) != v) SetWindowLongA(h, Offset, v);
    }
};

template <int Offset>
struct ShortWord {
    static constexpr int kOffset = Offset;
    static constexpr int kEnd = Offset + 2;
    static WORD get(HWND h) { return GetWindowWord(h, Offset); }
    static void set(HWND h, WORD v) {
        if (get(h) != v) SetWindowWord(h, Offset, v);
    }
};

// A pointer kept in a 32-bit window word (32-bit Windows only).
template <typename T, int Offset>
struct PtrWord {
    static constexpr int kOffset = Offset;
    static constexpr int kEnd = Offset + 4;
    static T* get(HWND h) { return reinterpret_cast<T*>(GetWindowLongA(h, Offset)); }
    static void set(HWND h, T* p) {
        if (get(h) != p) SetWindowLongA(h, Offset, reinterpret_cast<LONG>(p));
    }
};

// A pointer kept in a window property. The two superclasses use it for
// their state: their extra bytes belong to the system class, all but the
// method-string word behind them.
template <typename T>
struct PropPtr {
    const char* name;
    T* get(HWND h) const { return static_cast<T*>(GetPropA(h, name)); }
    bool set(HWND h, T* p) const { return SetPropA(h, name, p) != FALSE; }
    T* take(HWND h) const { return static_cast<T*>(RemovePropA(h, name)); }
};

// Bytes a layout leaves unused, so that it still ends where its class's
// extra bytes end.
template <int Offset, int Bytes>
struct SpareBytes {
    static constexpr int kOffset = Offset;
    static constexpr int kEnd = Offset + Bytes;
};

}  // namespace fk
