#include "tests/support/resources.h"

#include <malloc.h>

#include <cstdint>
#include <cstdio>
#include <vector>

namespace fktest {

namespace {

// One entry of the shared GDI handle table: 24 bytes.
#pragma pack(push, 1)
struct GdiHandleEntry {
    uint64_t object;
    uint32_t owner;  // low 16 bits: process id
    uint16_t unique;
    uint8_t type;    // 0: free
    uint8_t flags;
    uint64_t userPointer;
};
#pragma pack(pop)
static_assert(sizeof(GdiHandleEntry) == 24, "GDI handle entries are 24 bytes");

constexpr int kGdiEntries = 0x10000;
constexpr SIZE_T kGdiTableBytes = sizeof(GdiHandleEntry) * kGdiEntries;
constexpr int kPebGdiTable = 0x94;  // PEB->GdiSharedHandleTable of a 32-bit process

// The entry of a handle is the one at its low word; its Unique holds the
// handle's high word.
bool DescribesHandle(const GdiHandleEntry* table, HGDIOBJ h) {
    const auto bits = static_cast<uint32_t>(reinterpret_cast<UINT_PTR>(h));
    const GdiHandleEntry& e = table[bits & 0xFFFF];
    return e.type != 0 && e.unique == (bits >> 16);
}

bool IsCommitted(const void* p, SIZE_T bytes) {
    MEMORY_BASIC_INFORMATION info{};
    if (VirtualQuery(p, &info, sizeof info) == 0 || info.State != MEM_COMMIT) return false;
    const auto end = reinterpret_cast<UINT_PTR>(info.BaseAddress) + info.RegionSize;
    return end >= reinterpret_cast<UINT_PTR>(p) + bytes;
}

// Whether table is the handle table: it must describe two fresh objects.
bool IsHandleTable(const GdiHandleEntry* table) {
    if (table == nullptr || !IsCommitted(table, kGdiTableBytes)) return false;
    HBRUSH brush = CreateSolidBrush(RGB(1, 2, 3));
    HPEN pen = CreatePen(PS_SOLID, 1, RGB(3, 2, 1));
    const bool ok = DescribesHandle(table, brush) && DescribesHandle(table, pen);
    DeleteObject(brush);
    DeleteObject(pen);
    return ok;
}

// Wine 8 (32-bit) leaves the PEB's pointer null; its table is then found
// as the one committed region of exactly 64K entries that describes fresh
// objects.
const GdiHandleEntry* FindGdiTable() {
    const auto* peb = reinterpret_cast<const BYTE*>(__readfsdword(0x30));
    if (peb != nullptr) {
        const auto* table = *reinterpret_cast<const GdiHandleEntry* const*>(peb + kPebGdiTable);
        if (IsHandleTable(table)) return table;
    }
    SYSTEM_INFO si;
    GetSystemInfo(&si);
    auto* at = static_cast<const BYTE*>(si.lpMinimumApplicationAddress);
    MEMORY_BASIC_INFORMATION info{};
    while (at < si.lpMaximumApplicationAddress && VirtualQuery(at, &info, sizeof info) != 0) {
        if (info.State == MEM_COMMIT && info.RegionSize == kGdiTableBytes &&
            (info.Protect & (PAGE_READWRITE | PAGE_READONLY)) != 0) {
            const auto* table = static_cast<const GdiHandleEntry*>(info.BaseAddress);
            if (IsHandleTable(table)) return table;
        }
        at = static_cast<const BYTE*>(info.BaseAddress) + info.RegionSize;
    }
    return nullptr;
}

const GdiHandleEntry* GdiTable() {
    static const GdiHandleEntry* const table = FindGdiTable();
    return table;
}

BOOL CALLBACK CountChild(HWND, LPARAM counter) {
    ++*reinterpret_cast<long*>(counter);
    return TRUE;
}

BOOL CALLBACK CountTopLevel(HWND h, LPARAM counter) {
    ++*reinterpret_cast<long*>(counter);
    EnumChildWindows(h, CountChild, counter);  // every descendant
    return TRUE;
}

void Append(std::string& out, const char* name, long before, long after) {
    if (before == after) return;
    char item[96];
    std::snprintf(item, sizeof item, "%s%s %+ld (%ld -> %ld)", out.empty() ? "" : ", ", name, after - before,
                  before, after);
    out += item;
}

}  // namespace

long CountGdiObjects(int type) {
    return CountGdiObjects(type, nullptr);
}

long CountGdiObjects(int type, long* byType) {
    const GdiHandleEntry* table = GdiTable();
    if (table == nullptr) return -1;
    // Wine leaves the owner 0 (its table is the process's own); Windows
    // writes the process id, and 0 for the stock objects.
    const uint32_t pid = GetCurrentProcessId() & 0xFFFF;
    long n = 0;
    for (int i = 0; i < kGdiEntries; ++i) {
        const GdiHandleEntry& e = table[i];
        const uint32_t owner = e.owner & 0xFFFF;
        if (e.type == 0 || (owner != pid && owner != 0)) continue;
        if (byType != nullptr) ++byType[e.type];
        if (type == 0 || e.type == type) ++n;
    }
    return n;
}

long CountThreadWindows() {
    long n = 0;
    EnumThreadWindows(GetCurrentThreadId(), CountTopLevel, reinterpret_cast<LPARAM>(&n));
    return n;
}

long CountGlobalAtoms() {
    long n = 0;
    char name[256];
    for (UINT atom = 0xC000; atom <= 0xFFFF; ++atom) {
        if (GlobalGetAtomNameA(static_cast<ATOM>(atom), name, sizeof name) != 0) ++n;
    }
    return n;
}

HeapFigures MeasureHeap(HANDLE heap) {
    HeapFigures f;
    if (heap == nullptr) return f;
    f.valid = HeapValidate(heap, 0, nullptr) != FALSE;
    if (!HeapLock(heap)) return f;
    PROCESS_HEAP_ENTRY entry{};
    entry.lpData = nullptr;
    while (HeapWalk(heap, &entry)) {
        if (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) {
            ++f.blocks;
            f.bytes += static_cast<long>(entry.cbData);
        }
    }
    HeapUnlock(heap);
    return f;
}

bool AllHeapsValid() {
    std::vector<HANDLE> heaps(64);
    DWORD n = GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data());
    if (n > heaps.size()) {
        heaps.resize(n);
        n = GetProcessHeaps(n, heaps.data());
    }
    for (DWORD i = 0; i < n && i < heaps.size(); ++i)
        if (!HeapValidate(heaps[i], 0, nullptr)) return false;
    return true;
}

