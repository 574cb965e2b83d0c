// Typed access to a window's extra bytes at fixed positions. A set that
// would not change the word writes nothing: reading a word is cheap, a
// write can cost a round trip to the window manager. Each class
// describes its layout once with these (for example
// `using Method = PtrWord<char, 26, 34>;`) instead of scattering raw
// offsets, and asserts, for both builds, that its last word ends at the
// extra-byte count its class registers (frame/extra_bytes.h).
//
// The two builds share every position but those of pointers and memory
// handles: such a word is 4 bytes in FLDKIT32.dll and 8 bytes in
// FLDKIT64.dll, where it lives behind the class's 32-bit bytes (its 32-bit
// place stays, unused), so that counts, indexes, flags and USER and GDI
// handles (32-bit values in both) keep the place callers know. Each word
// carries both positions: kOffset is the one of this build, kOffset32 and
// kOffset64 (and kEnd32, kEnd64) let one build check the other's layout.
#pragma once

#include <windows.h>

namespace fk {

inline constexpr bool kWide = sizeof(void*) == 8;

// A word at the same place in both builds.
template <int Offset, int Size>
struct FixedWord {
    static constexpr int kOffset = Offset;
    static constexpr int kEnd = Offset + Size;
    static constexpr int kOffset32 = Offset, kOffset64 = Offset;
    static constexpr int kEnd32 = kEnd, kEnd64 = kEnd;
};

template <int Offset>
struct LongWord : FixedWord<Offset, 4> {
    static LONG get(HWND h) { return GetWindowLongA(h, Offset); }
    static void set(HWND h, LONG v) {
        if (get(h) != v) SetWindowLongA(h, Offset, v);
    }
};

template <int Offset>
struct ShortWord : FixedWord<Offset, 2> {
    static WORD get(HWND h) { return GetWindowWord(h, Offset); }
    static void set(HWND h, WORD v) {
        if (get(h) != v) SetWindowWord(h, Offset, v);
    }
};

// A USER or GDI handle (a font) in a 32-bit word: such handles carry 32
// significant bits in both builds and widen by sign extension, the
// system's own HandleToLong / LongToHandle.
template <typename T, int Offset>
struct HandleWord : FixedWord<Offset, 4> {
    static T get(HWND h) { return static_cast<T>(LongToHandle(GetWindowLongA(h, Offset))); }
    static void set(HWND h, T v) {
        if (get(h) != v) SetWindowLongA(h, Offset, HandleToLong(v));
    }
};

// The position of a pointer word in this build.
template <int Offset32, int Offset64>
struct PtrPlace {
    static constexpr int kOffset32 = Offset32, kOffset64 = Offset64;
    static constexpr int kEnd32 = Offset32 + 4, kEnd64 = Offset64 + 8;
    static constexpr int kOffset = kWide ? Offset64 : Offset32;
    static constexpr int kEnd = kWide ? kEnd64 : kEnd32;
};

// A pointer (or local-memory handle) kept in a pointer-wide window word.
template <typename T, int Offset32, int Offset64>
struct PtrWord : PtrPlace<Offset32, Offset64> {
    using Place = PtrPlace<Offset32, Offset64>;
    static T* get(HWND h) { return reinterpret_cast<T*>(GetWindowLongPtrA(h, Place::kOffset)); }
    static void set(HWND h, T* p) {
        if (get(h) != p) SetWindowLongPtrA(h, Place::kOffset, reinterpret_cast<LONG_PTR>(p));
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
struct SpareBytes : FixedWord<Offset, Bytes> {};

// The last word of a layout ends at its class's count, in both builds.
template <typename Last32, typename Last64>
constexpr bool EndsAt(int bytes32, int bytes64) {
    return Last32::kEnd32 == bytes32 && Last64::kEnd64 == bytes64;
}

}  // namespace fk
