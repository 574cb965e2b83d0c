// The DIB services: twOpenDib, twBitmapFromDib, twLoadDIBitmap.

#include "display/dib.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "display/text/picture_parse.h"
#include "frame/alloc.h"
#include "frame/gdi.h"
#include "include/fldkit.h"

namespace fk {

std::vector<uint8_t> ReadPictureFile(const char* path) {
    if (path == nullptr || path[0] == '\0') return {};
    std::unique_ptr<FILE, int (*)(FILE*)> file(std::fopen(path, "rb"), std::fclose);
    if (!file) return {};
    if (std::fseek(file.get(), 0, SEEK_END) != 0) return {};
    const long length = std::ftell(file.get());
    if (length <= 0 || static_cast<unsigned long>(length) > kMaxPictureFile) return {};
    std::rewind(file.get());
    std::vector<uint8_t> bytes(static_cast<size_t>(length));
    if (std::fread(bytes.data(), 1, bytes.size(), file.get()) != bytes.size()) return {};
    return bytes;
}

namespace {

// A picture unpacked into a packed DIB of our own making.
std::vector<uint8_t> Unpacked(const uint8_t* data, size_t size, picture::Layout* layout) {
    if (!picture::Measure(data, size, layout)) return {};
    std::vector<uint8_t> dib(layout->total);
    if (!picture::Unpack(data, size, *layout, dib.data(), dib.size())) return {};
    return dib;
}

}  // namespace

HBITMAP BitmapFromBytes(const uint8_t* data, size_t size, HPALETTE palette) {
    picture::Layout layout;
    std::vector<uint8_t> dib = Unpacked(data, size, &layout);
    if (dib.empty()) return nullptr;
    WindowDC screen(nullptr);
    if (screen.get() == nullptr) return nullptr;
    RealizedPalette realized(screen, palette);
    auto* info = reinterpret_cast<BITMAPINFO*>(dib.data());
    return CreateDIBitmap(screen, &info->bmiHeader, CBM_INIT, dib.data() + layout.headerBytes, info, DIB_RGB_COLORS);
}

HBITMAP BitmapFromResource(HINSTANCE module, const char* name) {
    if (name == nullptr) return nullptr;
    HRSRC found = FindResourceA(module, name, MAKEINTRESOURCEA(2));  // RT_BITMAP
    if (found == nullptr) return nullptr;
    HGLOBAL loaded = LoadResource(module, found);
    const void* bytes = loaded ? LockResource(loaded) : nullptr;
    if (bytes == nullptr) return nullptr;
    return BitmapFromBytes(static_cast<const uint8_t*>(bytes), SizeofResource(module, found), nullptr);
}

HICON IconFromBytes(const uint8_t* data, size_t size, int want) {
    picture::IconImage image;
    if (!picture::PickIcon(data, size, want, &image)) return nullptr;
    // The image's size is asked for, so the system does not scale it; the
    // controls stretch it when they draw.
    return CreateIconFromResourceEx(const_cast<PBYTE>(data + image.offset), static_cast<DWORD>(image.size), TRUE,
                                    0x00030000, image.width, image.height, LR_DEFAULTCOLOR);
}

LPCSTR ResourceName(const char* text) {
    if (text != nullptr && text[0] == '#' && text[1] >= '0' && text[1] <= '9')
        return MAKEINTRESOURCEA(std::atoi(text + 1));
    return text;
}

}  // namespace fk

extern "C" HGLOBAL WINAPI twOpenDib(LPCSTR lpFile) {
    std::vector<uint8_t> bytes = fk::ReadPictureFile(lpFile);
    fk::picture::Layout layout;
    if (!fk::picture::Measure(bytes.data(), bytes.size(), &layout)) return nullptr;
    fk::GlobalBlock block(fk::GlobalAllocate(GMEM_MOVEABLE, layout.total));
    {
        fk::GlobalLocked<uint8_t> p(block.get());
        if (!p || !fk::picture::Unpack(bytes.data(), bytes.size(), layout, p.get(), layout.total)) return nullptr;
    }
    return block.release();
}

extern "C" HBITMAP WINAPI twBitmapFromDib(HGLOBAL hDib, HPALETTE hPalette) {
    // The block is read only as far as GlobalSize says, whoever made it.
    fk::GlobalLocked<uint8_t> p(hDib);
    if (!p) return nullptr;
    return fk::BitmapFromBytes(p.get(), p.size(), hPalette);
}

extern "C" HBITMAP WINAPI twLoadDIBitmap(HINSTANCE hInstance, LPCSTR lpName) {
    if (lpName == nullptr) return nullptr;
    if (hInstance != nullptr) return fk::BitmapFromResource(hInstance, lpName);
    std::vector<uint8_t> bytes = fk::ReadPictureFile(lpName);
    return fk::BitmapFromBytes(bytes.data(), bytes.size(), nullptr);
}
