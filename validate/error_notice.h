// The FieldErrorNotice block offered to a control's parent with GXN_ERROR.
#pragma once

#include <windows.h>

#include "frame/alloc.h"
#include "frame/gdi.h"
#include "include/fldkit.h"

namespace fk {

// A zero-initialised moveable block, locked while it lives; unlocked and
// freed on every way out.
class NoticeBlock {
public:
    explicit NoticeBlock(bool wanted)
        : block_(wanted ? fk::GlobalAllocate(GMEM_MOVEABLE | GMEM_ZEROINIT, sizeof(FieldErrorNotice)) : nullptr),
          lock_(block_) {}
    ~NoticeBlock() = default;
    NoticeBlock(const NoticeBlock&) = delete;
    NoticeBlock& operator=(const NoticeBlock&) = delete;

    explicit operator bool() const { return static_cast<bool>(lock_); }

    // Fills the notice and sends it; returns the parent's reply.
    LRESULT Send(HWND parent, HWND control, int id, int type, int error, char* method, char* message,
                 char* caption) {
        FieldErrorNotice* n = lock_.get();
        n->hWnd = control;
        n->nId = id;
        n->nType = type;
        n->nError = error;
        n->lpMethod = method;
        n->lpMessage = message;
        n->lpCaption = caption;
        return SendMessageA(parent, GXN_ERROR, static_cast<WPARAM>(id), reinterpret_cast<LPARAM>(n));
    }

private:
    struct Owner {
        HGLOBAL h;
        explicit Owner(HGLOBAL block) : h(block) {}
        ~Owner() {
            if (h) GlobalFree(h);
        }
        operator HGLOBAL() const { return h; }
    };
    Owner block_;  // freed after the lock below is released
    GlobalLocked<FieldErrorNotice> lock_;
};

}  // namespace fk
