// gxBitmap32: the bitmap control. A picture from "@BITMAP(file)" (any BMP
// the library reads) or from the application's bitmap resource named by the
// window text; the rest is the picture controls' common behaviour.

#include <memory>

#include "display/dib.h"
#include "display/picture.h"
#include "frame/extra_bytes.h"
#include "frame/gdi.h"
#include "include/fldkit.h"

namespace {

class BitmapPicture final : public fk::Picture {
public:
    explicit BitmapPicture(HBITMAP bitmap) : bitmap_(bitmap) {
        BITMAP info{};
        GetObjectA(bitmap, sizeof info, &info);
        size_ = {info.bmWidth, info.bmHeight};
    }
    SIZE size() const override { return size_; }
    void draw(HDC dc, const RECT& place) const override {
        fk::MemoryDC memory(dc);
        fk::SelectObj selected(memory, bitmap_.get());
        const int oldMode = SetStretchBltMode(dc, COLORONCOLOR);
        StretchBlt(dc, place.left, place.top, place.right - place.left, place.bottom - place.top, memory, 0, 0, size_.cx,
                   size_.cy, SRCCOPY);
        SetStretchBltMode(dc, oldMode);
    }

private:
    fk::Bitmap bitmap_;
    SIZE size_;
};

std::unique_ptr<fk::Picture> Made(HBITMAP bitmap) {
    if (bitmap == nullptr) return nullptr;
    return std::make_unique<BitmapPicture>(bitmap);
}

std::unique_ptr<fk::Picture> FromFile(const char* path, SIZE) {
    const std::vector<uint8_t> bytes = fk::ReadPictureFile(path);
    return Made(fk::BitmapFromBytes(bytes.data(), bytes.size(), nullptr));
}

std::unique_ptr<fk::Picture> FromResource(HINSTANCE module, LPCSTR name, SIZE) {
    return Made(fk::BitmapFromResource(module, name));
}

// Window words: the picture words of display/picture.h, bytes 10-11 spare,
// the method string last.
using Method = fk::PtrWord<char, 12, 32>;
static_assert(fk::picture_words::State::kEnd <= 10 && fk::picture_words::Name::kEnd64 == Method::kOffset64 &&
              fk::EndsAt<Method, Method>(fk::kBitmapExtra.bits32, fk::kBitmapExtra.bits64));
const fk::PictureClass kBitmap{"@BITMAP", fk::MethodSlot{Method::kOffset}, FromFile, FromResource};

}  // namespace

LRESULT WINAPI gxBitmapWndFn(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    return fk::PictureProc(h, msg, wp, lp, kBitmap);
}
