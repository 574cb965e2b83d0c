// What gxBitmap32 and gxIcon32 share: a picture from a file named in the
// method string ("@BITMAP(file)", "@ICON(file)") or from a resource of the
// application named by the window text, placed by the style, inverted while
// pressed ("@INVERT"), a program started by a click ("@PROG"), drag and drop
// of the picture's name. Each class supplies its keyword and its loaders.
#pragma once

#include <windows.h>

#include <memory>

#include "frame/method_window.h"
#include "frame/window_words.h"

namespace fk {

// A loaded picture, owned by its control from load to WM_DESTROY.
class Picture {
public:
    virtual ~Picture() = default;
    virtual SIZE size() const = 0;
    // Draws the whole picture into place (stretching it when sizes differ).
    virtual void draw(HDC dc, const RECT& place) const = 0;
};

struct PictureClass {
    const char* keyword;  // "@BITMAP" or "@ICON"
    MethodSlot method;
    // Loaders; `want` is the control's client size. Null when nothing loads.
    std::unique_ptr<Picture> (*fromFile)(const char* path, SIZE want);
    std::unique_ptr<Picture> (*fromResource)(HINSTANCE module, LPCSTR name, SIZE want);
};

// Window words both classes keep in front of their method string.
namespace picture_words {
// In the 64-bit build the pointers start behind the larger class's 16 bytes.
using Image = PtrWord<Picture, 0, 16>;        // the picture, or null
using Name = PtrPlace<4, 24>;                 // local block: file or resource name it came from
inline constexpr MethodSlot kName{Name::kOffset};
using State = ShortWord<8>;                   // kPressed, kTracking
}  // namespace picture_words

// The window procedure of both classes.
LRESULT PictureProc(HWND h, UINT msg, WPARAM wp, LPARAM lp, const PictureClass& cls);

}  // namespace fk
