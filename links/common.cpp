// Pieces shared by the link services, and the table of platform calls.

#include <windows.h>
#include <mmsystem.h>
#include <shellapi.h>

#include <cstring>

#include "frame/method.h"
#include "links/links.h"
#include "strings/lstr.h"

namespace fk {

namespace {

const FkLinkHooks kSystemCalls = {
    WinHelpA, WinExec, sndPlaySoundA, FindExecutableA, g_fieldText, ShowLibraryHelp,
};

}  // namespace

FkLinkHooks g_linkCalls = kSystemCalls;

std::vector<std::string> SplitTokens(std::string_view text, size_t max) {
    std::vector<std::string> tokens;
    size_t start = 0;
    while (start <= text.size() && tokens.size() < max) {
        size_t comma = text.find(',', start);
        if (comma == std::string_view::npos) comma = text.size();
        if (comma > start) tokens.emplace_back(text.substr(start, comma - start));
        start = comma + 1;
    }
    return tokens;
}

void CopyCut(char* dst, size_t size, std::string_view text) {
    if (size == 0) return;
    size_t n = text.size() < size - 1 ? text.size() : size - 1;
    std::memcpy(dst, text.data(), n);
    dst[n] = 0;
}

std::string ClassOf(HWND h) {
    char name[64] = {};
    if (h == nullptr || GetClassNameA(h, name, sizeof name) == 0) return {};
    return name;
}

}  // namespace fk

extern "C" const FkLinkHooks* WINAPI fkSetLinkHooks(const FkLinkHooks* hooks) {
    using fk::g_linkCalls;
    g_linkCalls = fk::kSystemCalls;
    if (hooks != nullptr) {
        if (hooks->winHelp) g_linkCalls.winHelp = hooks->winHelp;
        if (hooks->winExec) g_linkCalls.winExec = hooks->winExec;
        if (hooks->sndPlaySound) g_linkCalls.sndPlaySound = hooks->sndPlaySound;
        if (hooks->findExecutable) g_linkCalls.findExecutable = hooks->findExecutable;
    }
    return &g_linkCalls;
}
