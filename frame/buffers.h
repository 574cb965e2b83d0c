// Library-wide work buffers shared by every control of the process. The
// library serves one user-interface thread and is not reentrant across
// controls; these buffers are why.
#pragma once

namespace fk {

// Longest method string a control keeps; longer text is cut.
inline constexpr int kMethodMax = 1023;
// Longest copy handed out by GXM_GETMETHOD (without terminator when full).
inline constexpr int kMethodCopy = 256;
// Field text: at most 159 characters are ever edited.
inline constexpr int kFieldText = 160;

// Shared scratch buffer of the entry fields: a copy of a field's text, or,
// while a field hands a DDE initiate to the link service, of its method
// string (256 characters and the two spare bytes). The link service reads
// the "@CLIENT" item of an announcing server's partner from here.
inline constexpr int kFieldScratch = kMethodCopy + 1 + 2;
extern char g_fieldText[kFieldScratch];

}  // namespace fk
