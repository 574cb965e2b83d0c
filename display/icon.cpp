// gxIcon32: the icon control. A picture from "@ICON(file)" (the image of an
// .ico file that fits the control best) or from the application's icon
// resource named by the window text; the rest is the picture controls'
// common behaviour.

#include <algorithm>
#include <memory>

#include "display/dib.h"
#include "display/picture.h"
#include "frame/extra_bytes.h"
#include "frame/gdi.h"
#include "include/fldkit.h"

namespace {

// The system's icon size stands in for a control that has no size yet.
int Wanted(SIZE client) {
    const int side = std::min(client.cx, client.cy);
    return side > 0 ? side : GetSystemMetrics(SM_CXICON);
}

class IconPicture final : public fk::Picture {
public:
    explicit IconPicture(HICON icon) : icon_(icon) {
        ICONINFO info{};
        if (GetIconInfo(icon, &info)) {
            fk::Bitmap colour(info.hbmColor), mask(info.hbmMask);
            BITMAP bm{};
            GetObjectA(mask.get(), sizeof bm, &bm);
            // A monochrome icon keeps its image and mask in one double-height bitmap.
            size_ = {bm.bmWidth, colour.get() != nullptr ? bm.bmHeight : bm.bmHeight / 2};
        }
    }
    SIZE size() const override { return size_; }
    void draw(HDC dc, const RECT& place) const override {
        DrawIconEx(dc, place.left, place.top, icon_.get(), place.right - place.left, place.bottom - place.top, 0, nullptr,
                   DI_NORMAL);
    }

private:
    fk::IconHandle icon_;
    SIZE size_{};
};

std::unique_ptr<fk::Picture> Made(HICON icon) {
    if (icon == nullptr) return nullptr;
    return std::make_unique<IconPicture>(icon);
}

std::unique_ptr<fk::Picture> FromFile(const char* path, SIZE client) {
    const std::vector<uint8_t> bytes = fk::ReadPictureFile(path);
    return Made(fk::IconFromBytes(bytes.data(), bytes.size(), Wanted(client)));
}

std::unique_ptr<fk::Picture> FromResource(HINSTANCE module, LPCSTR name, SIZE client) {
    const int side = Wanted(client);
    return Made(static_cast<HICON>(LoadImageA(module, name, IMAGE_ICON, side, side, LR_DEFAULTCOLOR)));
}

// Window words: the picture words of display/picture.h, the method string
// last.
using Method = fk::PtrWord<char, 10, 32>;
static_assert(fk::picture_words::State::kEnd == Method::kOffset32 && fk::picture_words::Name::kEnd64 == Method::kOffset64 &&
              fk::EndsAt<Method, Method>(fk::kIconExtra.bits32, fk::kIconExtra.bits64));
const fk::PictureClass kIcon{"@ICON", fk::MethodSlot{Method::kOffset}, FromFile, FromResource};

}  // namespace

LRESULT WINAPI gxIconWndFn(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    return fk::PictureProc(h, msg, wp, lp, kIcon);
}