ResourceFigures TakeResourceFigures() {
    ResourceFigures f;
    f.windows = CountThreadWindows();
    f.atoms = CountGlobalAtoms();
    f.gdiObjects = CountGdiObjects(0, f.gdiByType);
    f.processHeap = MeasureHeap(GetProcessHeap());
    f.crtHeap = MeasureHeap(reinterpret_cast<HANDLE>(_get_heap_handle()));
    f.allHeapsValid = AllHeapsValid();
    return f;
}

std::string DescribeGrowth(const ResourceFigures& before, const ResourceFigures& after, bool withHeaps) {
    std::string out;
    Append(out, "windows", before.windows, after.windows);
    Append(out, "atoms", before.atoms, after.atoms);
    Append(out, "gdi", before.gdiObjects, after.gdiObjects);
    for (int t = 1; t < 256; ++t) {
        char name[16];
        std::snprintf(name, sizeof name, "gdi type 0x%02x", t);
        Append(out, name, before.gdiByType[t], after.gdiByType[t]);
    }
    if (withHeaps) {
        Append(out, "process heap blocks", before.processHeap.blocks, after.processHeap.blocks);
        Append(out, "crt heap blocks", before.crtHeap.blocks, after.crtHeap.blocks);
    }
    if (!after.allHeapsValid) out += out.empty() ? "a heap is corrupt" : ", a heap is corrupt";
    return out;
}

bool HandlesBackAndHeapsValid(const ResourceFigures& before, const ResourceFigures& after) {
    return after.windows <= before.windows && after.atoms <= before.atoms &&
           after.gdiObjects <= before.gdiObjects && after.allHeapsValid;
}

}  // namespace fktest
