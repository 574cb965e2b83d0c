// A raw DDE partner in a second process (this program started with --dde-partner): it speaks WM_DDE_*
// with PostMessage, SendMessage and GlobalAlloc blocks itself, so it can misbehave on purpose. The test
// drives it with the commands below, sent to its main window.
#pragma once

#include <windows.h>

#include <string>

namespace fkpartner {

constexpr char kClass[] = "FkDdePartner";
constexpr char kApp[] = "FkPartnerApp", kTopic[] = "Topic";  // what the partner serves
constexpr char kLibApp[] = "FkHostileApp";                   // what a library server of the test serves
constexpr char kHanded[] = "FkHandedItem";  // every atom the partner hands over: one reference each

enum Command : UINT {
    kPost = WM_APP,  // wParam library window, lParam index into kPostCases; answers 1 when posted
    kInitMode,       // wParam: how to answer the next initiate (InitMode)
    kInitiate,       // wParam library server: links as its client; lParam 1: names HWND_BROADCAST as the
                     // initiator instead, to the server and as a server (to a client)
    kCount,          // wParam a WM_DDE_* message: how many of them came in
    kFlush,          // handles the posted messages waiting
    kLastWords,      // wParam library client, lParam library server: posts to both and returns
};
enum InitMode : WPARAM { kAnswer, kTwoAnswers, kTerminateFirst, kDieBeforeAnswer, kDieAfterAnswer };

// What a posted message carries: kAsWords posts lParam as two words (request: the format).
enum Block { kAsWords, kNull, kForeign, kFreed, kTiny1, kTiny3, kUnterminated, kBitmap, kText, kTextAckReq, kTextKept, kSent };

struct PostCase {
    const char* name;
    UINT msg;
    Block block;
    const char* shown;  // the library window's text afterwards, when it must be this
};

inline const PostCase kPostCases[] = {
    {"data, null block", WM_DDE_DATA, kNull, nullptr},
    {"data, foreign number", WM_DDE_DATA, kForeign, nullptr},
    {"data, freed block", WM_DDE_DATA, kFreed, nullptr},
    {"data, 1 byte", WM_DDE_DATA, kTiny1, nullptr},
    {"data, 3 bytes", WM_DDE_DATA, kTiny3, nullptr},
    {"data, unterminated", WM_DDE_DATA, kUnterminated, "abcdefgh"},
    {"data, bitmap format", WM_DDE_DATA, kBitmap, "bits"},
    {"data, acknowledgement asked", WM_DDE_DATA, kTextAckReq, "acked"},
    {"data, acknowledgement asked, not released", WM_DDE_DATA, kTextKept, "kept"},
    {"data, sent not posted", WM_DDE_DATA, kSent, nullptr},
    {"poke, null block", WM_DDE_POKE, kNull, nullptr},
    {"poke, foreign number", WM_DDE_POKE, kForeign, nullptr},
    {"poke, 1 byte", WM_DDE_POKE, kTiny1, nullptr},
    {"poke, unterminated", WM_DDE_POKE, kUnterminated, nullptr},
    {"poke, text", WM_DDE_POKE, kText, nullptr},
    {"advise, null block", WM_DDE_ADVISE, kNull, nullptr},
    {"advise, foreign number", WM_DDE_ADVISE, kForeign, nullptr},
    {"advise, freed block", WM_DDE_ADVISE, kFreed, nullptr},
    {"advise, 1 byte", WM_DDE_ADVISE, kTiny1, nullptr},
    {"advise, 3 bytes", WM_DDE_ADVISE, kTiny3, nullptr},
    {"advise, bitmap format", WM_DDE_ADVISE, kBitmap, nullptr},
    {"execute, null block", WM_DDE_EXECUTE, kNull, nullptr},
    {"execute, foreign number", WM_DDE_EXECUTE, kForeign, nullptr},
    {"execute, freed block", WM_DDE_EXECUTE, kFreed, nullptr},
    {"execute, unterminated", WM_DDE_EXECUTE, kUnterminated, nullptr},
    {"execute, command", WM_DDE_EXECUTE, kText, nullptr},
    {"request, text", WM_DDE_REQUEST, kAsWords, nullptr},
    {"request, bitmap format", WM_DDE_REQUEST, kBitmap, nullptr},
    {"ack, nothing pending", WM_DDE_ACK, kAsWords, nullptr},
    {"ack, foreign number for the item", WM_DDE_ACK, kForeign, nullptr},
    {"ack, sent when nothing pending", WM_DDE_ACK, kSent, nullptr},
};

inline std::string WindowTitle(DWORD testPid, bool second) {
    return std::string(second ? "second " : "main ") + std::to_string(testPid);
}

int RunPartner(const char* testPid);  // the partner's whole life
HGLOBAL MakeBlock(UINT msg, Block b);  // a case's block (foreign and freed handles are dead ones)

}  // namespace fkpartner
