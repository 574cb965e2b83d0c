#include "tests/support/resources.h"

#include <malloc.h>
#include <cstdint>
#include <cstdio>

namespace fktest {
namespace {
// 64K entries; a live object has a type, unique is its handle's high word, owner's low word the process id
// (0 under Wine and for stock objects). Windows points PEB->GdiSharedHandleTable (0x94; 0xF8 in 64-bit) at it; 32-bit Wine 8
// leaves that null: the table is then the committed region of that size describing two fresh objects.
#pragma pack(push, 1)
struct GdiEntry { uint64_t object; uint32_t owner; uint16_t unique; uint8_t type, flags; uint64_t user; };
#pragma pack(pop)
static_assert(sizeof(GdiEntry) == 24, "GDI handle entries are 24 bytes");
constexpr SIZE_T kTableBytes = sizeof(GdiEntry) * 0x10000;

bool IsHandleTable(const GdiEntry* table) {
    MEMORY_BASIC_INFORMATION info{};
    if (!table || !VirtualQuery(table, &info, sizeof info) || info.State != MEM_COMMIT ||
        (UINT_PTR)info.BaseAddress + info.RegionSize < (UINT_PTR)table + kTableBytes)
        return false;
    const auto describes = [table](HGDIOBJ h) {
        const auto bits = static_cast<uint32_t>(reinterpret_cast<UINT_PTR>(h));
        return table[bits & 0xFFFF].type != 0 && table[bits & 0xFFFF].unique == (bits >> 16);
    };
    HGDIOBJ brush = CreateSolidBrush(RGB(1, 2, 3)), pen = CreatePen(PS_SOLID, 1, RGB(3, 2, 1));
    const bool ok = describes(brush) && describes(pen);
    return DeleteObject(brush), DeleteObject(pen), ok;
}

const GdiEntry* FindGdiTable() {
#ifdef _WIN64
    const auto* const* fromPeb = reinterpret_cast<const GdiEntry* const*>(__readgsqword(0x60) + 0xF8);
#else
    const auto* const* fromPeb = reinterpret_cast<const GdiEntry* const*>(__readfsdword(0x30) + 0x94);
#endif
    if (IsHandleTable(*fromPeb)) return *fromPeb;
    SYSTEM_INFO si;
    GetSystemInfo(&si);
    MEMORY_BASIC_INFORMATION info{};
    for (auto* at = static_cast<const BYTE*>(si.lpMinimumApplicationAddress);
         at < si.lpMaximumApplicationAddress && VirtualQuery(at, &info, sizeof info); at += info.RegionSize) {
        at = static_cast<const BYTE*>(info.BaseAddress);
        const auto* table = static_cast<const GdiEntry*>(info.BaseAddress);
        if (info.State == MEM_COMMIT && info.RegionSize == kTableBytes &&
            (info.Protect & (PAGE_READWRITE | PAGE_READONLY)) && IsHandleTable(table))
            return table;
    }
    return nullptr;
}

BOOL CALLBACK CountChild(HWND, LPARAM counter) { return ++*reinterpret_cast<long*>(counter) > 0; }
BOOL CALLBACK CountTopLevel(HWND h, LPARAM counter) {
    EnumChildWindows(h, CountChild, counter);  // every descendant
    return CountChild(h, counter);
}

long CountGdiObjects() {
    static const GdiEntry* const table = FindGdiTable();
    const uint32_t pid = GetCurrentProcessId() & 0xFFFF;
    long n = table ? 0 : -1;
    for (int i = 0; table && i < 0x10000; ++i)
        n += table[i].type != 0 && ((table[i].owner & 0xFFFF) == pid || (table[i].owner & 0xFFFF) == 0);
    return n;
}

long CountGlobalAtoms() {
    long n = 0;
    char name[256];
    for (UINT atom = 0xC000; atom <= 0xFFFF; ++atom) n += GlobalGetAtomNameA(static_cast<ATOM>(atom), name, 256) != 0;
    return n;
}

long CountThreadWindows() {
    long n = 0;
    EnumThreadWindows(GetCurrentThreadId(), CountTopLevel, reinterpret_cast<LPARAM>(&n));
    return n;
}

}  // namespace

HeapFigures MeasureHeap(HANDLE heap) {
    HeapFigures f;
    PROCESS_HEAP_ENTRY entry{};
    if (!heap || !HeapLock(heap)) return f;
    while (HeapWalk(heap, &entry)) f.blocks += (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0;
    HeapUnlock(heap);
    return f;
}

ResourceFigures TakeResourceFigures() {
    ResourceFigures f{CountThreadWindows(), CountGlobalAtoms(), CountGdiObjects(), MeasureHeap(GetProcessHeap()),
                      MeasureHeap(reinterpret_cast<HANDLE>(_get_heap_handle()))};
    HANDLE heaps[256];
    const DWORD n = GetProcessHeaps(256, heaps);
    f.allHeapsValid = n <= 256;
    for (DWORD i = 0; i < n && i < 256; ++i) f.allHeapsValid = f.allHeapsValid && HeapValidate(heaps[i], 0, nullptr);
    return f;
}

std::string DescribeGrowth(const ResourceFigures& before, const ResourceFigures& after, bool withHeaps) {
    std::string out = after.allHeapsValid ? "" : "a heap is corrupt";
    const auto add = [&out](const char* name, long a, long b) {
        char item[96];
        std::snprintf(item, sizeof item, "%s%s %+ld (%ld -> %ld)", out.empty() ? "" : ", ", name, b - a, a, b);
        if (a != b) out += item;
    };
    add("windows", before.windows, after.windows);
    add("atoms", before.atoms, after.atoms);
    add("gdi", before.gdiObjects, after.gdiObjects);
    if (withHeaps) add("process heap blocks", before.processHeap.blocks, after.processHeap.blocks);
    if (withHeaps) add("crt heap blocks", before.crtHeap.blocks, after.crtHeap.blocks);
    return out;
}

}  // namespace fktest
