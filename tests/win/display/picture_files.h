// Picture files for the display tests: written to the temporary folder,
// removed again when the test is done.
#pragma once

#include <windows.h>

#include <cstdio>
#include <string>

#include "tests/support/picture_bytes.h"

namespace fktest {

class TempFile {
public:
    TempFile(const char* name, const Bytes& bytes) {
        char dir[MAX_PATH] = {};
        GetTempPathA(sizeof dir, dir);
        path_ = std::string(dir) + "fk_" + std::to_string(GetCurrentProcessId()) + "_" + name;
        FILE* f = std::fopen(path_.c_str(), "wb");
        if (f) std::fwrite(bytes.data(), 1, bytes.size(), f), std::fclose(f);
    }
    ~TempFile() { DeleteFileA(path_.c_str()); }
    TempFile(const TempFile&) = delete;
    const char* path() const { return path_.c_str(); }

private:
    std::string path_;
};

// Four quadrants of an 8 x 6 picture: red, green on top; blue, white below.
inline constexpr int kQuadW = 8, kQuadH = 6;
inline uint32_t Quadrant(int x, int y) { return (y < kQuadH / 2 ? 1 : 3) + (x < kQuadW / 2 ? 0 : 1); }
inline const std::vector<uint32_t> kQuadColours = {0, 0xFF0000, 0x00FF00, 0x0000FF, 0xFFFFFF};
inline COLORREF QuadrantColour(int x, int y) {
    const uint32_t c = kQuadColours[Quadrant(x, y)];
    return RGB(c >> 16, (c >> 8) & 0xFF, c & 0xFF);
}

}  // namespace fktest
